// Small geometry of the brush, line and fill tools.
#include "brush/Geometry.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "core/framework/vb.h"

float CalculateAngle(float X1, float Y1, float X2, float Y2) {
    // The differences are rounded to 16 bits, and made positive with their signs kept aside.
    auto to16 = [](float v) { return vb::CInt(std::clamp(v, -32768.0f, 32767.0f)); };
    int n = to16(Y1 - Y2), m = to16(X1 - X2);
    const bool p = n <= 0, q = m <= 0;
    n = std::abs(n);
    m = std::abs(m);
    // A vertical pair has no finite slope: its angle is the limit.
    const double a = m == 0 ? (n == 0 ? 0.0 : 90.0) : std::atan(static_cast<double>(n) / m) * 57.2958;
    double r = a;
    if (p && q) r = a + 180;
    else if (p) r = 360 - a;
    else if (q) r = 180 - a;
    return static_cast<float>(r);
}

void Distance(float& X1, float& Y1, float& X2, float& Y2, int16_t& D) {
    const double dx = static_cast<double>(X2) - X1, dy = static_cast<double>(Y2) - Y1;
    const double dx2 = std::min(static_cast<double>(vb::CLng(std::min(dx * dx, 2.1e9))), 2.1e9);
    const double dy2 = std::min(static_cast<double>(vb::CLng(std::min(dy * dy, 2.1e9))), 2.1e9);
    D = vb::CInt(std::min(std::sqrt(dx2 + dy2), 32767.0));
}
