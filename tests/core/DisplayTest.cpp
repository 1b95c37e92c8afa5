// The display pipeline seen from the logic: screen image contents, routes,
// zoom, marquee and title.
#include "core/framework/MixTables.h"
#include "core/frame/Nav.h"
#include "core/frame/FatBits.h"
#include "core/frame/MemoryOptions.h"
#include "core/frame/Form3.h"
#include "core/frame/KeyboardHelp.h"
#include "core/frame/WindowMenu.h"
#include "tests/core/CoreFixture.h"
#include "core/framework/PanelLook.h"

using DisplayTest = CoreTest;

namespace {
uint32_t Screen(int x, int y) { return RefreshBuff32[static_cast<size_t>(y) * RefreshStride32 + x]; }
}  // namespace

TEST_F(DisplayTest, OneToOnePixelIsRedGreenBlueHighToLow) {
    MakeTestDocument(40, 30);
    BufR(5, 6) = 10;
    BufG(5, 6) = 20;
    BufB(5, 6) = 30;
    RedisplayWindow();
    ASSERT_EQ(RefreshStride32, 40);
    EXPECT_EQ(Screen(5, 6), 0x000A141Eu);
    EXPECT_EQ(MDIForm1::form.Caption.get(), "Project Kelpwick  (Main)  ");
}

TEST_F(DisplayTest, LayerMixShowsTheMixAndLeavesTheBuffers) {
    MakeTestDocument(8, 8);
    BufR(1, 1) = 200;
    SwapR(1, 1) = 100;
    BufG(1, 1) = 10;
    SwapG(1, 1) = 20;
    Menus::MixSwapNone.press();  // mixing on, Additive is the checked mix
    EXPECT_EQ((Screen(1, 1) >> 16) & 255, 255u);
    EXPECT_EQ((Screen(1, 1) >> 8) & 255, 30u);
    EXPECT_EQ(BufR(1, 1), 200);
    Menus::MixSwapSub.press();
    EXPECT_EQ((Screen(1, 1) >> 16) & 255, 100u);  // main minus swap
    EXPECT_NE(MDIForm1::form.Caption.get().find("(Layer mixing) "), std::string::npos);
    // with two entries checked, the later test wins
    Menus::MixaroundGrey.Checked = true;
    Menus::MixSwapSub.Checked = true;
    EXPECT_EQ(Menus::ActiveMixTable(), MixAroundGrey);
    Menus::MixSwapNone.press();
    EXPECT_EQ(Menus::ActiveMixTable(), nullptr);
    EXPECT_EQ((Screen(1, 1) >> 16) & 255, 200u);
    Menus::MixSwap_Add.press();
}

TEST_F(DisplayTest, TitleNamesSwapAlphaAndMixingInOrder) {
    MakeTestDocument(8, 8);
    swapbuffer_Click();
    AlphaEnable_Click();
    EXPECT_EQ(MDIForm1::form.Caption.get(), "Project Kelpwick  (Swap)  (Alpha)  ");
    App.NoTitle = 1;
    AlphaEnable_Click();
    EXPECT_EQ(MDIForm1::form.Caption.get(), "Project Kelpwick  (Swap)  (Alpha)  ");
}

TEST_F(DisplayTest, BrokenDisplayChangesNothing) {
    MakeTestDocument(8, 8);
    RedisplayWindow();
    uint32_t before = Screen(0, 0);
    int changes = host.imageChanges;
    DisplayBroken = 255;
    BufR(0, 0) = 1;
    RedisplayWindow();
    ResizeWindow();
    EXPECT_EQ(Screen(0, 0), before);
    EXPECT_EQ(host.imageChanges, changes);
    DisplayBroken = 0;
}

TEST_F(DisplayTest, SurfaceThatCannotBeSizedBreaksTheDisplayWithItsMessage) {
    MakeTestDocument(8, 8);
    host.surface = CanvasSurface{100, 100, 8, 0, 0};  // no route exists for 8 bits
    host.ExpectMessage("An internal error has occered.  Attempting to compensate");
    DemensionRefreshBuff();
    EXPECT_EQ(DisplayBroken, 255);
    host.surface.reset();
    DemensionRefreshBuff();
    EXPECT_EQ(DisplayBroken, 0);
}

