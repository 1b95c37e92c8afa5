#include "shell/Convert.h"

#include <QRegularExpression>

QString MenuText(const std::string& caption) {
    QString c = Q(caption);
    static const QRegularExpression gap("\\s{3,}");
    auto m = gap.match(c);
    if (!m.hasMatch()) return c;
    QString label = c.left(m.capturedStart());
    QString key = c.mid(m.capturedEnd()).trimmed();
    key.remove('&');  // no mnemonic in the shortcut column
    return label + '\t' + key;
}
