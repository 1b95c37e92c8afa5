// DeliverPixel against a slow reference written straight from the formulas (the
// modes from their arithmetic, not from the tables), over styles, modes, paper,
// noise, opacity and alpha; then the single cases a user would notice.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

#include "colour/DeliverPixel.h"
#include "colour/Gradients.h"
#include "colour/Paper.h"
#include "core/AppState.h"
#include "core/Buffers.h"
#include "core/vb.h"
#include "tests/support/ScriptedHost.h"

namespace {
constexpr int W = 13, H = 9;

int RoundF(float v) { return static_cast<int>(std::nearbyint(v)); }
int Clamp(int v) { return std::clamp(v, 0, 255); }

struct Ref {
    int32_t R = 0, G = 0, B = 0;
    int16_t opacitySaved = 0;
};

// One pixel as the steps read: style, gradient opacity, mode, noise, bump, drybrush, opacity, alpha.
uint32_t Reference(Ref& s, uint32_t colour, int X, int Y, int X1, int Y1, int X2, int Y2) {
    const int gi = App.GradientIndex;
    int ga = 255;
    auto look = [&](float t) {
        int p = std::clamp(RoundF(t), 0, 255);
        s.R = Grad(p, 0, gi), s.G = Grad(p, 1, gi), s.B = Grad(p, 2, gi);
        ga = Grad(p, 3, gi);
    };
    switch (App.FillStyle) {
        case 1:
        case 2: {
            float w = X2 - X1;
            if (w <= 0) w = 0.01f;
            look((X - X1) * (255 / w));
            break;
        }
        case 3: {
            float h = Y2 - Y1;
            if (h <= 0) h = 0.01f;
            look((Y - Y1) * (255 / h));
            break;
        }
        case 4: {
            float hx = (X2 - X1) / 2.0f, hy = (Y2 - Y1) / 2.0f, w = X2 - X1, h = Y2 - Y1;
            if (w == 0) w = 1;
            if (h == 0) h = 1;
            float a = (X - hx - X1) * (255 / w), b = (Y - hy - Y1) * (255 / h);
            look((a * a + b * b) / 128);
            break;
        }
        case 5:
            if (BrushWidth > 0) {
                int u = X % BrushWidth, v = Y % BrushHeight;
                s.R = BrushR(u, v), s.G = BrushG(u, v), s.B = BrushB(u, v);
            }
            break;
        case 6:
            if (BrushWidth > 0) {
                float fl = App.BrushInterpolate ? 0.001f : 0.01f;
                float w = X2 - X1, h = Y2 - Y1;
                if (w <= 0) w = fl;
                if (h <= 0) h = fl;
                float fx = (BrushWidth - 1) / 255.0f * ((X - X1) * (255 / w));
                float fy = (BrushHeight - 1) / 255.0f * ((Y - Y1) * (255 / h));
                if (App.BrushInterpolate == 0) {
                    int u = RoundF(fx), v = RoundF(fy);
                    s.R = BrushR(u, v), s.G = BrushG(u, v), s.B = BrushB(u, v);
                } else {
                    int u = static_cast<int>(std::floor(fx)), v = static_cast<int>(std::floor(fy));
                    float ax = fx - u, bx = 1 - ax, ay = fy - v, by = 1 - ay;
                    auto bil = [&](Plane& p) {
                        float top = p(u, v) * bx + p(u + 1, v) * ax, bottom = p(u, v + 1) * bx + p(u + 1, v + 1) * ax;
                        return RoundF(top * by + bottom * ay);
                    };
                    s.R = bil(BrushR), s.G = bil(BrushG), s.B = bil(BrushB);
                }
            }
            break;
        default:
            s.R = colour & 255, s.G = (colour >> 8) & 255, s.B = (colour >> 16) & 255;
    }
    int opacity = static_cast<int>(std::nearbyint(App.Opacity * ga / 255.0));
    s.opacitySaved = static_cast<int16_t>(opacity);
    const int oR = BufR(X, Y), oG = BufG(X, Y), oB = BufB(X, Y);
    auto mode = [&](int32_t& c, int old, const Plane& swap) {
        switch (App.FillMode) {
            case 1: c = std::min(c + old, 255); break;
            case 2: c = std::max(old - c, 0); break;
            case 3: c = c * old / 255; break;
            case 5: c = old == 0 ? 255 : std::min(255, RoundF(static_cast<float>(c) / old * 255.0f)); break;
            case 6: c = static_cast<int>(std::nearbyint(old + (255.0 - old) / 255.0 * c)); break;
            case 7: c = swap(X, Y); break;
            default: break;
        }
    };
    mode(s.R, oR, SwapR);
    mode(s.G, oG, SwapG);
    mode(s.B, oB, SwapB);
    if (App.NoiseAmount > 0) {
        double N = App.NoiseAmount;
        if (App.NoiseMode == 1) {
            s.R = Clamp(static_cast<int>(std::nearbyint(s.R + (vb::Rnd() - 0.5) * N)));
            s.G = Clamp(static_cast<int>(std::nearbyint(s.G + (vb::Rnd() - 0.5) * (N * 1.1))));
            s.B = Clamp(static_cast<int>(std::nearbyint(s.B + (vb::Rnd() - 0.5) * N)));
        } else {
            int n = static_cast<int>(std::nearbyint((vb::Rnd() - 0.5) * N));
            int m = std::max({s.R, s.G, s.B});
            int k = m > 0 ? static_cast<int>(std::nearbyint(255.0 / m)) : 255;
            for (int32_t* c : {&s.R, &s.G, &s.B}) *c = Clamp(static_cast<int>(std::nearbyint(*c + n * (*c * k) / 255.0)));
        }
    }
    if (BumpinessOn) {
        float e = PaperF(X % PaperWidth, Y % PaperHeight) * 255;
        for (int32_t* c : {&s.R, &s.G, &s.B}) *c = Clamp(RoundF(*c + e));
    }
    if (DrybrushOn) {
        int p = PaperB(X % PaperWidth, Y % PaperHeight);
        opacity = NegativeOn ? RoundF(s.opacitySaved - p * OpacityFraction * PaperStrength)
                             : RoundF(s.opacitySaved - (255 - p) * OpacityFraction * PaperStrength);
    }
    if (opacity < 0) opacity = 0;
    int inv = 255 - opacity;
    int R = (s.R * opacity + oR * inv) / 255, G = (s.G * opacity + oG * inv) / 255, B = (s.B * opacity + oB * inv) / 255;
    int a = BufA(X, Y) | App.AlphaOff;
    if (a < 255) {
        R = (oR * (255 - a) + R * a) / 255;
        G = (oG * (255 - a) + G * a) / 255;
        B = (oB * (255 - a) + B * a) / 255;
    }
    return vb::RGB(R, G, B);
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
        for (auto& g : GradientData)
            for (auto& ch : g)
                for (auto& v : ch) v = static_cast<uint8_t>(rng());
        for (int s = 0; s < 256; s += 3) Grad(s, 3, 2) = 255;  // some full-opacity steps among the random ones
        BrushWidth = 5;
        BrushHeight = 4;
        for (Plane* p : {&BrushR, &BrushG, &BrushB, &BrushA}) {
            p->alloc(BrushWidth, BrushHeight);
            FillRandom(*p, rng);
        }
        PickStockPaper(3);
        App.GradientIndex = 2;
        App.AlphaOff = 255;
        App.NoiseAmount = 0;
        App.FillMode = 0;
        App.FillStyle = 0;
        BumpinessOn = DrybrushOn = NegativeOn = 0;
        DeliverKept = {};
    }
    void TearDown() override {
        BrushWidth = BrushHeight = 0;
        BumpinessOn = DrybrushOn = NegativeOn = 0;
        App.NoiseAmount = 0;
        App.FillMode = 0;
        App.FillStyle = 0;
        App.AlphaOff = 255;
    }
    void SetOpacity(int o) {
        App.Opacity = static_cast<int16_t>(o);
        OpacitySaved = App.Opacity;
        OpacityFraction = o / 255.0f;
    }
    ScriptedHost host;
};