TEST_F(DisplayTest, RoutesFollowDepthZoomAndMixing) {
    EXPECT_EQ(ChooseRefreshRoute(32, 100, false, false), RefreshRoute::Fast32);
    EXPECT_EQ(ChooseRefreshRoute(32, 100, true, false), RefreshRoute::FastMix32);
    EXPECT_EQ(ChooseRefreshRoute(32, 200, true, false), RefreshRoute::Zoom32);  // zoom loses mixing
    EXPECT_EQ(ChooseRefreshRoute(24, 100, true, false), RefreshRoute::Zoom24);
    EXPECT_EQ(ChooseRefreshRoute(16, 100, false, true), RefreshRoute::Fast16);
    EXPECT_EQ(ChooseRefreshRoute(16, 100, true, false), RefreshRoute::FastMix16);
    EXPECT_EQ(ChooseRefreshRoute(16, 50, false, false), RefreshRoute::Zoom16);
    EXPECT_EQ(ChooseRefreshRoute(16, 50, false, true), RefreshRoute::Zoom15);
}

TEST_F(DisplayTest, SixteenBitSurfaceGetsFiveSixFive) {
    MakeTestDocument(8, 8);
    host.surface = CanvasSurface{8, 8, 16, 0, 0};
    DemensionRefreshBuff();
    BufR(2, 2) = 255;
    BufG(2, 2) = 0;
    BufB(2, 2) = 255;
    RedisplayWindow();
    ASSERT_EQ(RefreshStride16, 8);
    EXPECT_EQ(RefreshBuff16[2 * 8 + 2], 0xF81F);
}

TEST_F(DisplayTest, ZoomedScreenCoversOnlyTheVisiblePart) {
    MakeTestDocument(400, 300);
    host.surface = CanvasSurface{200, 100, 32, 600, 300};  // a viewport scrolled into a 600 % window
    App.ZoomPercent = 600;
    DemensionRefreshBuff();
    EXPECT_EQ(RefreshBuff32.size(), 200u * 100u);
    BufR(100, 50) = 0x12;  // window pixels 600..605, 300..305
    RedisplayWindow();
    EXPECT_EQ(Screen(0, 0) >> 16, 0x12u);
    EXPECT_EQ(Screen(5, 5) >> 16, 0x12u);
    EXPECT_EQ(Screen(6, 0) >> 16, 0xFFu);
}

TEST_F(DisplayTest, ZoomPanelSetsZoomAndWindowSize) {
    MakeTestDocument(100, 50);
    Magnify_Click();
    Nav::Image2.press();
    EXPECT_EQ(App.ZoomPercent, 200);
    EXPECT_EQ(Nav::Label1.Caption.get(), "200");
    EXPECT_EQ(host.canvasWidth, 200);
    EXPECT_EQ(host.canvasHeight, 100);
    Nav::HScroll1.Value = 1000;  // the slider stops at 600
    EXPECT_EQ(App.ZoomPercent, 600);
    Nav::Image1.press();
}

TEST_F(DisplayTest, MarqueeOutlinesTheSelectionWithItsPattern) {
    MakeTestDocument(10, 10);
    InitMarquee();
    for (int y = 0; y <= 10; ++y)
        for (int x = 0; x <= 10; ++x) ASSERT_EQ(MarqueePlane(x, y), 0) << "no outline when all is selected";
    FillPicture(BufA, 0);
    BufA(5, 5) = 255;
    InitMarquee();
    // protected neighbours of the selected pixel take v mod 255 with v = 16x + y
    EXPECT_EQ(MarqueePlane(4, 5), 69);
    EXPECT_EQ(MarqueePlane(6, 5), 101);
    EXPECT_EQ(MarqueePlane(5, 4), 84);
    EXPECT_EQ(MarqueePlane(5, 6), 86);
    EXPECT_EQ(MarqueePlane(5, 5), 0);
    EXPECT_EQ(MarqueePlane(4, 4), 0);
    // the outermost columns are skipped
    FillPicture(BufA, 0);
    BufA(1, 3) = 255;
    InitMarquee();
    EXPECT_EQ(MarqueePlane(0, 3), 0);
    EXPECT_EQ(MarqueePlane(2, 3), 35);

    // the phase marches down by 32 and wraps to 255, and is drawn in grey
    RedisplayWindow();
    MarqueePhase = 20;
    DisplayMarquee();
    EXPECT_EQ(MarqueePhase, 255);
    EXPECT_EQ(Screen(2, 3), 0x00FFFFFFu);
    DisplayMarquee();
    EXPECT_EQ(MarqueePhase, 223);
    EXPECT_EQ(Screen(2, 3), 0x00DFDFDFu);
    MarqueeDelay = 1;
    DisplayMarquee();
    EXPECT_EQ(MarqueePhase, 223);
    MarqueeDelay = 0;
}

