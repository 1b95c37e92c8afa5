// The flood fill and the magic wand: the region connected to a press, within
// the tolerance of the pressed colour, filled through the fill pipeline or
// written into alpha.
#pragma once

#include <cstdint>

// X, Y: the press in window pixels; the caller has checked that it lies on the
// picture. The tolerance and anti-aliasing come from the "Flood" panel's
// controls' values as the caller passes them and as Form4::Check1 says.
// maskFromShape: in the alpha fill mode, alpha takes the coverage itself
// rather than the brightness of the delivered colour.
void Flood(float X, float Y, int Tolerance, uint32_t Colour, bool maskFromShape = false);
// Writes alpha only: Value (255 adds, 0 subtracts) at each reached pixel, or
// with anti-aliasing the coverage itself (kept where alpha is already higher)
// or its complement on the subtracting path (kept where alpha is lower).
void Flood_To_Alpha(float X, float Y, int Tolerance, uint8_t Value);
