// The sky (rows, fog, cloud depth, the fog colour from a well) and Z noise
// (its three flags, the brush texture and its fall-back).
#include "core/document/Buffers.h"
#include "native/Noise.h"
#include "render/Sky.h"
#include "render/Znoise.h"
#include "tests/render/RenderFixture.h"

namespace {
void SetSky(int K, int scale, int slot, int depth, uint32_t fog) {
    RenderSky::HScroll7.Value = K;
    RenderSky::Hscroll2.Value = scale;
    RenderSky::Hscroll1.Value = slot;
    RenderSky::Hscroll3.Value = depth;
    RenderSky::Command5_DragDrop(fog);
}
}  // namespace

using SkyTest = RenderTest;

TEST_F(SkyTest, RowsRunFromClearSkyAtTheTopToFogAtTheHorizon) {
    EXPECT_EQ(SkyProjection(0, 30).v, 0.0f);
    EXPECT_EQ(SkyProjection(0, 30).widen, 1.0);
    EXPECT_EQ(SkyProjection(30, 30).v, 30.0f);
    EXPECT_EQ(SkyProjection(30, 30).widen, 1.0);  // the bottom row: no division by 0
    for (int y = 1; y < 30; ++y) {
        EXPECT_GT(SkyProjection(y, 30).v, SkyProjection(y - 1, 30).v);
        EXPECT_GT(SkyProjection(y, 30).widen, SkyProjection(y - 1, 30).widen);
    }
    // Near the top a row moves little through the noise (big clouds overhead),
    // near the horizon much (small ones far away).
    EXPECT_GT(SkyProjection(29, 30).v - SkyProjection(28, 30).v, 5 * (SkyProjection(1, 30).v - SkyProjection(0, 30).v));

    Picture(41, 31);
    SetAlphaOn(false);
    SetSky(3, 1, 2, 0, vb::RGB(10, 200, 30));
    RenderPerlinSky();
    for (int x = 0; x < 41; ++x) {
        EXPECT_EQ(BufR(x, 30), 10);  // fog only on the bottom row
        EXPECT_EQ(BufG(x, 30), 200);
        // The top row has no fog: the gradient at the octave sum.
        double t = x - 20.0;
        const float acc = std::clamp(kwfilter::PerlinOctaves(static_cast<float>(t / 4), 0.0f, 3, 1) / 3, 0.0f, 255.0f);
        const int step = vb::CLng(acc);
        EXPECT_EQ(BufR(x, 0), step);
        EXPECT_EQ(BufG(x, 0), 255 - step);
        EXPECT_EQ(BufB(x, 0), step / 3);
    }
    // Half way down, half fog, the columns widened about the middle.
    const SkyRow row = SkyProjection(15, 30);
    for (int x : {0, 13, 20, 40}) {
        const double t = (x - 20.0) * row.widen / 4;
        const float acc = std::clamp(kwfilter::PerlinOctaves(static_cast<float>(t), row.v, 3, 1) / 3, 0.0f, 255.0f);
        const int s = vb::CLng(acc);
        EXPECT_EQ(BufR(x, 15), vb::CByte(s * 0.5 + 10 * 0.5));
        EXPECT_EQ(BufG(x, 15), vb::CByte((255 - s) * 0.5 + 200 * 0.5));
    }
}

TEST_F(SkyTest, CloudDepthRaisesColumnsOverTheRowsAbove) {
    Picture(30, 40);
    SetAlphaOn(false);
    SetSky(2, 1, 2, 0, vb::RGB(0, 0, 0));
    RenderPerlinSky();
    const auto flat = Snapshot();
    Picture(30, 40);
    SetSky(2, 1, 2, 7, vb::RGB(0, 0, 0));
    RenderPerlinSky();
    EXPECT_NE(Snapshot(), flat);
    // Every pixel shows its own cloud or one raised from a row below it.
    int raised = 0;
    for (int x = 0; x < 30; ++x)
        for (int y = 0; y < 40; ++y) {
            bool found = false;
            for (int below = y; below < 40 && !found; ++below)
                found = BufR(x, y) == flat[below * 30 + x] && BufG(x, y) == flat[1200 + below * 30 + x] &&
                        BufB(x, y) == flat[2400 + below * 30 + x];
            EXPECT_TRUE(found) << x << "," << y;
            raised += BufR(x, y) != flat[y * 30 + x];
        }
    EXPECT_GT(raised, 0);
    for (int x = 0; x < 30; ++x) EXPECT_EQ(BufR(x, 39), 0);  // the horizon row is the fog
}