// Over a picture wide and tall enough for the pattern to wrap many times, a
// scattered selection's outline is the rule pixel for pixel.
TEST_F(DisplayTest, MarqueeFollowsTheRuleWhereThePatternWraps) {
    MakeTestDocument(301, 97);
    uint32_t seed = 5;
    for (int y = 0; y <= 97; ++y)
        for (int x = 0; x <= 301; ++x) {
            seed = seed * 1103515245u + 12345u;
            BufA(x, y) = (seed >> 16) % 7 == 0 ? static_cast<uint8_t>(1 + (seed >> 8) % 255) : 0;
        }
    InitMarquee();
    for (int y = 1; y <= 96; ++y)
        for (int x = 1; x <= 299; ++x) {
            const bool edge = BufA(x, y) == 0 &&
                              (BufA(x + 1, y) > 0 || BufA(x, y + 1) > 0 || BufA(x - 1, y) > 0 || BufA(x, y - 1) > 0);
            ASSERT_EQ(MarqueePlane(x, y), edge ? (x * 16 + y) % 255 : 0) << x << ", " << y;
        }
}

TEST_F(DisplayTest, PartialRefreshConvertsOnlyItsRectangle) {
    MakeTestDocument(50, 50);
    RedisplayWindow();
    BufR(10, 10) = 1;
    BufR(30, 30) = 2;
    RefreshRect(5, 5, 15, 15);
    EXPECT_EQ(Screen(10, 10) >> 16, 1u);
    EXPECT_EQ(Screen(30, 30) >> 16, 255u);
}

TEST_F(DisplayTest, PanelsShareOneColourSchemeAndPattern) {
    PrefsCallBack(Nav::form);
    EXPECT_EQ(Nav::form.BackColor.get(), 10524816u);
    EXPECT_EQ(Nav::HScroll1.BackColor.get(), 6706517u);
    EXPECT_EQ(Nav::HScroll1.ForeColor.get(), 8974079u);
    EXPECT_EQ(Nav::Label1.BackColor.get(), 10524816u);
    const PatternTile& a = Draw_Pattern(Nav::form);
    const PatternTile& b = Draw_Pattern(FatBits::form);
    ASSERT_GT(a.size, 0);
    EXPECT_NE(std::count(a.pixels.begin(), a.pixels.end(), a.pixels[0]), static_cast<long>(a.pixels.size()));
    FatBits::form.BackColor = 10524816;
    EXPECT_EQ(&Draw_Pattern(FatBits::form), &Draw_Pattern(Nav::form));
    (void)b;
}

TEST_F(DisplayTest, SizeTextAheadOfThePlanesDoesNotShearThePicture) {
    MakeTestDocument(40, 30);
    BufR(10, 5) = 7;
    SetBufferSize(33, 30);  // a dialog has written a new size; the planes follow later
    RedisplayWindow();
    EXPECT_EQ(Screen(10, 5) >> 16, 7u);
    SetBufferSize(40, 30);
}

TEST_F(DisplayTest, PreviewShowsTheWholePictureAndRepaintsOnlyWhenItChanged) {
    MakeTestDocument(200, 150);
    for (int y = 0; y < 150; ++y)
        for (int x = 0; x < 200; ++x) {
            BufR(x, y) = static_cast<uint8_t>(x);
            BufG(x, y) = static_cast<uint8_t>(y);
            BufB(x, y) = static_cast<uint8_t>(x ^ y);
        }
    host.surface = CanvasSurface{60, 40, 32, 0, 0};  // a view over part of the picture
    int repaints = 0;
    Form2::Picture27.viewHook = [&] { ++repaints; };
    RedisplayWindow();
    const int pw = Form2::Picture27.Width, ph = Form2::Picture27.Height;
    size_t wrong = 0;
    for (int v = 0; v < ph; ++v)
        for (int u = 0; u < pw; ++u) {
            const int x = u * 200 / pw, y = v * 150 / ph;
            wrong += Form2::Picture27.pixels[static_cast<size_t>(v * pw + u)] !=
                     vb::RGB(BufR(x, y), BufG(x, y), BufB(x, y));
        }
    EXPECT_EQ(wrong, 0u);
    EXPECT_EQ(repaints, 1);

    // Scrolling shows another part of the view; the preview's pixels stay.
    host.surface->OriginX = 120;
    host.surface->OriginY = 100;
    RedisplayWindow();
    EXPECT_EQ(Screen(0, 0), 0x0078641Cu);  // pixel (120, 100): r 120, g 100, b 120 ^ 100
    EXPECT_EQ(repaints, 1);

    // A sampled pixel outside the view changes: the preview follows.
    BufG(0, 0) = 77;  // (0, 0) is the first sample
    RedisplayWindow();
    EXPECT_EQ(repaints, 2);
    EXPECT_EQ(vb::GreenOf(Form2::Picture27.pixels[0]), 77);
    Form2::Picture27.viewHook = nullptr;
}
