// The box of the selection: where the alpha plane is not zero.
#pragma once

#include <cstdint>

// Inclusive box of non-zero alpha, filled by GetAlphaMinMax; with no alpha at all
// the minima stay at 8000 and the maxima at 0.
extern int16_t AlphaLeft, AlphaRight, AlphaTop, AlphaBottom;
void GetAlphaMinMax();
