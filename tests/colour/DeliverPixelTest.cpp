// The logic layer of DeliverPixel against a slow reference that reads the
// globals: the settings it builds (each fill mode's arithmetic, not its table;
// the gradient, brush and paper it picks; noise drawn from the shared
// generator), the state it hands back, the classic single-pixel entry and the
// fill. The pipeline's every combination is the kernel's test, in tests/native.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

#include "colour/DeliverPixel.h"
#include "colour/Gradients.h"
#include "colour/Paper.h"
#include "core/framework/AppState.h"
#include "tests/colour/ColourFixture.h"

namespace {
using colourtest::PixelAt;
using kwmode::FillMode;
using kwmode::FillStyle;
constexpr int W = 13, H = 9;


int RoundF(float v) { return static_cast<int>(std::nearbyint(v)); }
int RoundD(double v) { return static_cast<int>(std::nearbyint(v)); }
int Clamp(int v) { return std::clamp(v, 0, 255); }

struct Ref {
    int32_t R = 0, G = 0, B = 0;
    int16_t opacitySaved = 0, opacityInverse = 0;
};

// The colour of the fill style from the gradient and brush globals; the gradient's opacity.
int StyleColour(Ref& s, uint32_t colour, int X, int Y, int X1, int Y1, int X2, int Y2) {
    const int gi = App.GradientIndex;
    int ga = 255;
    auto look = [&](float t) {
        const int p = std::clamp(RoundF(t), 0, 255);
        s.R = Grad(p, 0, gi), s.G = Grad(p, 1, gi), s.B = Grad(p, 2, gi), ga = Grad(p, 3, gi);
    };
    auto brush = [&](int u, int v) { s.R = BrushR(u, v), s.G = BrushG(u, v), s.B = BrushB(u, v); };
    const float w = X2 - X1, h = Y2 - Y1;
    switch (App.FillStyle) {
        case FillStyle::Horizontal:
        case FillStyle::FitHorizontal: look((X - X1) * (255 / (w <= 0 ? 0.01f : w))); break;
        case FillStyle::Vertical: look((Y - Y1) * (255 / (h <= 0 ? 0.01f : h))); break;
        case FillStyle::Circular: {
            const float a = (X - w / 2 - X1) * (255 / (w == 0 ? 1 : w)), b = (Y - h / 2 - Y1) * (255 / (h == 0 ? 1 : h));
            look((a * a + b * b) / 128);
            break;
        }
        case FillStyle::TileBrush:
            if (BrushWidth > 0) brush(X % BrushWidth, Y % BrushHeight);
            break;
        case FillStyle::FitBrush:
            if (BrushWidth > 0) {
                const float fl = App.BrushInterpolate ? 0.001f : 0.01f;
                const float fx = (BrushWidth - 1) / 255.0f * ((X - X1) * (255 / (w <= 0 ? fl : w)));
                const float fy = (BrushHeight - 1) / 255.0f * ((Y - Y1) * (255 / (h <= 0 ? fl : h)));
                if (App.BrushInterpolate == 0) {
                    brush(RoundF(fx), RoundF(fy));
                    break;
                }
                const int u = static_cast<int>(std::floor(fx)), v = static_cast<int>(std::floor(fy));
                const float ax = fx - u, bx = 1 - ax, ay = fy - v, by = 1 - ay;
                auto bil = [&](Plane& p) {
                    return RoundF((p(u, v) * bx + p(u + 1, v) * ax) * by + (p(u, v + 1) * bx + p(u + 1, v + 1) * ax) * ay);
                };
                s.R = bil(BrushR), s.G = bil(BrushG), s.B = bil(BrushB);
            }
            break;
        default: s.R = colour & 255, s.G = (colour >> 8) & 255, s.B = (colour >> 16) & 255;
    }
    return ga;
}

// Each fill mode from its arithmetic, against the picture as it is.
void ModeColour(Ref& s, int X, int Y) {
    int32_t* const c[3] = {&s.R, &s.G, &s.B};
    const int old[3] = {BufR(X, Y), BufG(X, Y), BufB(X, Y)};
    const Plane* const swap[3] = {&SwapR, &SwapG, &SwapB};
    for (int k = 0; k < 3; ++k) {
        int32_t& v = *c[k];
        switch (App.FillMode) {
            case FillMode::Add: v = std::min(v + old[k], 255); break;
            case FillMode::Subtract: v = std::max(old[k] - v, 0); break;
            case FillMode::Multiply: v = v * old[k] / 255; break;
            case FillMode::Divide:
                v = old[k] == 0 ? 255 : std::min(255, RoundF(static_cast<float>(v) / old[k] * 255.0f));
                break;
            case FillMode::Screen: v = RoundD(old[k] + (255.0 - old[k]) / 255.0 * v); break;
            case FillMode::Rubthrough: v = (*swap[k])(X, Y); break;
            default: break;  // default and alpha lay the colour on
        }
    }
}

// One pixel as the steps read: style, gradient opacity, mode, noise, bump, drybrush, opacity, alpha.
uint32_t Reference(Ref& s, uint32_t colour, int X, int Y, int X1, int Y1, int X2, int Y2) {
    int opacity = RoundD(App.Opacity * StyleColour(s, colour, X, Y, X1, Y1, X2, Y2) / 255.0);
    s.opacitySaved = static_cast<int16_t>(opacity);
    ModeColour(s, X, Y);
    int32_t* const c[3] = {&s.R, &s.G, &s.B};
    const int old[3] = {BufR(X, Y), BufG(X, Y), BufB(X, Y)};
    if (App.NoiseAmount > 0) {
        const double N = App.NoiseAmount;
        if (App.NoiseMode == 1) {
            for (int k = 0; k < 3; ++k) *c[k] = Clamp(RoundD(*c[k] + (vb::Rnd() - 0.5) * (k == 1 ? N * 1.1 : N)));
        } else {
            const int n = RoundD((vb::Rnd() - 0.5) * N), m = std::max({s.R, s.G, s.B});
            const int k = m > 0 ? RoundD(255.0 / m) : 255;
            for (int32_t* v : c) *v = Clamp(RoundD(*v + n * (*v * k) / 255.0));
        }
    }
    if (BumpinessOn)
        for (int32_t* v : c) *v = Clamp(RoundF(*v + PaperF(X % PaperWidth, Y % PaperHeight) * 255));
    if (DrybrushOn) {
        const int p = PaperB(X % PaperWidth, Y % PaperHeight);
        opacity = RoundF(s.opacitySaved - (NegativeOn ? p : 255 - p) * OpacityFraction * PaperStrength);
    }
    opacity = std::max(opacity, 0);
    s.opacityInverse = static_cast<int16_t>(255 - opacity);
    const int a = BufA(X, Y) | App.AlphaOff;
    int out[3];
    for (int k = 0; k < 3; ++k) {
        out[k] = (*c[k] * opacity + old[k] * (255 - opacity)) / 255;
        if (a < 255) out[k] = (old[k] * (255 - a) + out[k] * a) / 255;
    }
    return vb::RGB(out[0], out[1], out[2]);
}

void FillRandom(Plane& p, std::mt19937& rng) {
    for (size_t i = 0; i < p.count(); ++i) p.data()[i] = static_cast<uint8_t>(rng());
}

class DeliverPixelTest : public ::testing::Test {
protected:
    void SetUp() override {
        MakeTestDocument(W, H);
        std::mt19937 rng(7);
        for (Plane* p : {&BufR, &BufG, &BufB, &BufA, &SwapR, &SwapG, &SwapB}) FillRandom(*p, rng);
        BufR(3, 2) = 0;  // divide by a black picture
        BufA(5, 5) = 0;  // a pixel the alpha plane hides entirely
        std::generate_n(&GradientData[0][0][0], sizeof GradientData, [&] { return static_cast<uint8_t>(rng()); });
        for (int s = 0; s < 256; s += 3) Grad(s, 3, 2) = 255;  // some full-opacity steps among the random ones
        BrushWidth = 5;
        BrushHeight = 4;
        for (Plane* p : {&BrushR, &BrushG, &BrushB, &BrushA}) {
            p->alloc(BrushWidth, BrushHeight);
            FillRandom(*p, rng);
        }
        BumpinessOn = DrybrushOn = NegativeOn = 0;
        PaperStrength = 1.0f;
        PickStockPaper(3);
        App.GradientIndex = 2;
        App.AlphaOff = 255;
        App.NoiseAmount = 0;
        App.FillMode = FillMode::Default;
        App.FillStyle = FillStyle::Colour;
        DeliverKept = {};
    }
    void TearDown() override {
        BrushWidth = BrushHeight = 0;
        BumpinessOn = DrybrushOn = NegativeOn = 0;
        App.NoiseAmount = 0;
        App.FillMode = FillMode::Default;
        App.FillStyle = FillStyle::Colour;
        App.AlphaOff = 255;
    }
    // The caller's opacity and the share of it the paper may take away.
    void SetOpacity(int o, float fraction) {
        App.Opacity = OpacitySaved = static_cast<int16_t>(o);
        OpacityFraction = fraction;
    }
    // The classic entry over the whole picture as the box unless told otherwise.
    uint32_t Classic(uint32_t colour, int x, int y, int x1 = 0, int x2 = W - 1) {
        int32_t c = static_cast<int32_t>(colour), result = 0;
        int16_t X = static_cast<int16_t>(x), Y = static_cast<int16_t>(y), X1 = static_cast<int16_t>(x1), Y1 = 0,
                X2 = static_cast<int16_t>(x2), Y2 = H - 1;
        DeliverPixel(c, X, Y, X1, Y1, X2, Y2, result);
        return static_cast<uint32_t>(result);
    }
    ScriptedHost host;
};

TEST_F(DeliverPixelTest, BuildsItsSettingsFromTheGlobalsAndHandsTheStateBack) {
    struct Style {
        FillStyle style;
        int interpolate, brush;
    };
    const Style styles[] = {{FillStyle::Colour, 1, 5},    {FillStyle::Horizontal, 1, 5}, {FillStyle::FitHorizontal, 1, 5},
                            {FillStyle::Vertical, 1, 5},  {FillStyle::Circular, 1, 5},   {FillStyle::TileBrush, 1, 5},
                            {FillStyle::FitBrush, 1, 5},  {FillStyle::FitBrush, 0, 5},   {FillStyle::TileBrush, 1, 0},
                            {FillStyle::FitBrush, 1, 0}};
    const uint32_t colour = vb::RGB(200, 90, 17);
    int checked = 0;
    for (const Style& st : styles)
        for (int mode = 0; mode <= 7; ++mode)
            for (int paper : {0, 1})
                for (int noise : {0, 1, 2}) {
                    SCOPED_TRACE(::testing::Message() << "style " << int(st.style) << st.interpolate << st.brush
                                                      << " mode " << mode << " paper " << paper << " noise " << noise);
                    App.FillStyle = st.style, App.FillMode = static_cast<FillMode>(mode);
                    App.BrushInterpolate = st.interpolate;
                    BrushWidth = st.brush, BrushHeight = st.brush ? 4 : 0;
                    BumpinessOn = DrybrushOn = paper;
                    if (NegativeOn != paper) NegativeOn = paper, RefreshPaperBuff();
                    App.AlphaOff = 0, App.NoiseAmount = noise ? 60 : 0, App.NoiseMode = noise == 1;
                    SetOpacity(130, 130 / 255.0f);
                    DeliverKept = {11, 22, 33, 0};  // what a brush style without a brush repeats
                    Ref ref{11, 22, 33, 0, 0};
                    std::vector<uint32_t> got, want;
                    vb::Randomize(99);
                    DeliverRun run = DeliverBegin();
                    for (int y = 0; y < H; ++y)
                        for (int x = 0; x < W; ++x)
                            got.push_back(DeliverPixel(run.settings, run.state, colour, x, y, 0, 0, W - 1, H - 1));
                    DeliverEnd(run.state);
                    const double nextAfterFill = vb::Rnd();
                    vb::Randomize(99);
                    for (int y = 0; y < H; ++y)
                        for (int x = 0; x < W; ++x) want.push_back(Reference(ref, colour, x, y, 0, 0, W - 1, H - 1));
                    ASSERT_EQ(got, want);
                    ASSERT_EQ(nextAfterFill, vb::Rnd()) << "the noise takes as many draws as the formulas";
                    ASSERT_EQ(OpacitySaved, ref.opacitySaved);
                    ASSERT_EQ(OpacityInverse, ref.opacityInverse);
                    ASSERT_EQ(vb::RGB(DeliverKept.R, DeliverKept.G, DeliverKept.B), vb::RGB(ref.R, ref.G, ref.B));
                    ASSERT_EQ(App.Opacity, 130) << "the caller's opacity comes back";
                    ++checked;
                }
    EXPECT_EQ(checked, 10 * 8 * 2 * 3);
}

TEST_F(DeliverPixelTest, ClassicEntryKeepsItsColourForBrushlessStylesAndIgnoresPixelsOffThePicture) {
    SetOpacity(255, 1.0f);
    const uint32_t red = vb::RGB(250, 0, 0), blue = vb::RGB(0, 0, 250);
    EXPECT_EQ(Classic(red, 4, 3), red) << "solid, full opacity, alpha off: the colour itself";
    BrushWidth = 0;
    for (FillStyle style : {FillStyle::TileBrush, FillStyle::FitBrush}) {
        App.FillStyle = style;
        EXPECT_EQ(Classic(blue, 4, 3), red) << "style " << int(style) << " without a brush repeats the last colour";
    }
    App.FillStyle = FillStyle::Horizontal;
    EXPECT_EQ(Classic(blue, 2, 3, 2, 2), vb::RGB(Grad(0, 0, 2), Grad(0, 1, 2), Grad(0, 2, 2)))
        << "X1 = X2 gives step 0 at X1 (step 0 of gradient 2 is fully opaque)";
    EXPECT_EQ(Classic(blue, -1, 400), blue) << "off the picture the colour comes back";
    // Rubthrough reads the swap layer, and without one of the picture's shape lays the colour on.
    App.FillStyle = FillStyle::Colour, App.FillMode = FillMode::Rubthrough;
    EXPECT_EQ(Classic(blue, 4, 3), vb::RGB(SwapR(4, 3), SwapG(4, 3), SwapB(4, 3)));
    SwapR.alloc(W - 1, H);
    EXPECT_EQ(Classic(blue, 4, 3), blue) << "a swap layer of another size";
    SwapR.free(), SwapG.free(), SwapB.free();
    EXPECT_EQ(Classic(blue, 4, 3), blue) << "no swap layer";
}

TEST_F(DeliverPixelTest, WholeBufferFillAgreesWithThePixelAtATime) {
    // The fill compiles a plain fill without the steps it cannot need; both
    // versions must give what the single-pixel entry gives.
    for (FillStyle style : {FillStyle::Colour, FillStyle::Horizontal}) {
        SetUp();  // the planes afresh
        App.FillStyle = style;
        SetOpacity(131, 131 / 255.0f);
        std::vector<uint32_t> want, got;
        for (int y = 0; y < H; ++y)
            for (int x = 0; x < W; ++x) want.push_back(Classic(vb::RGB(40, 150, 230), x, y));
        DeliverFill(vb::RGB(40, 150, 230));
        for (int y = 0; y < H; ++y)
            for (int x = 0; x < W; ++x) got.push_back(PixelAt(x, y));
        EXPECT_EQ(got, want) << "style " << int(style);
    }
}
}  // namespace
