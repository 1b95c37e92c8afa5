// Small geometry of the brush tools.
#pragma once

// The direction from (X1, Y1) to (X2, Y2) in degrees, 0..360. A vertical pair
// counts as a slope of 90 degrees before the quadrant is applied, so coincident
// points give 180.
float CalculateAngle(float X1, float Y1, float X2, float Y2);