TEST_F(DeliverPixelTest, MatchesTheFormulasOverStylesModesPaperNoiseAndAlpha) {
    struct Style { int style; int interpolate; bool brush; };
    const Style styles[] = {{0, 1, true}, {1, 1, true}, {2, 1, true}, {3, 1, true}, {4, 1, true},
                            {5, 1, true}, {6, 1, true}, {6, 0, true}, {5, 1, false}, {6, 1, false}};
    struct Paper { int bump, dry, neg; };
    const Paper papers[] = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 1, 1}, {1, 1, 1}};
    const int boxes[][4] = {{0, 0, W - 1, H - 1}, {2, 1, 2, 1}};
    int checked = 0;
    for (const Style& st : styles)
        for (int mode = 0; mode <= 7; ++mode)
            for (const Paper& pa : papers)
                for (int alphaOff : {255, 0})
                    for (int noise : {0, 1, 2})
                        for (int opacity : {255, 130})
                            for (const auto& box : boxes) {
                            App.FillStyle = static_cast<uint16_t>(st.style);
                            App.BrushInterpolate = static_cast<uint8_t>(st.interpolate);
                            BrushWidth = st.brush ? 5 : 0;
                            BrushHeight = st.brush ? 4 : 0;
                            App.FillMode = static_cast<uint8_t>(mode);
                            BumpinessOn = static_cast<int16_t>(pa.bump);
                            DrybrushOn = static_cast<int16_t>(pa.dry);
                            if (NegativeOn != pa.neg) {
                                NegativeOn = static_cast<int16_t>(pa.neg);
                                RefreshPaperBuff();
                            }
                            App.AlphaOff = static_cast<uint8_t>(alphaOff);
                            App.NoiseAmount = noise ? 60 : 0;
                            App.NoiseMode = static_cast<uint8_t>(noise == 1 ? 1 : 0);
                            SetOpacity(opacity);
                            if (st.style >= 1 && st.style != 5 && box[0] == box[2]) continue;  // box and pixel disagree
                            DeliverKept = {11, 22, 33, 0};
                            Ref ref{11, 22, 33, 0};
                            const uint32_t colour = vb::RGB(200, 90, 17);
                            vb::Randomize(99);
                            DeliverContext c = DeliverBegin();
                            std::vector<uint32_t> got;
                            for (int y = 0; y < H; ++y)
                                for (int x = 0; x < W; ++x)
                                    got.push_back(DeliverPixel(c, colour, x, y, box[0], box[1], box[2], box[3]));
                            DeliverEnd(c);
                            vb::Randomize(99);
                            size_t i = 0;
                            for (int y = 0; y < H; ++y)
                                for (int x = 0; x < W; ++x, ++i) {
                                    uint32_t want = Reference(ref, colour, x, y, box[0], box[1], box[2], box[3]);
                                    ASSERT_EQ(got[i], want) << "style " << st.style << " interp " << st.interpolate
                                                            << " brush " << st.brush << " mode " << mode << " paper "
                                                            << pa.bump << pa.dry << pa.neg << " alphaOff " << alphaOff
                                                            << " noise " << noise << " opacity " << opacity << " at "
                                                            << x << "," << y;
                                }
                            EXPECT_EQ(OpacitySaved, ref.opacitySaved);
                            EXPECT_EQ(App.Opacity, opacity) << "the caller's opacity comes back";
                            ++checked;
                        }
    EXPECT_EQ(checked, (10 + 3) * 8 * 5 * 2 * 3 * 2) << "the degenerate box serves styles 0 and 5 only";
}

