// The host's font dialog and text: Qt's font dialog, and text drawn with
// QPainter into a grey image without anti-aliasing, read back as bytes.
#include <QFontDatabase>
#include <QFontDialog>
#include <QFontMetrics>
#include <QImage>
#include <QPainter>
#include <algorithm>

#include "shell/MainWindow.h"
#include "shell/QtHost.h"

namespace {
// The font asked for, or nothing when no such family is installed.
std::optional<QFont> FontOf(const FontChoice& f) {
    if (QFontDatabase::families().isEmpty()) return std::nullopt;
    QFont font(QString::fromStdString(f.Name));
    font.setPointSize(std::clamp(f.Size, 1, 1000));
    font.setBold(f.Bold);
    font.setItalic(f.Italic);
    font.setStyleStrategy(QFont::NoAntialias);
    return font;
}
}  // namespace

bool QtHost::Closing() { return closing_ || !main_ || !main_->isVisible(); }

std::optional<FontChoice> QtHost::ChooseFont(const FontChoice& initial) {
    bool ok = false;
    QFont start = FontOf(initial).value_or(QFont());
    QFont chosen = QFontDialog::getFont(&ok, start, main_, "Font settings");
    if (!ok) return std::nullopt;
    FontChoice f;
    f.Name = chosen.family().toStdString();
    f.Size = chosen.pointSize() > 0 ? chosen.pointSize() : 12;
    f.Bold = chosen.bold();
    f.Italic = chosen.italic();
    return f;
}

int QtHost::TextWidth(const std::string& text, const FontChoice& font) {
    auto f = FontOf(font);
    if (!f) return -1;
    return QFontMetrics(*f).horizontalAdvance(QString::fromStdString(text));
}

bool QtHost::RasteriseText(const std::string& text, const FontChoice& font, int width, int height,
                           std::vector<uint8_t>& pixels) {
    auto f = FontOf(font);
    if (!f || width <= 0 || height <= 0) return false;
    QImage img(width, height, QImage::Format_Grayscale8);
    img.fill(255);
    {
        QPainter p(&img);
        p.setRenderHint(QPainter::TextAntialiasing, false);
        p.setRenderHint(QPainter::Antialiasing, false);
        p.setFont(*f);
        p.setPen(Qt::black);
        p.drawText(QRect(0, 0, width, height), Qt::AlignLeft | Qt::AlignTop, QString::fromStdString(text));
    }
    pixels.resize(static_cast<size_t>(width) * static_cast<size_t>(height));
    for (int y = 0; y < height; ++y) {
        const uchar* row = img.constScanLine(y);
        std::copy(row, row + width, pixels.begin() + static_cast<ptrdiff_t>(y) * width);
    }
    return true;
}
