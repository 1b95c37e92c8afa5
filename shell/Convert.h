// Small conversions between the logic's values and Qt's.
#pragma once

#include <QColor>
#include <QString>
#include <cstdint>
#include <string>

inline QColor QColorOf(uint32_t bgr) { return QColor(bgr & 255, (bgr >> 8) & 255, (bgr >> 16) & 255); }
inline uint32_t BgrOf(const QColor& c) {
    return static_cast<uint32_t>(c.red()) | static_cast<uint32_t>(c.green()) << 8 | static_cast<uint32_t>(c.blue()) << 16;
}
inline QString Q(const std::string& s) { return QString::fromStdString(s); }

// Menu captions carry their key after a run of blanks: "Swap buffers      j".
// The key text goes to the shortcut column (display only: the keys are the canvas's).
QString MenuText(const std::string& caption);