TEST_F(DeliverPixelTest, PlainCasesAUserWouldSee) {
    SetOpacity(255);
    int32_t colour = static_cast<int32_t>(vb::RGB(10, 200, 30)), result = 0;
    int16_t x = 4, y = 3, x1 = 0, y1 = 0, x2 = W - 1, y2 = H - 1;
    DeliverPixel(colour, x, y, x1, y1, x2, y2, result);
    EXPECT_EQ(result, colour) << "solid, default, full opacity, alpha off: the colour itself";

    const uint32_t old = vb::RGB(BufR(x, y), BufG(x, y), BufB(x, y));
    SetOpacity(0);
    for (int mode : {0, 1, 2, 3, 5, 6, 7}) {
        App.FillMode = static_cast<uint8_t>(mode);
        DeliverPixel(colour, x, y, x1, y1, x2, y2, result);
        EXPECT_EQ(static_cast<uint32_t>(result), old) << "opacity 0 keeps the old pixel in mode " << mode;
    }
    SetOpacity(255);
    App.FillMode = 7;
    DeliverPixel(colour, x, y, x1, y1, x2, y2, result);
    EXPECT_EQ(static_cast<uint32_t>(result), vb::RGB(SwapR(x, y), SwapG(x, y), SwapB(x, y))) << "rubthrough";

    App.FillMode = 5;
    int16_t bx = 3, by = 2;
    DeliverPixel(colour, bx, by, x1, y1, x2, y2, result);
    EXPECT_EQ(vb::RedOf(static_cast<uint32_t>(result)), 255) << "divide by a black picture";

    App.FillMode = 0;
    App.FillStyle = 1;
    int16_t same = 2;
    DeliverPixel(colour, same, y, same, y1, same, y2, result);
    EXPECT_EQ(static_cast<uint32_t>(result), vb::RGB(Grad(0, 0, 2), Grad(0, 1, 2), Grad(0, 2, 2)))
        << "X1 = X2 gives step 0 at X1 (step 0 of gradient 2 is fully opaque)";
}