TEST_F(SkyTest, PanelRendersThroughAlphaKeepsTheFogAndCancelRestores) {
    Picture(24, 16);
    SelectLeftHalf();
    const auto before = Snapshot();
    Render_Sky_Click();
    RenderSky::Command5_DragDrop(vb::RGB(255, 0, 0));
    RenderSky::Command3.press();
    EXPECT_TRUE(RenderSky::form.Visible);
    EXPECT_EQ(BufR(3, 15), 255);
    EXPECT_EQ(BufR(20, 15), before[15 * 24 + 20]);  // unselected: as it was
    RenderSky::Command2.press();
    EXPECT_EQ(Snapshot(), before);
    EXPECT_EQ(RenderSky::Command5.BackColor.get(), vb::RGB(255, 0, 0));

    // A single row has no horizon: a message, and the picture untouched.
    Picture(24, 1);
    const auto row = Snapshot();
    host.ExpectMessage("at least 2");
    RenderPerlinSky();
    EXPECT_EQ(Snapshot(), row);
}

using ZnoiseTest = RenderTest;

TEST_F(ZnoiseTest, NoiseBentByBrightnessGreyOrThroughTheGradientAndDepthCued) {
    using namespace ZnoiseOptions;
    Picture(20, 12);
    SetAlphaOn(false);
    Hscroll1.Value = 8, hscroll2.Value = 5, Hscroll3.Value = 2;
    Check1.Value = 0, Check2.Value = 0, Check3.Value = 0;
    Combine_Znoise_Click();
    auto grey = [](int x, int y) {
        const int z = (UndoR(x, y) + UndoG(x, y) + UndoB(x, y)) / 3;
        const float v[3] = {x / 8.0f, y / 8.0f, z / 5.0f};
        return std::clamp<int>(vb::CLng((kwfilter::noise3(v) + 1) * 128), 0, 255);
    };
    for (int y = 0; y < 12; y += 3)
        for (int x = 0; x < 20; x += 4) {
            EXPECT_EQ(BufR(x, y), grey(x, y));
            EXPECT_EQ(BufB(x, y), grey(x, y));
        }
    Check1.Value = 1;  // "Use gradient"
    EXPECT_EQ(BufG(5, 5), 255 - grey(5, 5));
    Check3.Value = 1;  // "Depth cue"
    const int z = (UndoR(5, 5) + UndoG(5, 5) + UndoB(5, 5)) / 3;
    EXPECT_EQ(BufG(5, 5), vb::CInt(z / 256.0 * (255 - grey(5, 5))));
    Check2.Value = 1;  // "Map brush" with no brush: the noise as before
    EXPECT_EQ(BufG(5, 5), vb::CInt(z / 256.0 * (255 - grey(5, 5))));
    Command2.press();
    EXPECT_EQ(BufR(5, 5), UndoR(5, 5));
    Check1.Value = 0, Check2.Value = 0, Check3.Value = 0;
}

TEST_F(ZnoiseTest, MapBrushRidesTheBrushAsATilingTexture) {
    using namespace ZnoiseOptions;
    Picture(16, 8);
    SetAlphaOn(false);
    BrushWidth = 4, BrushHeight = 4;
    for (Plane* p : {&BrushR, &BrushG, &BrushB, &BrushA}) *p = Plane::Make(4, 4);
    for (int y = 0; y <= 4; ++y)
        for (int x = 0; x <= 4; ++x) BrushR(x, y) = BrushG(x, y) = BrushB(x, y) = 77, BrushA(x, y) = 255;
    Hscroll1.Value = 32, hscroll2.Value = 16;
    Check2.Value = 1;
    Combine_Znoise_Click();
    for (int y = 0; y < 8; ++y)
        for (int x = 0; x < 16; ++x) EXPECT_EQ(BufR(x, y), 77);  // a flat brush gives a flat texture
    for (int y = 0; y <= 4; ++y) BrushR(1, y) = 177;
    DrawZnoise();  // at scale 32 a pixel is a brush column: column 1 comes back every 4 pixels
    for (int y = 0; y < 8; ++y)
        for (int x = 0; x < 16; ++x) EXPECT_EQ(BufR(x, y), x % 4 == 1 ? 177 : 77) << x << "," << y;
    Command1.press();
    Check2.Value = 0;
    BrushWidth = BrushHeight = 0;
}
