// The direct colour commands of the Color and Greyscale menus, each the frame of
// a direct filter: undo step, hourglass, the loop, redisplay.
#include "filter/ColourCommands.h"

#include <algorithm>

#include "core/display/Display.h"
#include "core/document/Buffers.h"
#include "core/framework/AppState.h"
#include "core/framework/vb.h"
#include "filter/FilterFrame.h"
#include "native/ColourSpace.h"

namespace {
struct Rgb {
    int r, g, b;
};

// The direct filter frame around a per-pixel formula; masked through the
// AlphaRPixel family when `masked`, written as it is otherwise.
template <typename F>
void Direct(bool masked, F formula) {
    if (!DocumentExists()) return;
    const FilterArea s = FilterSize();
    if (s.empty()) return;
    filterSetup();
    Hourglass busy;
    for (int y = 0; y < s.h; ++y)
        for (int x = 0; x < s.w; ++x) {
            Rgb n = formula({BufR(x, y), BufG(x, y), BufB(x, y)});
            if (masked) {
                int a = BufA(x, y), out;
                AlphaRPixel(x, y, n.r, a, out);
                n.r = out;
                AlphaGPixel(x, y, n.g, a, out);
                n.g = out;
                AlphaBPixel(x, y, n.b, a, out);
                n.b = out;
            }
            BufR(x, y) = static_cast<uint8_t>(n.r);
            BufG(x, y) = static_cast<uint8_t>(n.g);
            BufB(x, y) = static_cast<uint8_t>(n.b);
        }
    RedisplayWindow();
}

int ToChannel(float f) { return std::clamp(vb::CLng(f * 255.0), 0, 255); }
}  // namespace

void ColorNegative_Click() {
    Direct(true, [](const Rgb& p) { return Rgb{255 - p.r, 255 - p.g, 255 - p.b}; });
}

void BufferInvert_Click() {
    Direct(false, [](const Rgb& p) { return Rgb{255 - p.r, 255 - p.g, 255 - p.b}; });
}

void ColorInvertValue_Click() {
    Direct(true, [](const Rgb& p) {
        float y, u, v, r, g, b;
        kwfilter::f_rgb2yuv(p.r / 255.0f, p.g / 255.0f, p.b / 255.0f, y, u, v);
        kwfilter::f_yuv2rgb(1.0f - y, u, v, r, g, b);
        return Rgb{ToChannel(r), ToChannel(g), ToChannel(b)};
    });
}

void ColorRollChannels_Click() {
    Direct(true, [](const Rgb& p) { return Rgb{p.g, p.b, p.r}; });
}

void ColorSwapChannels_Click() {
    Direct(true, [](const Rgb& p) { return Rgb{p.b, p.g, p.r}; });
}

void GrayscaleAverage_Click() {
    Direct(false, [](const Rgb& p) {
        const int v = vb::CLng((p.r + p.g + p.b) / 3.0);
        return Rgb{v, v, v};
    });
}

void GrayscaleVideo_Click() {
    Direct(false, [](const Rgb& p) {
        const int v = vb::CLng(p.g * 0.587 + p.r * 0.299 + p.b * 0.114);
        return Rgb{v, v, v};
    });
}

namespace {
// Pass over every channel of the picture.
template <typename F>
void EachChannel(const FilterArea& s, F f) {
    for (Plane* p : {&BufR, &BufG, &BufB})
        for (int y = 0; y < s.h; ++y)
            for (int x = 0; x < s.w; ++x) (*p)(x, y) = static_cast<uint8_t>(f((*p)(x, y)));
}

// The darkest channel inside a border of `inset`, or the brightest.
double Extreme(const FilterArea& s, int inset, bool darkest, double start) {
    double e = start;
    for (int y = inset; y <= s.h - 1 - inset; ++y)
        for (int x = inset; x <= s.w - 1 - inset; ++x) {
            const int r = BufR(x, y), g = BufG(x, y), b = BufB(x, y);
            e = darkest ? std::min<double>(e, std::min({r, g, b})) : std::max<double>(e, std::max({r, g, b}));
        }
    return e;
}
}  // namespace

void DynamicRangeCompensate_Click() {
    if (!DocumentExists()) return;
    const FilterArea s = FilterSize();
    if (s.empty()) return;
    filterSetup();
    Hourglass busy;
    // The black point leaves out a border of two pixels (frames and scanner edges);
    // the white point one of one pixel.
    const double lo = Extreme(s, 2, true, 255.0);
    EachChannel(s, [lo](int c) { return std::max(0, vb::CLng(c - lo)); });
    double hi = Extreme(s, 1, false, 0.0);
    if (hi != lo) {
        if (hi == 0) hi = 1.0;
        const double k = 255.0 / hi;
        EachChannel(s, [k](int c) { return std::min(255, vb::CLng(c * k)); });
    }
    RedisplayWindow();
}
