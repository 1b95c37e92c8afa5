// The natural brush engine: one pair of mouse positions becomes a run of dabs
// spaced along the line between them.
#pragma once

#include <cstdint>

namespace Form1 {
// X and Y are canvas window pixels; they are divided by the zoom in place, so
// the caller sees picture pixels afterwards. Button 0 only places the brush.
void Form_Draw(int16_t& Button, int16_t& Shift, float& X, float& Y);
}  // namespace Form1
