// Hexcone hue, saturation and value.
#include "native/ColourSpace.h"

#include <algorithm>
#include <cmath>

namespace kwfilter {
void RGB_To_HSV(float r, float g, float b, float& h, float& s, float& v) {
    const float mx = std::max({r, g, b}), mn = std::min({r, g, b}), d = mx - mn;
    v = mx;
    s = mx > 0 ? d / mx : 0.0f;
    if (d <= 0) {
        h = 0;
        return;
    }
    if (mx == r) h = (g - b) / d;
    else if (mx == g) h = 2 + (b - r) / d;
    else h = 4 + (r - g) / d;
    h *= 60;
    if (h < 0) h += 360;
}

void HSV_To_RGB(float& r, float& g, float& b, float h, float s, float v) {
    // s and v are taken as they come: the brush's colour jitter pushes them past
    // 0..1 on purpose, and only the components are held to 0..1.
    if (h == -1.0f || s == 0 || !std::isfinite(h)) {
        r = g = b = std::clamp(v, 0.0f, 1.0f);
        return;
    }
    h = std::fmod(h, 360.0f);
    if (h < 0) h += 360;
    const float sector = h / 60;
    int i = static_cast<int>(std::floor(sector));
    const float f = sector - static_cast<float>(i);
    i %= 6;
    const float p = v * (1 - s), q = v * (1 - s * f), t = v * (1 - s * (1 - f));
    switch (i) {
        case 0: r = v, g = t, b = p; break;
        case 1: r = q, g = v, b = p; break;
        case 2: r = p, g = v, b = t; break;
        case 3: r = p, g = q, b = v; break;
        case 4: r = t, g = p, b = v; break;
        default: r = v, g = p, b = q; break;
    }
    r = std::clamp(r, 0.0f, 1.0f);
    g = std::clamp(g, 0.0f, 1.0f);
    b = std::clamp(b, 0.0f, 1.0f);
}

void f_rgb2yuv(float r, float g, float b, float& y, float& u, float& v) {
    y = 0.299f * r + 0.587f * g + 0.114f * b;
    u = 0.492f * (b - y);
    v = 0.877f * (r - y);
}

void f_yuv2rgb(float y, float u, float v, float& r, float& g, float& b) {
    r = y + v / 0.877f;
    b = y + u / 0.492f;
    g = (y - 0.299f * r - 0.114f * b) / 0.587f;
}
}  // namespace kwfilter
