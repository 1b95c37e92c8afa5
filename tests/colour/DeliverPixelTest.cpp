// DeliverPixel against a slow reference written straight from the formulas (the
// modes from their arithmetic, not from the tables), over styles, modes, paper,
// noise, opacity and alpha; then the classic single-pixel entry and the fill.
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
constexpr int W = 13, H = 9;

int RoundF(float v) { return static_cast<int>(std::nearbyint(v)); }
int RoundD(double v) { return static_cast<int>(std::nearbyint(v)); }
int Clamp(int v) { return std::clamp(v, 0, 255); }

struct Ref {
    int32_t R = 0, G = 0, B = 0;
    int16_t opacitySaved = 0, opacityInverse = 0;
};

// One pixel as the steps read: style, gradient opacity, mode, noise, bump, drybrush, opacity, alpha.
uint32_t Reference(Ref& s, uint32_t colour, int X, int Y, int X1, int Y1, int X2, int Y2) {
    const int gi = App.GradientIndex;
    int ga = 255;
    auto look = [&](float t) {
        const int p = std::clamp(RoundF(t), 0, 255);
        s.R = Grad(p, 0, gi), s.G = Grad(p, 1, gi), s.B = Grad(p, 2, gi), ga = Grad(p, 3, gi);
    };
    auto brush = [&](int u, int v) { s.R = BrushR(u, v), s.G = BrushG(u, v), s.B = BrushB(u, v); };
    const float w = X2 - X1, h = Y2 - Y1;
    switch (App.FillStyle) {
        case 1:
        case 2: look((X - X1) * (255 / (w <= 0 ? 0.01f : w))); break;
        case 3: look((Y - Y1) * (255 / (h <= 0 ? 0.01f : h))); break;
        case 4: {
            const float a = (X - w / 2 - X1) * (255 / (w == 0 ? 1 : w)), b = (Y - h / 2 - Y1) * (255 / (h == 0 ? 1 : h));
            look((a * a + b * b) / 128);
            break;
        }
        case 5:
            if (BrushWidth > 0) brush(X % BrushWidth, Y % BrushHeight);
            break;
        case 6:
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
    int opacity = RoundD(App.Opacity * ga / 255.0);
    s.opacitySaved = static_cast<int16_t>(opacity);
    int32_t* const c[3] = {&s.R, &s.G, &s.B};
    const int old[3] = {BufR(X, Y), BufG(X, Y), BufB(X, Y)};
    const Plane* const swap[3] = {&SwapR, &SwapG, &SwapB};
    for (int k = 0; k < 3; ++k) {
        int32_t& v = *c[k];
        switch (App.FillMode) {
            case 1: v = std::min(v + old[k], 255); break;
            case 2: v = std::max(old[k] - v, 0); break;
            case 3: v = v * old[k] / 255; break;
            case 5: v = old[k] == 0 ? 255 : std::min(255, RoundF(static_cast<float>(v) / old[k] * 255.0f)); break;
            case 6: v = RoundD(old[k] + (255.0 - old[k]) / 255.0 * v); break;
            case 7: v = (*swap[k])(X, Y); break;
            default: break;
        }
    }
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
        App.FillMode = 0;
        App.FillStyle = 0;
        DeliverKept = {};
    }
    void TearDown() override {
        BrushWidth = BrushHeight = 0;
        BumpinessOn = DrybrushOn = NegativeOn = 0;
        App.NoiseAmount = App.FillMode = App.FillStyle = 0;
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

TEST_F(DeliverPixelTest, MatchesTheFormulasOverStylesModesPaperNoiseOpacityAndAlpha) {
    struct Style { int style, interpolate, brush; };
    const Style styles[] = {{0, 1, 5}, {1, 1, 5}, {2, 1, 5}, {3, 1, 5}, {4, 1, 5},
                            {5, 1, 5}, {6, 1, 5}, {6, 0, 5}, {5, 1, 0}, {6, 1, 0}};
    const int papers[][3] = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 1, 1}, {1, 1, 1}};  // bump, drybrush, negative
    // Opacity 20 with the paper taking its full share sends drybrush below zero.
    const std::pair<int, float> opacities[] = {{255, 1.0f}, {130, 130 / 255.0f}, {20, 1.0f}};
    const int boxes[][4] = {{0, 0, W - 1, H - 1}, {2, 1, 2, 1}};
    const uint32_t colour = vb::RGB(200, 90, 17);
    int checked = 0;
    for (const Style& st : styles)
        for (int mode = 0; mode <= 7; ++mode)
            for (const auto& pa : papers)
                for (int alphaOff : {255, 0})
                    for (int noise : {0, 1, 2})
                        for (const auto& [opacity, fraction] : opacities)
                            for (const auto& box : boxes) {
                                if (st.style >= 1 && st.style != 5 && box[0] == box[2]) continue;  // box and pixel disagree
                                SCOPED_TRACE(::testing::Message() << "style " << st.style << st.interpolate << st.brush << " mode " << mode
                                             << " paper " << pa[0] << pa[1] << pa[2] << " alphaOff " << alphaOff << " noise "
                                             << noise << " opacity " << opacity << " box " << box[2]);
                                App.FillStyle = st.style, App.BrushInterpolate = st.interpolate, App.FillMode = mode;
                                BrushWidth = st.brush, BrushHeight = st.brush ? 4 : 0;
                                BumpinessOn = pa[0], DrybrushOn = pa[1];
                                if (NegativeOn != pa[2]) NegativeOn = pa[2], RefreshPaperBuff();
                                App.AlphaOff = alphaOff, App.NoiseAmount = noise ? 60 : 0, App.NoiseMode = noise == 1;
                                SetOpacity(opacity, fraction);
                                DeliverKept = {11, 22, 33, 0};  // what a brush style without a brush repeats
                                Ref ref{11, 22, 33, 0, 0};
                                std::vector<uint32_t> got, want;
                                vb::Randomize(99);
                                DeliverContext c = DeliverBegin();
                                for (int y = 0; y < H; ++y)
                                    for (int x = 0; x < W; ++x)
                                        got.push_back(DeliverPixel(c, colour, x, y, box[0], box[1], box[2], box[3]));
                                DeliverEnd(c);
                                vb::Randomize(99);
                                for (int y = 0; y < H; ++y)
                                    for (int x = 0; x < W; ++x)
                                        want.push_back(Reference(ref, colour, x, y, box[0], box[1], box[2], box[3]));
                                ASSERT_EQ(got, want);
                                ASSERT_EQ(OpacitySaved, ref.opacitySaved);
                                ASSERT_EQ(OpacityInverse, ref.opacityInverse);
                                ASSERT_EQ(vb::RGB(DeliverKept.R, DeliverKept.G, DeliverKept.B), vb::RGB(ref.R, ref.G, ref.B));
                                ASSERT_EQ(App.Opacity, opacity) << "the caller's opacity comes back";
                                ++checked;
                            }
    EXPECT_EQ(checked, (10 + 3) * 8 * 5 * 2 * 3 * 3) << "the degenerate box serves styles 0 and 5 only";
}

