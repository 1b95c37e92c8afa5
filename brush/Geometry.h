// Small geometry of the brush, line and fill tools.
#pragma once

#include <cstdint>

// The direction from (X1, Y1) to (X2, Y2) in degrees, 0..360. A vertical pair
// counts as a slope of 90 degrees before the quadrant is applied, so coincident
// points give 180.
float CalculateAngle(float X1, float Y1, float X2, float Y2);
// D = CInt(sqrt(CLng(dx^2) + CLng(dy^2))), held to what 16 bits keep.
void Distance(float& X1, float& Y1, float& X2, float& Y2, int16_t& D);
