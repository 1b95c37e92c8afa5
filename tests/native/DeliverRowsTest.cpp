// The row kernel of the fill against the single-pixel kernel: the same pixels
// and the same kept values for every style, mode, noise, paper and alpha
// setting at the opacities where rounding turns, over spans that start and
// end at every kind of column (vector blocks and their remainders), with the
// finishing steps in their plain form and in the AVX2 form, over papers
// narrower than a vector block and wider than several.
#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <sstream>
#include <vector>

#include "native/DeliverRows.h"

namespace {
using kwfill::DeliverSettings;
using kwfill::DeliverState;
using kwmode::FillMode;
using kwmode::FillStyle;
using Bytes = std::vector<uint8_t>;

constexpr int W = 37, H = 4, PW = 7, PH = 3, BW = 5, BH = 4;
// A picture over a paper wide enough to be read in place, a run per repeat,
// with rows of several repeats and of several vector blocks of sixteen.
constexpr int WideW = 203, WidePW = 70;

Bytes RandomBytes(size_t n, std::mt19937& rng) {
    Bytes v(n);
    for (auto& b : v) b = static_cast<uint8_t>(rng());
    return v;
}

struct Scene {
    int w, pw;
    Bytes r, g, b, a, sr, sg, sb, grad[4], brush[3], paperB, table;
    std::vector<float> paperF;
    explicit Scene(int width = W, int paperWidth = PW) : w(width), pw(paperWidth) {
        std::mt19937 rng(11);
        for (Bytes* p : {&r, &g, &b, &a, &sr, &sg, &sb}) *p = RandomBytes(static_cast<size_t>((w + 1) * (H + 1)), rng);
        for (int x = 0; x < 6; ++x) a[static_cast<size_t>(x)] = x % 2 ? 255 : 0;  // hidden and open pixels
        for (Bytes& p : grad) p = RandomBytes(256, rng);
        for (int s = 0; s < 256; s += 2) grad[3][static_cast<size_t>(s)] = 255;
        for (Bytes& p : brush) p = RandomBytes((BW + 1) * (BH + 1), rng);
        paperB = RandomBytes(static_cast<size_t>((pw + 1) * (PH + 1)), rng);
        std::uniform_real_distribution<float> slope(-0.2f, 0.2f);
        for (size_t i = 0; i < paperB.size(); ++i) paperF.push_back(slope(rng));
        table = RandomBytes(65536, rng);
    }
    DeliverSettings Settings() const {
        DeliverSettings s;
        s.gradR = grad[0].data(), s.gradG = grad[1].data(), s.gradB = grad[2].data(), s.gradA = grad[3].data();
        s.paperB = paperB.data(), s.paperF = paperF.data(), s.paperStride = static_cast<size_t>(pw + 1);
        s.paperW = pw, s.paperH = PH;
        s.brushR = brush[0].data(), s.brushG = brush[1].data(), s.brushB = brush[2].data();
        s.brushStride = BW + 1, s.brushW = BW, s.brushH = BH;
        s.r = r.data(), s.g = g.data(), s.b = b.data(), s.a = a.data();
        s.sr = sr.data(), s.sg = sg.data(), s.sb = sb.data();
        s.stride = static_cast<size_t>(w + 1);
        s.strength = 1.1f;
        return s;
    }
};

// The draws of one pixel: value noise's spread over [0, 1) in steps of 2^-53
// as the generator's are; per channel the extremes, draws whose product with
// the test's amount is a whole number and a half (a tie), and middles.
double ValueDraw(int x, int y) {
    return std::ldexp(std::floor(std::ldexp(((x * 7 + y * 13) % 16) / 16.0 + 0.01, 53)), -53);
}
constexpr int Amount = 50;
const int Amounts[] = {1, 2, Amount, 64, 127, 255};
int16_t ChannelDraw(int x, int y, int k) {
    static const std::vector<int16_t> values = [] {
        std::vector<int16_t> v = {-32768, 32767, 0, 1, -1, 1000, -7777, 20000};
        for (int amount : Amounts)
            for (int c = 1; c < 32768; ++c)
                if (((c * amount) & 0xFFFF) == 0x8000) {
                    v.insert(v.end(), {static_cast<int16_t>(c), static_cast<int16_t>(-c)});
                    break;
                }
        return v;
    }();
    return values[static_cast<size_t>(x * 7 + y * 13 + k * 5) % values.size()];
}

// The finishing steps in their plain form and as the plan chooses them.
const kwfill::FinishRowFn ScalarAndChosen[] = {kwfill::FinishRowScalar, nullptr};

// Runs the span x0..x1 of every row through DeliverRow (in place on copies of
// the planes) and through DeliverPixelIn pixel by pixel; compares pixels and
// state.
template <unsigned Steps>
void ExpectRowsMatchPixels(const Scene& scene, DeliverSettings s, int x0, int x1, const std::string& name,
                           kwfill::FinishRowFn finish = nullptr) {
    const uint32_t colour = 0x2A80D5;
    const int W = scene.w;
    const int X1 = 2, Y1 = 0, X2 = W - 3, Y2 = H - 1;
    const DeliverState start{9, 99, 199, 3.0f, 7, 8};
    // The expected picture: the single-pixel kernel, reading the untouched planes.
    Bytes want[3] = {scene.r, scene.g, scene.b};
    DeliverState wantState = start;
    const int per = kwfill::NoiseDrawCount(s);
    for (int y = 0; y < H; ++y)
        for (int x = x0; x < x1; ++x) {
            kwfill::NoiseDraws d;
            d.u = ValueDraw(x, y);
            for (int k = 0; k < 3; ++k) d.c[k] = ChannelDraw(x, y, k);
            const uint32_t v = kwfill::DeliverPixelIn<kwfill::DpAll>(s, wantState, d, colour, x, y, X1, Y1, X2, Y2);
            const size_t at = static_cast<size_t>(y) * (W + 1) + static_cast<size_t>(x);
            for (int k = 0; k < 3; ++k) want[k][at] = static_cast<uint8_t>(v >> (8 * k));
        }
    // The row kernel, writing over the planes it reads.
    Bytes got[3] = {scene.r, scene.g, scene.b};
    s.r = got[0].data(), s.g = got[1].data(), s.b = got[2].data();
    kwfill::FillPlan plan = kwfill::PlanFill(s, colour, X1, X2, x0, x1);
    if (finish) plan.finish = finish;
    DeliverState gotState = start;
    std::vector<double> values;
    std::vector<int16_t> channel[3];
    for (int y = 0; y < H; ++y) {
        values.clear();
        for (auto& c : channel) c.clear();
        for (int x = x0; x < x1; ++x) {
            values.push_back(ValueDraw(x, y));
            for (int k = 0; k < 3; ++k) channel[k].push_back(ChannelDraw(x, y, k));
        }
        const size_t at = static_cast<size_t>(y) * (W + 1) + static_cast<size_t>(x0);
        uint8_t* const out[3] = {got[0].data() + at, got[1].data() + at, got[2].data() + at};
        kwfill::SpanDraws d;
        if (per == 1) d.all = values.data();
        if (per == 3)
            for (int k = 0; k < 3; ++k) d.channel[k] = channel[k].data();
        kwfill::DeliverRow<Steps>(s, plan, gotState, d, colour, y, X1, Y1, X2, Y2, out[0], out[1], out[2]);
    }
    for (int k = 0; k < 3; ++k) ASSERT_EQ(got[k], want[k]) << name << " channel " << k;
    EXPECT_EQ(gotState.R, wantState.R) << name;
    EXPECT_EQ(gotState.G, wantState.G) << name;
    EXPECT_EQ(gotState.B, wantState.B) << name;
    EXPECT_EQ(gotState.t, wantState.t) << name;
    EXPECT_EQ(gotState.opacitySaved, wantState.opacitySaved) << name;
    EXPECT_EQ(gotState.opacityInverse, wantState.opacityInverse) << name;
}

// Opacity, alpha, paper (bump, dry, negative) and noise (0 none, 1 a draw per
// channel, 2 one draw) of one case of the matrices below.
void SetCase(DeliverSettings& s, int opacity, uint8_t alphaOff, const int paper[3], int noise) {
    s.opacity = opacity;
    s.opacityFraction = opacity / 255.0f;
    s.alphaOff = alphaOff;
    s.bump = paper[0], s.dry = paper[1], s.negative = paper[2];
    s.noiseAmount = noise ? Amount : 0;
    s.noisePerChannel = noise == 1;
}

// The rows against the pixels through the plain finishing steps and the chosen ones.
void ExpectEveryFinishing(const Scene& scene, const DeliverSettings& s, const int span[2], const std::string& name) {
    for (kwfill::FinishRowFn finish : ScalarAndChosen)
        ExpectRowsMatchPixels<kwfill::DpAll>(scene, s, span[0], span[1], name, finish);
}
}  // namespace

