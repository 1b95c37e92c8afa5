// Colour keying: the ramp, the slider rules, the matte shown and put into the
// selection, on a generated green-screen picture with soft hair-like strands and
// a band of green spill around the subject.
#include <cmath>

#include "filter/Keying.h"
#include "tests/filter/FilterFixture.h"

namespace {
constexpr int W = 96, H = 64;

// The ground is an uneven green; the subject a skin-coloured disc with a band of
// spill at its rim; dark strands cross from it into the ground with soft edges.
void GreenScreenPicture() {
    MakeTestDocument(W, H);
    for (int y = 0; y < H; ++y)
        for (int x = 0; x < W; ++x) {
            double r = 40 + (x * 7 + y * 3) % 11, g = 185 + (x * 5 + y * 13) % 17, b = 55 + (x + y * 7) % 9;
            const double d = std::hypot(x - 30.0, y - 32.0);
            // The subject, its rim softened over two pixels; inside the rim, spill.
            const double cover = std::clamp(22.0 - d, 0.0, 2.0) / 2.0;
            const double spill = std::clamp(d - 16.0, 0.0, 6.0) / 6.0;
            const double sr = 205, sg = 150 + 55 * spill, sb = 120;
            r = r * (1 - cover) + sr * cover, g = g * (1 - cover) + sg * cover, b = b * (1 - cover) + sb * cover;
            // Three strands of hair leaving the subject to the right, each with a
            // soft core a pixel and a half wide.
            for (int k = 0; k < 3; ++k) {
                const double yc = 24.0 + 8 * k + 6 * std::sin((x - 30) / (9.0 + k));
                const double c = x > 30 && x < 80 ? std::clamp(1.5 - std::fabs(y - yc), 0.0, 1.0) : 0.0;
                r = r * (1 - c) + 70 * c, g = g * (1 - c) + 45 * c, b = b * (1 - c) + 30 * c;
            }
            BufR(x, y) = static_cast<uint8_t>(std::lround(r));
            BufG(x, y) = static_cast<uint8_t>(std::lround(g));
            BufB(x, y) = static_cast<uint8_t>(std::lround(b));
        }
    for (int y = 0; y < H; ++y)  // a magenta page behind
        for (int x = 0; x < W; ++x) SwapR(x, y) = 250, SwapG(x, y) = 20, SwapB(x, y) = 250;
}

uint32_t Checksum(const std::vector<uint8_t>& v) {
    uint32_t h = 2166136261u;  // FNV-1a
    for (uint8_t b : v) h = (h ^ b) * 16777619u;
    return h;
}
}  // namespace

using KeyingTest = FilterTest;

TEST_F(KeyingTest, RampEndsAndTheHardThreshold) {
    uint8_t lut[256];
    BuildKeyLUT(64, 80, lut);
    EXPECT_EQ(lut[63], 0);
    EXPECT_EQ(lut[64], 0);
    EXPECT_EQ(lut[72], 128);  // 8 * 255 / 16 = 127.5, half to even
    EXPECT_EQ(lut[80], 255);
    BuildKeyLUT(100, 101, lut);  // two entries: a hard threshold
    EXPECT_EQ(lut[100], 0);
    EXPECT_EQ(lut[101], 255);
}

TEST_F(KeyingTest, SlidersKeepLowClipUnderHighPass) {
    MakeTestDocument(4, 4);
    Comp_green_Click();
    using namespace GreenScreen_Control;
    hscroll1.Value = 30;  // under low clip 64: low clip gives way
    EXPECT_EQ(HScroll5.Value, 29);
    HScroll5.Value = 200;  // over high pass: high pass gives way
    EXPECT_EQ(hscroll1.Value, 201);
    HScroll5.Value = 255;  // high pass cannot follow: low clip comes back under it
    EXPECT_EQ(hscroll1.Value, 201);
    EXPECT_EQ(HScroll5.Value, 200);
    HScroll5.Value = 64, hscroll1.Value = 80;
    Command2.press();
}

TEST_F(KeyingTest, PrimariesAndShowMatteDoesNotReadTheSwapPage) {
    MakeTestDocument(3, 1);
    const int px[3][3] = {{255, 0, 0}, {0, 255, 0}, {255, 255, 255}};
    for (int x = 0; x < 3; ++x) BufR(x, 0) = px[x][0], BufG(x, 0) = px[x][1], BufB(x, 0) = px[x][2];
    Fill(SwapR, 7), Fill(SwapG, 8), Fill(SwapB, 9);
    Comp_green_Click();
    EXPECT_EQ(BufR(0, 0), 255);  // red: foreground
    EXPECT_EQ(BufG(1, 0), 8);    // green: the swap page
    EXPECT_EQ(BufB(2, 0), 255);  // white: foreground
    SwapR.free(), SwapG.free(), SwapB.free();  // a page that cannot be read
    SwapR.alloc(3, 1), SwapG.alloc(3, 1), SwapB.alloc(3, 1);
    Fill(SwapR, 99);
    GreenScreen_Control::Check1.Value = 1;
    EXPECT_EQ(BufR(0, 0), 0);  // the matte: black foreground, white ground
    EXPECT_EQ(BufG(1, 0), 255);
    GreenScreen_Control::Check1.Value = 0;
    GreenScreen_Control::Command2.press();
    EXPECT_EQ(BufG(1, 0), 255);
}

TEST_F(KeyingTest, MatteToAlphaPullsTheSelectionOffAGreenScreen) {
    GreenScreenPicture();
    const auto picture = Snapshot();
    Comp_green_Click();
    GreenScreen_Control::Command3.press();
    EXPECT_TRUE(AlphaOn());
    EXPECT_FALSE(GreenScreen_Control::form.Visible);
    // The ground is unselected, the subject and the strands' cores selected,
    // the strands' soft edges in between.
    EXPECT_EQ(BufA(90, 5), 0);
    EXPECT_EQ(BufA(30, 32), 255);
    EXPECT_EQ(BufA(20, 32), 255);  // inside the spill band
    int soft = 0, hard = 0;
    for (int x = 40; x < 78; ++x) {
        const double yc = 24.0 + 6 * std::sin((x - 30) / 9.0);
        const int core = static_cast<int>(std::lround(yc));
        hard += BufA(x, core) == 255;
        for (int y = core - 2; y <= core + 2; ++y) soft += BufA(x, y) > 0 && BufA(x, y) < 255;
    }
    EXPECT_GT(hard, 30);  // the strand's core is kept along its length
    EXPECT_GT(soft, 5);   // and its edges are partly selected
    // The spill is taken out of the picture: no selected pixel is greener than its
    // red and blue by more than half of what it was.
    for (int y = 0; y < H; ++y)
        for (int x = 0; x < W; ++x) {
            if (BufA(x, y) < 255) continue;
            const size_t i = static_cast<size_t>(y) * W + x;
            const int before = picture[W * H + i] - std::max(picture[i], picture[2 * W * H + i]);
            const int now = BufG(x, y) - std::max(BufR(x, y), BufB(x, y));
            if (before > 0) {
                ASSERT_LE(now, before - before * 128 / 255) << x << "," << y;
            }
        }
    // Reviewed as a picture: the disc and the three strands white on black, the
    // strands' edges grey, nothing of the ground selected.
    EXPECT_EQ(Checksum(AlphaSnapshot()), 4097382949u);
    // One undo step takes back picture, matte and the alpha switch together.
    RepaintUndo();
    EXPECT_EQ(Snapshot(), picture);
    EXPECT_FALSE(AlphaOn());
}
