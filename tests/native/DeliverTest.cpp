// The fill pipeline kernel against a slow reference written from its steps,
// over every fill style, the table and rubthrough modes, noise of both kinds,
// paper, opacity and alpha, with fixed noise draws; then the promise that a
// loop compiled for fewer steps gives the same pixels.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <random>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "native/Deliver.h"

namespace {
using kwfill::DeliverSettings;
using kwfill::DeliverState;
using kwfill::NoiseDraws;
using kwmode::FillMode;
using kwmode::FillStyle;
using Bytes = std::vector<uint8_t>;

constexpr int W = 13, H = 9, BW = 5, BH = 4, PW = 7, PH = 5;

int Round(double v) { return static_cast<int>(std::nearbyint(v)); }
int Clamp(int v) { return std::clamp(v, 0, 255); }

Bytes RandomBytes(size_t n, std::mt19937& rng) {
    Bytes v(n);
    for (auto& b : v) b = static_cast<uint8_t>(rng());
    return v;
}

// A picture with alpha and swap layer, a gradient, a brush, a paper and a
// mixing table whose entries differ from their mirrors, so swapped indices show.
struct Scene {
    Bytes r, g, b, a, sr, sg, sb, grad[4], brush[3], paperB, table;
    std::vector<float> paperF;
    Scene() {
        std::mt19937 rng(7);
        for (Bytes* p : {&r, &g, &b, &a, &sr, &sg, &sb}) *p = RandomBytes((W + 1) * (H + 1), rng);
        a[5 + 5 * (W + 1)] = 0;  // a pixel the alpha plane hides entirely
        for (Bytes& p : grad) p = RandomBytes(256, rng);
        for (int s = 0; s < 256; s += 3) grad[3][static_cast<size_t>(s)] = 255;  // some fully opaque steps
        for (Bytes& p : brush) p = RandomBytes((BW + 1) * (BH + 1), rng);
        paperB = RandomBytes((PW + 1) * (PH + 1), rng);
        std::uniform_real_distribution<float> slope(-0.3f, 0.3f);
        for (size_t i = 0; i < paperB.size(); ++i) paperF.push_back(slope(rng));
        table = RandomBytes(65536, rng);
        for (size_t i = 0; i < 256; ++i)
            for (size_t j = 0; j < i; ++j)
                if (table[i + 256 * j] == table[j + 256 * i]) table[i + 256 * j] ^= 1;
    }
    // Settings with every input wired; the test switches parts off.
    DeliverSettings Settings() const {
        DeliverSettings s;
        s.gradR = grad[0].data(), s.gradG = grad[1].data(), s.gradB = grad[2].data(), s.gradA = grad[3].data();
        s.paperB = paperB.data(), s.paperF = paperF.data(), s.paperStride = PW + 1, s.paperW = PW, s.paperH = PH;
        s.brushR = brush[0].data(), s.brushG = brush[1].data(), s.brushB = brush[2].data();
        s.brushStride = BW + 1, s.brushW = BW, s.brushH = BH;
        s.r = r.data(), s.g = g.data(), s.b = b.data(), s.a = a.data();
        s.sr = sr.data(), s.sg = sg.data(), s.sb = sb.data();
        s.stride = W + 1;
        s.strength = 1.0f;
        return s;
    }
};

// The draws of pixel (x, y): extremes and middles, different for each channel;
// per channel as 16-bit draws less a half, so u = 0.5 + c / 2^16.
NoiseDraws Draws(int x, int y) {
    static const double values[] = {0.0, 0.5, 0.999, 0.25, 0.7, 0.1, 0.45, 0.85};
    NoiseDraws d;
    d.u = values[(x + 3 * y) % 8];
    for (int k = 0; k < 3; ++k) d.c[k] = static_cast<int16_t>(std::lround(values[(x + 3 * y + 5 * k) % 8] * 65536) - 32768);
    return d;
}

// The colour a style gives, and the gradient's opacity at it.
int StyleColour(const DeliverSettings& s, DeliverState& st, uint32_t colour, int X, int Y, int X1, int Y1, int X2,
                int Y2) {
    auto look = [&](float t) {
        st.t = t;
        const auto p = static_cast<size_t>(Clamp(Round(t)));
        st.R = s.gradR[p], st.G = s.gradG[p], st.B = s.gradB[p];
        return s.gradA[p];
    };
    auto brush = [&](int u, int v) {
        const size_t i = static_cast<size_t>(u) + static_cast<size_t>(v) * s.brushStride;
        st.R = s.brushR[i], st.G = s.brushG[i], st.B = s.brushB[i];
    };
    const float w = static_cast<float>(X2 - X1), h = static_cast<float>(Y2 - Y1);
    switch (s.style) {
        case FillStyle::Horizontal:
        case FillStyle::FitHorizontal: return look(static_cast<float>(X - X1) * (255 / (w <= 0 ? 0.01f : w)));
        case FillStyle::Vertical: return look(static_cast<float>(Y - Y1) * (255 / (h <= 0 ? 0.01f : h)));
        case FillStyle::Circular: {
            const float a = (static_cast<float>(X - X1) - w / 2) * (255 / (w == 0 ? 1 : w));
            const float b = (static_cast<float>(Y - Y1) - h / 2) * (255 / (h == 0 ? 1 : h));
            return look((a * a + b * b) / 128);
        }
        case FillStyle::TileBrush:
            if (s.brushW > 0) brush(X % s.brushW, Y % s.brushH);
            return 255;
        case FillStyle::FitBrush: {
            if (s.brushW == 0) return 255;
            const float fl = s.interpolate ? 0.001f : 0.01f;
            const float fx = (s.brushW - 1) / 255.0f * (static_cast<float>(X - X1) * (255 / (w <= 0 ? fl : w)));
            const float fy = (s.brushH - 1) / 255.0f * (static_cast<float>(Y - Y1) * (255 / (h <= 0 ? fl : h)));
            if (!s.interpolate) {
                brush(std::clamp(Round(fx), 0, s.brushW - 1), std::clamp(Round(fy), 0, s.brushH - 1));
                return 255;
            }
            const float cx = std::clamp(fx, 0.0f, s.brushW - 1.0f), cy = std::clamp(fy, 0.0f, s.brushH - 1.0f);
            const int u = static_cast<int>(std::floor(cx)), v = static_cast<int>(std::floor(cy));
            const float ax = cx - u, bx = 1 - ax, ay = cy - v, by = 1 - ay;
            auto bil = [&](const uint8_t* p) {
                auto at = [&](int du, int dv) { return p[static_cast<size_t>(u + du) + (v + dv) * s.brushStride]; };
                return Round((at(0, 0) * bx + at(1, 0) * ax) * by + (at(0, 1) * bx + at(1, 1) * ax) * ay);
            };
            st.R = bil(s.brushR), st.G = bil(s.brushG), st.B = bil(s.brushB);
            return 255;
        }
        default: st.R = colour & 255, st.G = (colour >> 8) & 255, st.B = (colour >> 16) & 255; return 255;
    }
}

// One pixel as the steps read: style, gradient opacity, mode, noise, bump, drybrush, opacity, alpha.
uint32_t Reference(const DeliverSettings& s, DeliverState& st, const NoiseDraws& d, uint32_t colour, int X, int Y,
                   int X1, int Y1, int X2, int Y2) {
    const int ga = StyleColour(s, st, colour, X, Y, X1, Y1, X2, Y2);
    int opacity = Round(s.opacity * ga / 255.0);
    st.opacitySaved = static_cast<int16_t>(opacity);
    const size_t at = static_cast<size_t>(X) + static_cast<size_t>(Y) * s.stride;
    int32_t* const c[3] = {&st.R, &st.G, &st.B};
    const int old[3] = {s.r[at], s.g[at], s.b[at]};
    const uint8_t* const swap[3] = {s.sr, s.sg, s.sb};
    for (int k = 0; k < 3; ++k) {
        if (s.table) *c[k] = s.tableSwapped ? s.table[old[k] + 256 * *c[k]] : s.table[*c[k] + 256 * old[k]];
        else if (s.mode == FillMode::Rubthrough) *c[k] = swap[k][at];
    }
    if (s.noiseAmount > 0) {
        const double N = s.noiseAmount;
        if (s.noisePerChannel) {
            for (int k = 0; k < 3; ++k) *c[k] = Clamp(Round(*c[k] + d.c[k] / 65536.0 * (k == 1 ? N * 1.1 : N)));
        } else {
            const int n = Round((d.u - 0.5) * N), m = std::max({st.R, st.G, st.B});
            const int k = m > 0 ? Round(255.0 / m) : 255;
            for (int32_t* v : c) *v = Clamp(Round(*v + n * (*v * k) / 255.0));
        }
    }
    const size_t pi = s.paperW ? static_cast<size_t>(X % s.paperW + (Y % s.paperH) * s.paperStride) : 0;
    if (s.paperW && s.bump)
        for (int32_t* v : c) *v = Clamp(Round(*v + s.paperF[pi] * 255));
    if (s.paperW && s.dry) {
        const int p = s.paperB[pi];
        opacity = Round(st.opacitySaved - (s.negative ? p : 255 - p) * s.opacityFraction * s.strength);
    }
    opacity = std::max(opacity, 0);
    st.opacityInverse = static_cast<int16_t>(255 - opacity);
    const int a = s.a[at] | s.alphaOff;
    uint32_t out = 0;
    for (int k = 0; k < 3; ++k) {
        int v = (*c[k] * opacity + old[k] * (255 - opacity)) / 255;
        if (a < 255) v = (old[k] * (255 - a) + v * a) / 255;
        out |= static_cast<uint32_t>(v) << (8 * k);
    }
    return out;
}

// The kernel compiled for each of the 32 step sets, chosen at run time.
using PixelFn = uint32_t (*)(const DeliverSettings&, DeliverState&, const NoiseDraws&, uint32_t, int, int, int, int,
                             int, int);
template <size_t... S>
constexpr std::array<PixelFn, sizeof...(S)> Compiled(std::index_sequence<S...>) {
    return {[](const DeliverSettings& s, DeliverState& st, const NoiseDraws& d, uint32_t c, int x, int y, int x1,
               int y1, int x2, int y2) { return kwfill::DeliverPixelIn<S>(s, st, d, c, x, y, x1, y1, x2, y2); }...};
}
const auto kCompiled = Compiled(std::make_index_sequence<kwfill::DpAll + 1>());

bool SameState(const DeliverState& a, const DeliverState& b) {
    return a.R == b.R && a.G == b.G && a.B == b.B && a.t == b.t && a.opacitySaved == b.opacitySaved &&
           a.opacityInverse == b.opacityInverse;
}

// Every combination of the settings that steer the pipeline, each with its name.
std::vector<std::pair<DeliverSettings, std::string>> Combinations(const Scene& scene) {
    struct Style {
        FillStyle style;
        bool interpolate, brush;
    };
    const Style styles[] = {{FillStyle::Colour, false, true},       {FillStyle::Horizontal, false, true},
                            {FillStyle::FitHorizontal, false, true}, {FillStyle::Vertical, false, true},
                            {FillStyle::Circular, false, true},      {FillStyle::TileBrush, false, true},
                            {FillStyle::FitBrush, false, true},      {FillStyle::FitBrush, true, true},
                            {FillStyle::TileBrush, false, false},    {FillStyle::FitBrush, true, false},
                            {static_cast<FillStyle>(9), false, true}};  // no such style: a colour
    enum { Plain, Table, Swapped, Rubthrough };
    // Bumpiness, drybrush, negative, and whether there is a paper at all.
    const int papers[][4] = {{0, 0, 0, 1}, {1, 0, 0, 1}, {0, 1, 0, 1}, {1, 1, 1, 1}, {1, 1, 0, 0}};
    // Opacity 20 with the paper taking its full share sends drybrush below zero.
    const std::pair<int, float> opacities[] = {{255, 1.0f}, {130, 130 / 255.0f}, {20, 1.0f}};
    std::vector<std::pair<DeliverSettings, std::string>> all;
    for (const Style& st : styles)
        for (int mode : {Plain, Table, Swapped, Rubthrough})
            for (const auto& pa : papers)
                for (uint8_t alphaOff : {255, 0})
                    for (int noise : {0, 1, 2})
                        for (const auto& [opacity, fraction] : opacities) {
                            DeliverSettings s = scene.Settings();
                            s.style = st.style, s.interpolate = st.interpolate;
                            if (!st.brush) s.brushW = s.brushH = 0;
                            s.mode = mode == Rubthrough ? FillMode::Rubthrough : FillMode::Default;
                            s.table = mode == Table || mode == Swapped ? scene.table.data() : nullptr;
                            s.tableSwapped = mode == Swapped;
                            s.bump = pa[0], s.dry = pa[1], s.negative = pa[2];
                            if (!pa[3]) s.paperW = s.paperH = 0;
                            s.alphaOff = alphaOff;
                            s.noiseAmount = noise ? 60 : 0, s.noisePerChannel = noise == 1;
                            s.opacity = opacity, s.opacityFraction = fraction, s.strength = 1.2f;
                            std::ostringstream name;
                            name << "style " << int(st.style) << st.interpolate << st.brush << " mode " << mode
                                 << " paper " << pa[0] << pa[1] << pa[2] << pa[3] << " alphaOff " << int(alphaOff)
                                 << " noise " << noise << " opacity " << opacity;
                            all.emplace_back(s, name.str());
                        }
    return all;
}

// The picture in scan order through the kernel with every step, through the
// kernel compiled for the steps the settings need, and through the reference,
// all from the same kept values.
void ExpectSameRun(const DeliverSettings& s, const int (&box)[4]) {
    const uint32_t colour = 0x115AC8;
    const PixelFn fewer = kCompiled[kwfill::DeliverSteps(s)];
    const DeliverState start{11, 22, 33, 0, 0, 0};  // what a brush style without a brush repeats
    DeliverState all = start, some = start, want = start;
    for (int y = 0; y < H; ++y)
        for (int x = 0; x < W; ++x) {
            const NoiseDraws d = Draws(x, y);
            const uint32_t wanted = Reference(s, want, d, colour, x, y, box[0], box[1], box[2], box[3]);
            ASSERT_EQ(kwfill::DeliverPixel(s, all, d, colour, x, y, box[0], box[1], box[2], box[3]), wanted)
                << "at " << x << "," << y;
            ASSERT_EQ(fewer(s, some, d, colour, x, y, box[0], box[1], box[2], box[3]), wanted)
                << "steps " << kwfill::DeliverSteps(s) << " at " << x << "," << y;
        }
    EXPECT_TRUE(SameState(all, want)) << all.R << " " << all.G << " " << all.B << " " << all.t;
    EXPECT_TRUE(SameState(some, want));
}
}  // namespace

