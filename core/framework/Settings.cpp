// The per-user settings store: application "kelpwick", section "Startup".
#include "core/framework/Settings.h"

#include <QSettings>
#include <QString>

#include "core/framework/vb.h"

namespace {
QSettings& Store() {
    static QSettings s(QSettings::NativeFormat, QSettings::UserScope, "kelpwick", "kelpwick");
    return s;
}
QString KeyOf(const std::string& key) { return QString::fromStdString("Startup/" + key); }
}  // namespace

std::string GetSetting(const std::string& key, const std::string& deflt) {
    QVariant v = Store().value(KeyOf(key));
    if (!v.isValid()) return deflt;
    return v.toString().toStdString();
}

void SaveSetting(const std::string& key, const std::string& value) {
    Store().setValue(KeyOf(key), QString::fromStdString(value));
    Store().sync();
}

std::string GetSectionSetting(const std::string& section, const std::string& key, const std::string& deflt) {
    QVariant v = Store().value(QString::fromStdString(section + "/" + key));
    return v.isValid() ? v.toString().toStdString() : deflt;
}

void SaveSectionSetting(const std::string& section, const std::string& key, const std::string& value) {
    Store().setValue(QString::fromStdString(section + "/" + key), QString::fromStdString(value));
    Store().sync();
}

std::string BoolText(bool v) { return v ? "True" : "False"; }

bool ParseBoolText(const std::string& s, bool deflt) {
    std::string t;
    for (char c : s) t += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    if (t == "true" || t == "-1" || t == "1") return true;
    if (t == "false" || t == "0") return false;
    return deflt;
}