TEST(DeliverRows, EveryStyleModeNoisePaperAndAlphaGiveThePixelsOfTheSingleKernel) {
    const Scene scene;
    const FillStyle styles[] = {FillStyle::Colour,   FillStyle::Horizontal, FillStyle::FitHorizontal,
                                FillStyle::Vertical, FillStyle::Circular,   FillStyle::TileBrush,
                                FillStyle::FitBrush};
    enum { Plain, Table, Swapped, Rubthrough };
    const int papers[][3] = {{0, 0, 0}, {1, 0, 0}, {0, 1, 1}, {1, 1, 0}};  // bump, dry, negative
    // Whole rows, a span starting and ending inside a vector block, a single pixel.
    const int spans[][2] = {{0, W}, {3, W - 2}, {17, 18}};
    for (FillStyle style : styles)
        for (int mode : {Plain, Table, Swapped, Rubthrough})
            for (int opacity : {0, 1, 127, 128, 254, 255})
                for (uint8_t alphaOff : {255, 0})
                    for (const auto& paper : papers)
                        for (int noise : {0, 1, 2})
                            for (const auto& span : spans) {
                                DeliverSettings s = scene.Settings();
                                s.style = style;
                                s.mode = mode == Rubthrough ? FillMode::Rubthrough : FillMode::Default;
                                s.table = mode == Table || mode == Swapped ? scene.table.data() : nullptr;
                                s.tableSwapped = mode == Swapped;
                                SetCase(s, opacity, alphaOff, paper, noise);
                                std::ostringstream name;
                                name << "style " << int(style) << " mode " << mode << " opacity " << opacity
                                     << " alphaOff " << int(alphaOff) << " paper " << paper[0] << paper[1]
                                     << paper[2] << " noise " << noise << " span " << span[0] << ".." << span[1];
                                // The finishing steps in their plain form and in the form chosen here.
                                ExpectEveryFinishing(scene, s, span, name.str());
                                if (::testing::Test::HasFatalFailure()) return;
                            }
}