TEST_F(DeliverPixelTest, AlphaMasksOnlyWhileAlphaOffIsZero) {
    SetOpacity(255);
    BufA(5, 5) = 0;
    int32_t colour = static_cast<int32_t>(vb::RGB(1, 2, 3)), result = 0;
    int16_t x = 5, y = 5, x1 = 0, y1 = 0, x2 = W - 1, y2 = H - 1;
    const uint32_t old = vb::RGB(BufR(x, y), BufG(x, y), BufB(x, y));
    App.AlphaOff = 0;
    DeliverPixel(colour, x, y, x1, y1, x2, y2, result);
    EXPECT_EQ(static_cast<uint32_t>(result), old);
    App.AlphaOff = 255;
    DeliverPixel(colour, x, y, x1, y1, x2, y2, result);
    EXPECT_EQ(result, colour);
}

TEST_F(DeliverPixelTest, DrybrushBelowZeroCountsAsZeroAndTheNextCallStartsAfresh) {
    SetOpacity(20);
    OpacityFraction = 1.0f;  // a caller that asks for strong paper
    PaperStrength = 1.0f;
    DrybrushOn = 1;
    // Find a paper valley: with p low, 20 - (255 - p) is well below zero.
    int16_t x = 0, y = 0;
    for (int yy = 0; yy < H; ++yy)
        for (int xx = 0; xx < W; ++xx)
            if (PaperB(xx, yy) < PaperB(x, y)) x = static_cast<int16_t>(xx), y = static_cast<int16_t>(yy);
    ASSERT_LT(PaperB(x, y), 200);
    int32_t colour = static_cast<int32_t>(vb::RGB(255, 255, 255)), result = 0;
    int16_t x1 = 0, y1 = 0, x2 = W - 1, y2 = H - 1;
    DeliverPixel(colour, x, y, x1, y1, x2, y2, result);
    EXPECT_EQ(static_cast<uint32_t>(result), vb::RGB(BufR(x, y), BufG(x, y), BufB(x, y)));
    EXPECT_EQ(OpacityInverse, 255);
    EXPECT_EQ(App.Opacity, 20);
    DrybrushOn = 0;
    DeliverPixel(colour, x, y, x1, y1, x2, y2, result);
    EXPECT_NE(static_cast<uint32_t>(result), vb::RGB(BufR(x, y), BufG(x, y), BufB(x, y)));
}

TEST_F(DeliverPixelTest, BrushStylesWithoutABrushRepeatTheLastColour) {
    SetOpacity(255);
    int32_t red = static_cast<int32_t>(vb::RGB(250, 0, 0)), blue = static_cast<int32_t>(vb::RGB(0, 0, 250)), result = 0;
    int16_t x = 1, y = 1, x1 = 0, y1 = 0, x2 = W - 1, y2 = H - 1;
    DeliverPixel(red, x, y, x1, y1, x2, y2, result);
    BrushWidth = 0;
    for (uint16_t style : {5, 6}) {
        App.FillStyle = style;
        DeliverPixel(blue, x, y, x1, y1, x2, y2, result);
        EXPECT_EQ(result, red) << "style " << style;
    }
}

TEST_F(DeliverPixelTest, APixelOffThePictureChangesNothing) {
    int32_t colour = 123, result = 0;
    int16_t x = -1, y = 400, x1 = 0, y1 = 0, x2 = 1, y2 = 1;
    DeliverPixel(colour, x, y, x1, y1, x2, y2, result);
    EXPECT_EQ(result, colour);
}
}  // namespace

namespace {
TEST_F(DeliverPixelTest, WholeBufferLoopAgreesWithThePixelAtATime) {
    // The loop compiles a plain fill without the steps it cannot need; both
    // versions must give what the single-pixel entry gives.
    for (int style : {0, 1}) {
        App.FillStyle = static_cast<uint16_t>(style);
        SetOpacity(131);
        std::vector<uint32_t> want;
        for (int y = 0; y < H; ++y)
            for (int x = 0; x < W; ++x) {
                int32_t colour = static_cast<int32_t>(vb::RGB(40, 150, 230)), result = 0;
                int16_t xx = static_cast<int16_t>(x), yy = static_cast<int16_t>(y), x1 = 0, y1 = 0,
                        x2 = W - 1, y2 = H - 1;
                DeliverPixel(colour, xx, yy, x1, y1, x2, y2, result);
                want.push_back(static_cast<uint32_t>(result));
            }
        DeliverFill(vb::RGB(40, 150, 230));
        size_t i = 0;
        for (int y = 0; y < H; ++y)
            for (int x = 0; x < W; ++x, ++i)
                ASSERT_EQ(vb::RGB(BufR(x, y), BufG(x, y), BufB(x, y)), want[i]) << "style " << style << " at " << x << "," << y;
        SetUp();  // the planes afresh for the next style
    }
}
}  // namespace
