// Catmull-Rom through evenly spaced knots. Beyond the ends a knot is continued
// in a straight line, so that evenly rising knots give a straight ramp.
#include "native/Spline.h"

#include <cmath>

namespace kwfilter {
float spline(float x, int16_t nknots, const float* knots) {
    if (nknots <= 0 || !knots) return 0.0f;
    if (nknots == 1 || x <= 0.0f) return knots[0];
    if (x >= 1.0f) return knots[nknots - 1];
    float seg = x * static_cast<float>(nknots - 1);
    int i = static_cast<int>(std::floor(seg));
    if (i > nknots - 2) i = nknots - 2;
    float f = seg - static_cast<float>(i);
    float p1 = knots[i], p2 = knots[i + 1];
    float p0 = i > 0 ? knots[i - 1] : 2 * p1 - p2;
    float p3 = i + 2 < nknots ? knots[i + 2] : 2 * p2 - p1;
    float f2 = f * f, f3 = f2 * f;
    return 0.5f * (2.0f * p1 + (p2 - p0) * f + (2.0f * p0 - 5.0f * p1 + 4.0f * p2 - p3) * f2 +
                   (3.0f * p1 - p0 - 3.0f * p2 + p3) * f3);
}
}  // namespace kwfilter