// A paper wide enough to be read where it lies: rows that start inside a
// repeat, cross one or several, and end inside a vector block, with every
// paper step, noise and alpha; draws per channel in one array and sorted.
TEST(DeliverRows, RowsOverAWidePaperGiveThePixelsOfTheSingleKernel) {
    const Scene scene(WideW, WidePW);
    const int papers[][3] = {{0, 0, 0}, {1, 0, 0}, {0, 1, 1}, {0, 1, 0}, {1, 1, 0}};  // bump, dry, negative
    const int spans[][2] = {{0, WideW}, {5, WideW - 1}, {65, 141}, {69, 72}, {140, 157}};
    for (FillStyle style : {FillStyle::Colour, FillStyle::Horizontal, FillStyle::Vertical, FillStyle::Circular})
        for (bool table : {false, true})
            for (int opacity : {0, 1, 127, 128, 254, 255})
                for (uint8_t alphaOff : {255, 0})
                    for (const auto& paper : papers)
                        for (int noise : {0, 1, 2})
                            for (const auto& span : spans) {
                                DeliverSettings s = scene.Settings();
                                s.style = style;
                                s.table = table ? scene.table.data() : nullptr;
                                SetCase(s, opacity, alphaOff, paper, noise);
                                std::ostringstream name;
                                name << "wide style " << int(style) << " table " << table << " opacity " << opacity
                                     << " alphaOff " << int(alphaOff) << " paper " << paper[0] << paper[1]
                                     << paper[2] << " noise " << noise << " span " << span[0] << ".." << span[1];
                                ExpectEveryFinishing(scene, s, span, name.str());
                                if (::testing::Test::HasFatalFailure()) return;
                            }
}

