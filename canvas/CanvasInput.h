// The three entries of every mouse event on the canvas. Button is a sum of
// MouseButton codes, Shift of ShiftState codes (core/framework/Codes.h); X and
// Y are window pixels of the zoomed picture.
#pragma once

#include <cstdint>

namespace Form1 {
void Form_MouseDown(int16_t Button, int16_t Shift, float X, float Y);
void Form_MouseMove(int16_t Button, int16_t Shift, float X, float Y);
void Form_MouseUp(int16_t Button, int16_t Shift, float X, float Y);
}  // namespace Form1

// Moves the selection (alpha and marquee) by whole pixels, wrapping at the edges.
void NudgeAlpha(int DX, int DY);
