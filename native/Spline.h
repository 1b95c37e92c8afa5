// The interpolating curve of the gradient "Cubic" apply: a Catmull-Rom curve
// through knots spaced evenly over 0..1. It passes through every knot and may
// overshoot between them; callers clamp.
#pragma once

#include <cstdint>

namespace kwfilter {
// Value of the curve at x (0..1) through nknots knot values. x below 0 or above 1
// gives the first or last knot; no knots give 0.
float spline(float x, int16_t nknots, const float* knots);
}  // namespace kwfilter