TEST_F(DeliverPixelTest, ClassicEntryKeepsItsColourForBrushlessStylesAndIgnoresPixelsOffThePicture) {
    SetOpacity(255, 1.0f);
    const uint32_t red = vb::RGB(250, 0, 0), blue = vb::RGB(0, 0, 250);
    EXPECT_EQ(Classic(red, 4, 3), red) << "solid, full opacity, alpha off: the colour itself";
    BrushWidth = 0;
    for (uint16_t style : {5, 6}) {
        App.FillStyle = style;
        EXPECT_EQ(Classic(blue, 4, 3), red) << "style " << style << " without a brush repeats the last colour";
    }
    App.FillStyle = 1;
    EXPECT_EQ(Classic(blue, 2, 3, 2, 2), vb::RGB(Grad(0, 0, 2), Grad(0, 1, 2), Grad(0, 2, 2)))
        << "X1 = X2 gives step 0 at X1 (step 0 of gradient 2 is fully opaque)";
    EXPECT_EQ(Classic(blue, -1, 400), blue) << "off the picture the colour comes back";
}

TEST_F(DeliverPixelTest, WholeBufferFillAgreesWithThePixelAtATime) {
    // The fill compiles a plain fill without the steps it cannot need; both
    // versions must give what the single-pixel entry gives.
    for (uint16_t style : {0, 1}) {
        SetUp();  // the planes afresh
        App.FillStyle = style;
        SetOpacity(131, 131 / 255.0f);
        std::vector<uint32_t> want, got;
        for (int y = 0; y < H; ++y)
            for (int x = 0; x < W; ++x) want.push_back(Classic(vb::RGB(40, 150, 230), x, y));
        DeliverFill(vb::RGB(40, 150, 230));
        for (int y = 0; y < H; ++y)
            for (int x = 0; x < W; ++x) got.push_back(PixelAt(x, y));
        EXPECT_EQ(got, want) << "style " << style;
    }
}
}  // namespace
