// The logic layer of DeliverPixel: the settings it builds from the globals
// (each fill mode's table, the gradient and brush it picks, noise drawn from the
// shared generator), the state it hands back, the classic single-pixel entry and
// the fill. The pipeline's every combination is the kernel's test, in tests/native.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

#include "colour/DeliverPixel.h"
#include "colour/Gradients.h"
#include "colour/Paper.h"
#include "core/document/Undo.h"
#include "core/frame/Form2.h"
#include "core/framework/AppState.h"
#include "tests/colour/ColourFixture.h"

namespace {
using colourtest::PixelAt;
using kwmode::FillMode;
using kwmode::FillStyle;
constexpr int W = 13, H = 9;

int RoundF(float v) { return static_cast<int>(std::nearbyint(v)); }
int RoundD(double v) { return static_cast<int>(std::nearbyint(v)); }
// Each fill mode from its arithmetic, for one channel against the picture's value.
int ModeChannel(FillMode mode, int v, int old, int swap) {
    switch (mode) {
        case FillMode::Add: return std::min(v + old, 255);
        case FillMode::Subtract: return std::max(old - v, 0);
        case FillMode::Multiply: return v * old / 255;
        case FillMode::Divide: return old == 0 ? 255 : std::min(255, RoundF(static_cast<float>(v) / old * 255.0f));
        case FillMode::Screen: return RoundD(old + (255.0 - old) / 255.0 * v);
        case FillMode::Rubthrough: return swap;
        default: return v;  // default and alpha lay the colour on
    }
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

TEST_F(DeliverPixelTest, EachFillModeTakesItsTableFromTheGlobals) {
    // Full opacity, no paper, no noise, alpha off: what comes out is the mode alone.
    SetOpacity(255, 1.0f);
    const int colour[3] = {200, 90, 17};
    for (int mode = 0; mode <= 7; ++mode) {
        App.FillMode = static_cast<FillMode>(mode);
        DeliverRun run = DeliverBegin();
        for (int y = 0; y < H; ++y)
            for (int x = 0; x < W; ++x) {
                const uint32_t got = DeliverPixel(run.settings, run.state, vb::RGB(colour[0], colour[1], colour[2]), x,
                                                  y, 0, 0, W - 1, H - 1);
                const uint32_t want = vb::RGB(ModeChannel(App.FillMode, colour[0], BufR(x, y), SwapR(x, y)),
                                              ModeChannel(App.FillMode, colour[1], BufG(x, y), SwapG(x, y)),
                                              ModeChannel(App.FillMode, colour[2], BufB(x, y), SwapB(x, y)));
                ASSERT_EQ(got, want) << "mode " << mode << " at " << x << "," << y;
            }
    }
}

TEST_F(DeliverPixelTest, GradientBrushNoiseAndStateComeFromAndGoBackToTheGlobals) {
    SetOpacity(255, 1.0f);
    const uint32_t colour = vb::RGB(200, 90, 17);
    // The gradient of App.GradientIndex: a horizontal fill starts on its first step.
    App.FillStyle = FillStyle::Horizontal;
    DeliverRun run = DeliverBegin();
    EXPECT_EQ(DeliverPixel(run.settings, run.state, colour, 0, 4, 0, 0, W - 1, H - 1),
              vb::RGB(Grad(0, 0, 2), Grad(0, 1, 2), Grad(0, 2, 2)));
    // The custom brush tiles the picture.
    App.FillStyle = FillStyle::TileBrush;
    run = DeliverBegin();
    EXPECT_EQ(DeliverPixel(run.settings, run.state, colour, 7, 6, 0, 0, W - 1, H - 1),
              vb::RGB(BrushR(2, 2), BrushG(2, 2), BrushB(2, 2)));
    // Noise takes its draws from the shared generator, one a pixel: cut into a
    // draw per channel, or whole for value noise.
    App.FillStyle = FillStyle::Colour;
    App.NoiseAmount = 60;
    for (int perChannel : {0, 1}) {
        App.NoiseMode = static_cast<uint8_t>(perChannel);
        vb::Randomize(99);
        run = DeliverBegin();
        for (int x = 0; x < W; ++x) DeliverPixel(run.settings, run.state, colour, x, 1, 0, 0, W - 1, H - 1);
        const double next = vb::Rnd();
        vb::Randomize(99);
        for (int n = 0; n < W; ++n) vb::Rnd();
        EXPECT_EQ(next, vb::Rnd()) << "per channel " << perChannel;
    }
    // The state a run starts from is the globals', and it goes back to them.
    App.NoiseAmount = 0;
    DeliverKept = {11, 22, 33, 0};
    OpacitySaved = 7;
    run = DeliverBegin();
    EXPECT_EQ(run.state.R, 11);
    EXPECT_EQ(run.state.opacitySaved, 7);
    DeliverPixel(run.settings, run.state, colour, 2, 2, 0, 0, W - 1, H - 1);
    DeliverEnd(run.state);
    EXPECT_EQ(vb::RGB(DeliverKept.R, DeliverKept.G, DeliverKept.B), colour);
    EXPECT_EQ(OpacitySaved, 255);
    EXPECT_EQ(OpacityInverse, 0);
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

TEST_F(DeliverPixelTest, WholeBufferFillWithNoiseDrawsWhatThePixelAtATimeDraws) {
    // A picture wide enough that a row's draws come in four lanes, over the
    // stock paper (read in place, a run per repeat): with a draw per channel
    // (sorted by channel as they are drawn) and one draw a pixel, the fill
    // gives the single-pixel entry's pixels and leaves the generator where the
    // single draws leave it.
    constexpr int WW = 347, HH = 3;
    for (int perChannel : {1, 0})
        for (int opacity : {255, 128})
            for (uint8_t alphaOff : {255, 0}) {
                MakeTestDocument(WW, HH);
                std::mt19937 rng(5);
                for (Plane* p : {&BufR, &BufG, &BufB, &BufA}) FillRandom(*p, rng);
                App.FillStyle = FillStyle::Horizontal;
                App.NoiseAmount = 40;
                App.NoiseMode = static_cast<uint8_t>(perChannel);
                App.AlphaOff = alphaOff;
                BumpinessOn = DrybrushOn = 1;
                SetOpacity(opacity, opacity / 255.0f);
                const uint32_t colour = vb::RGB(40, 150, 230);
                vb::Randomize(17);
                DeliverRun run = DeliverBegin();
                std::vector<uint32_t> want, got;
                for (int y = 0; y < HH; ++y)
                    for (int x = 0; x < WW; ++x)
                        want.push_back(DeliverPixel(run.settings, run.state, colour, x, y, 0, 0, WW - 1, HH - 1));
                const double next = vb::Rnd();
                vb::Randomize(17);
                DeliverFill(colour);
                for (int y = 0; y < HH; ++y)
                    for (int x = 0; x < WW; ++x) got.push_back(PixelAt(x, y));
                EXPECT_EQ(got, want) << "per channel " << perChannel << " opacity " << opacity << " alphaOff "
                                     << int(alphaOff);
                EXPECT_EQ(vb::Rnd(), next) << "per channel " << perChannel;
            }
}
}  // namespace

// Fill (q) takes its undo snapshot band by band as it fills: the picture it
// leaves is the fill's own, and undo brings back every pixel it had.
TEST_F(DeliverPixelTest, FillClickIsTheFillAndUndoBringsThePictureBack) {
    constexpr int WW = 301, HH = 140;  // several bands of rows, the last one short
    MakeTestDocument(WW, HH);
    std::mt19937 rng(3);
    for (Plane* p : {&BufR, &BufG, &BufB, &BufA}) FillRandom(*p, rng);
    std::vector<uint32_t> before, want, got;
    for (int y = 0; y < HH; ++y)
        for (int x = 0; x < WW; ++x) before.push_back(PixelAt(x, y));
    App.FillStyle = FillStyle::Horizontal;
    App.NoiseAmount = 40;
    App.NoiseMode = 1;
    BumpinessOn = DrybrushOn = 1;
    Form2::HScroll4.Value = 200;
    vb::Randomize(4);
    LoadFillOpacity();
    DeliverFill(Form2::Shape4.FillColor);
    for (int y = 0; y < HH; ++y)
        for (int x = 0; x < WW; ++x) want.push_back(PixelAt(x, y));
    for (int y = 0; y < HH; ++y)
        for (int x = 0; x < WW; ++x) {
            const uint32_t v = before[static_cast<size_t>(y) * WW + static_cast<size_t>(x)];
            BufR(x, y) = vb::RedOf(v), BufG(x, y) = vb::GreenOf(v), BufB(x, y) = vb::BlueOf(v);
        }
    vb::Randomize(4);
    Buffer_Fill_Click();
    for (int y = 0; y < HH; ++y)
        for (int x = 0; x < WW; ++x) got.push_back(PixelAt(x, y));
    EXPECT_EQ(got, want);
    RepaintUndo();
    got.clear();
    for (int y = 0; y < HH; ++y)
        for (int x = 0; x < WW; ++x) got.push_back(PixelAt(x, y));
    EXPECT_EQ(got, before);
}