TEST(Deliver, EveryStepMatchesTheSlowReferenceAndFewerStepsGiveTheSamePixels) {
    const Scene scene;
    // The picture as the box, a box of one pixel, and a box inside the picture:
    // pixels outside a box hold the gradient and the stretched brush at their ends.
    const int boxes[][4] = {{0, 0, W - 1, H - 1}, {2, 1, 2, 1}, {3, 2, 8, 5}};
    int checked = 0;
    for (const auto& [s, name] : Combinations(scene)) {
        SCOPED_TRACE(name);
        ASSERT_EQ(kwfill::NoiseDrawCount(s), s.noiseAmount == 0 ? 0 : (s.noisePerChannel ? 3 : 1));
        for (const auto& box : boxes) {
            ExpectSameRun(s, box);
            if (::testing::Test::HasFailure()) return;
            ++checked;
        }
    }
    EXPECT_EQ(checked, 11 * 4 * 5 * 2 * 3 * 3 * 3);
}

TEST(Deliver, StepsNeededFollowTheSettings) {
    const Scene scene;
    DeliverSettings s = scene.Settings();
    EXPECT_EQ(kwfill::DeliverSteps(s), 0u) << "a plain colour with the paper there but unused";
    s.style = FillStyle::TileBrush;
    EXPECT_EQ(kwfill::DeliverSteps(s), unsigned{kwfill::DpStyle});
    s = scene.Settings();
    s.mode = FillMode::Rubthrough;
    EXPECT_EQ(kwfill::DeliverSteps(s), unsigned{kwfill::DpMode});
    s.mode = FillMode::Alpha;  // laid on as the default: no table, nothing to do
    EXPECT_EQ(kwfill::DeliverSteps(s), 0u);
    s.bump = true;
    EXPECT_EQ(kwfill::DeliverSteps(s), unsigned{kwfill::DpPaper});
    s.paperW = 0;
    EXPECT_EQ(kwfill::DeliverSteps(s), 0u) << "bumpiness without a paper";
    s.noiseAmount = 1, s.alphaOff = 254;
    EXPECT_EQ(kwfill::DeliverSteps(s), unsigned{kwfill::DpNoise | kwfill::DpAlpha});
}

TEST(Modes, BlendsOfThePaintingAndFillModes) {
    using kwmode::Blend;
    using kwmode::BlendOf;
    using kwmode::PaintMode;
    const Blend paint[] = {Blend::Normal, Blend::Add,    Blend::Subtract, Blend::Multiply,
                           Blend::Normal, Blend::Normal, Blend::Normal,   Blend::Normal,
                           Blend::Normal, Blend::Divide, Blend::Screen,   Blend::AroundGrey};
    for (int m = 0; m < 12; ++m) EXPECT_EQ(BlendOf(static_cast<PaintMode>(m)), paint[m]) << "painting mode " << m;
    const Blend fill[] = {Blend::Normal, Blend::Add,    Blend::Subtract, Blend::Multiply,
                          Blend::Normal, Blend::Divide, Blend::Screen,   Blend::Normal};
    for (int m = 0; m < 8; ++m) EXPECT_EQ(BlendOf(static_cast<FillMode>(m)), fill[m]) << "fill mode " << m;
    EXPECT_EQ(BlendOf(static_cast<PaintMode>(200)), Blend::Normal) << "an unknown stored number";
}