// Noise per channel of every size, over the draws that make a tie for it, on
// a plain colour and a gradient, with and without paper.
TEST(DeliverRows, NoiseOfEveryAmountRoundsAsTheSingleKernelDoes) {
    const Scene scene(WideW, WidePW);
    const int papers[][3] = {{0, 0, 0}, {1, 1, 0}};
    const int span[2] = {0, WideW};
    for (int amount : Amounts)
        for (FillStyle style : {FillStyle::Colour, FillStyle::Horizontal})
            for (const auto& paper : papers)
                for (uint8_t alphaOff : {255, 0}) {
                    DeliverSettings s = scene.Settings();
                    s.style = style;
                    SetCase(s, 200, alphaOff, paper, 1);
                    s.noiseAmount = amount;
                    std::ostringstream name;
                    name << "amount " << amount << " style " << int(style) << " paper " << paper[0] << " alphaOff "
                         << int(alphaOff);
                    ExpectEveryFinishing(scene, s, span, name.str());
                }
}

TEST(DeliverRows, LoopsCompiledWithoutTheAlphaStepMatchWhenAlphaLetsEverythingThrough) {
    const Scene scene;
    for (FillStyle style : {FillStyle::Colour, FillStyle::Horizontal, FillStyle::Circular})
        for (int opacity : {0, 1, 127, 128, 254, 255})
            for (bool table : {false, true}) {
                DeliverSettings s = scene.Settings();
                s.style = style;
                s.table = table ? scene.table.data() : nullptr;
                s.opacity = opacity;
                s.alphaOff = 255;
                std::ostringstream name;
                name << "style " << int(style) << " opacity " << opacity << " table " << table;
                ExpectRowsMatchPixels<kwfill::DpAll & ~kwfill::DpAlpha>(scene, s, 0, W, name.str());
                ExpectRowsMatchPixels<kwfill::DpAll & ~kwfill::DpAlpha>(scene, s, 1, 34, name.str());
            }
}

TEST(DeliverRows, APlainColourIsPlannedAsOneTablePerChannel) {
    const Scene scene;
    DeliverSettings s = scene.Settings();
    s.opacity = 255;
    kwfill::FillPlan plan = kwfill::PlanFill(s, 0x102030, 0, W - 1, 0, W);
    EXPECT_TRUE(plan.byTable);
    EXPECT_TRUE(plan.flat);
    EXPECT_EQ(plan.flatValue[0], 0x30);
    EXPECT_EQ(plan.flatValue[2], 0x10);
    s.opacity = 128;
    plan = kwfill::PlanFill(s, 0x102030, 0, W - 1, 0, W);
    EXPECT_FALSE(plan.flat);
    EXPECT_EQ(plan.lut[0][200], (0x30 * 128 + 200 * 127) / 255);
    // In range the AVX2 finishing steps are chosen where the processor has them;
    // a paper that could push the opacity past 255 keeps the plain form.
    EXPECT_EQ(plan.finish, kwfill::HaveAvx2Finish() ? kwfill::FinishRowAvx2 : kwfill::FinishRowScalar);
    s.dry = true;
    s.strength = -1.0f;
    EXPECT_EQ(kwfill::PlanFill(s, 0x102030, 0, W - 1, 0, W).finish, kwfill::FinishRowScalar);
    s.dry = false;
    s.strength = 1.0f;
    // Noise, paper or a gradient need the pixel's own values.
    s.noiseAmount = 10;
    EXPECT_FALSE(kwfill::PlanFill(s, 0x102030, 0, W - 1, 0, W).byTable);
    s.noiseAmount = 0;
    s.mode = FillMode::Rubthrough;
    EXPECT_FALSE(kwfill::PlanFill(s, 0x102030, 0, W - 1, 0, W).byTable);
}
