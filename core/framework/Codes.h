// The numbers that cross the boundary between the shell and the logic: key
// codes, the characters of key presses, mouse buttons, shift states and mouse
// pointers. The shell translates toolkit events into these; the logic compares
// against them.
#pragma once

#include <cstdint>

// Virtual key codes, as a key release reports them.
namespace VirtualKey {
constexpr int16_t Backspace = 8, Tab = 9, Return = 13, Shift = 16, Control = 17, Alt = 18, Escape = 27,
                  Space = 32, Left = 37, Up = 38, Right = 39, Down = 40, Delete = 46;
constexpr int16_t F1 = 112, F2 = 113, F3 = 114, F4 = 115, F5 = 116, F6 = 117, F7 = 118, F8 = 119, F9 = 120,
                  F10 = 121, F11 = 122, F12 = 123;
}  // namespace VirtualKey

// Characters of key presses that are control codes rather than printable text.
namespace KeyChar {
constexpr int16_t CtrlA = 1, CtrlZ = 26, Escape = 27;
// The control code ctrl + letter delivers ('a' or 'A' gives 1).
constexpr int16_t Ctrl(char letter) {
    return static_cast<int16_t>((letter >= 'a' ? letter - 'a' : letter - 'A') + 1);
}
}  // namespace KeyChar

// Mouse buttons; several held at once are summed.
namespace MouseButton {
constexpr int16_t None = 0, Left = 1, Right = 2, Middle = 4;
}  // namespace MouseButton

// Shift states of key and mouse events; several held at once are summed.
namespace ShiftState {
constexpr int16_t None = 0, Shift = 1, Ctrl = 2, Alt = 4;
}  // namespace ShiftState

// Form::MousePointer values.
namespace Pointer {
constexpr int Default = 0, Busy = 11, Help = 99;
}  // namespace Pointer
