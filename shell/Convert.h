// Small conversions between the logic's values and Qt's.
#pragma once

#include <QColor>
#include <QString>
#include <cstdint>
#include <string>

#include "core/framework/Codes.h"

inline QColor QColorOf(uint32_t bgr) { return QColor(bgr & 255, (bgr >> 8) & 255, (bgr >> 16) & 255); }
inline uint32_t BgrOf(const QColor& c) {
    return static_cast<uint32_t>(c.red()) | static_cast<uint32_t>(c.green()) << 8 | static_cast<uint32_t>(c.blue()) << 16;
}
inline QString Q(const std::string& s) { return QString::fromStdString(s); }

// Menu captions carry their key after a run of blanks: "Swap buffers      j".
// The key text goes to the shortcut column (display only: the keys are the canvas's).
QString MenuText(const std::string& caption);

// The logic's shift state of Qt's modifiers: shift, ctrl and alt summed.
inline int16_t ShiftCodeOf(Qt::KeyboardModifiers m) {
    return static_cast<int16_t>(((m & Qt::ShiftModifier) ? ShiftState::Shift : 0) |
                                ((m & Qt::ControlModifier) ? ShiftState::Ctrl : 0) |
                                ((m & Qt::AltModifier) ? ShiftState::Alt : 0));
}
