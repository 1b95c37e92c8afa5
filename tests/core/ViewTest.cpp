// The view of a document: where a new one starts, zooming about the cursor by
// the zoom panel's steps, the info box, and the progress of a big new document.
#include <set>

#include "core/display/Form1.h"
#include "core/framework/Boxes.h"
#include "core/document/CanvasSize.h"
#include "core/frame/Nav.h"
#include "tests/core/CoreFixture.h"

namespace {
struct ViewTest : CoreTest {
    void SetUp() override {
        CoreTest::SetUp();
        Nav::FollowZoom();
    }
    // New from the menu, answered yes and with this size.
    void New(int w, int h) {
        host.Answer("The current buffer will be lost.  Continue?", 1);
        host.AnswerSize(w, h);
        New_Click();
    }
    // The picture point under view position (vx, vy).
    double PictureX(double vx) { return (host.GetCanvasSurface().OriginX + vx) * 100.0 / App.ZoomPercent; }
    double PictureY(double vy) { return (host.GetCanvasSurface().OriginY + vy) * 100.0 / App.ZoomPercent; }
};
}  // namespace

TEST_F(ViewTest, ANewDocumentStartsAtItsTopLeftAt100PercentWithThePanelAgreeing) {
    host.surface = CanvasSurface{300, 200, 32, 0, 0};
    MakeTestDocument(1200, 900);
    Nav::HScroll1.Value = 25;
    Nav::HScroll1.Value = 300;  // the panel's own way: slider, number and zoom agree
    ASSERT_EQ(App.ZoomPercent, 300);
    host.ScrollCanvasTo(2000, 900);
    ASSERT_EQ(host.GetCanvasSurface().OriginX, 2000);

    // A long thin document, as the one whose first stroke landed far from the mouse.
    New(1600, 100);
    EXPECT_EQ(App.ZoomPercent, 100);
    EXPECT_EQ(Nav::HScroll1.Value.get(), 100);
    EXPECT_EQ(Nav::Label1.Caption.get(), "100");
    EXPECT_EQ(host.GetCanvasSurface().OriginX, 0);
    EXPECT_EQ(host.GetCanvasSurface().OriginY, 0);
    EXPECT_EQ(host.canvasWidth, 1600);
    EXPECT_EQ(host.canvasHeight, 100);

    // Cancel in the size dialog keeps the size but is a new document all the same.
    Nav::HScroll1.Value = 50;
    host.ScrollCanvasTo(500, 0);
    host.Answer("The current buffer will be lost.  Continue?", 1);
    host.Press("CanvasSize", "Command2");
    New_Click();
    EXPECT_EQ(App.ZoomPercent, 100);
    EXPECT_EQ(Nav::HScroll1.Value.get(), 100);
    EXPECT_EQ(host.GetCanvasSurface().OriginX, 0);
    EXPECT_EQ(BufferWidth(), 1600);
}

TEST_F(ViewTest, TheWheelZoomsByThePanelsStepsKeepingThePointUnderTheCursor) {
    host.surface = CanvasSurface{100, 80, 32, 0, 0};
    MakeTestDocument(1200, 900);
    Nav::HScroll1.Value = 100;
    const double vx = 37, vy = 21;  // the cursor, in the view
    host.ScrollCanvasTo(600 - 37, 450 - 21);
    const double px = PictureX(vx), py = PictureY(vy);
    ASSERT_DOUBLE_EQ(px, 600);
    ASSERT_DOUBLE_EQ(py, 450);

    std::vector<int> seen;
    auto step = [&](int direction) {
        Nav::WheelZoom(direction, vx, vy);
        seen.push_back(App.ZoomPercent);
        SCOPED_TRACE(App.ZoomPercent);
        // The origin is a whole window pixel: half of one is the most it can miss
        // by, at this step and all others, as the misses do not add up.
        const double slack = 0.5 * 100.0 / App.ZoomPercent + 1e-9;
        EXPECT_NEAR(PictureX(vx), px, slack);
        EXPECT_NEAR(PictureY(vy), py, slack);
        EXPECT_EQ(Nav::HScroll1.Value.get(), App.ZoomPercent);
        EXPECT_EQ(Nav::Label1.Caption.get(), std::to_string(App.ZoomPercent));
        EXPECT_EQ(host.canvasWidth, 1200 * App.ZoomPercent / 100);
    };
    for (int i = 0; i < 3; ++i) step(-1);  // out past the smallest
    for (int i = 0; i < 8; ++i) step(+1);  // in past the largest
    for (int i = 0; i < 7; ++i) step(-1);
    const std::vector<int> expected = {50, 25, 25, 50, 100, 200, 300, 400, 500, 600, 600,
                                       500, 400, 300, 200, 100, 50, 25};
    EXPECT_EQ(seen, expected);
    EXPECT_EQ(Nav::NextZoomStep(150, +1), 200);
    EXPECT_EQ(Nav::NextZoomStep(150, -1), 100);
    EXPECT_EQ(Nav::NextZoomStep(10, -1), 10);
    Nav::HScroll1.Value = 100;  // as a fresh start leaves it
}

TEST_F(ViewTest, TheInfoBoxNamesThePaintModeAsSoonAsAKeyChangesIt) {
    MakeTestDocument(8, 8);
    const char keys[] = "1234567890!@";
    const char* names[] = {"Default", "Additive", "Subtractative", "Multiply", "Divide", "Screen",
                           "Around grey", "Rubthrough", "Panto", "Smear", "Pattern", "Offset pattern"};
    // From the last mode backwards, so that every key is a change.
    for (int i = 11; i >= 0; --i) {
        int16_t key = keys[i];
        Form1::Form_KeyPress(key);
        const std::string info = Form2::Info1.Caption;
        EXPECT_EQ(info.substr(0, info.find('\n')), std::string("Paint mode = ") + names[i]);
    }
}

TEST_F(ViewTest, ABigNewDocumentShowsItsProgressWithTheSizeDialogGone) {
    MakeTestDocument(16, 16);
    Form2::Shape1.FillColor = 0x304050;
    std::vector<int> bars;
    bool dialogUp = false, statusDown = false;
    host.onEvents = [&] {
        if (!Status::form.Visible) return;
        bars.push_back(BarPosition);
        dialogUp = dialogUp || CanvasSize::form.Visible;
    };
    New(2400, 2400);  // about 110 MB of planes: a while, and it fits
    host.onEvents = nullptr;
    statusDown = !Status::form.Visible;
    ASSERT_GE(bars.size(), 20u);
    EXPECT_TRUE(std::is_sorted(bars.begin(), bars.end()));
    EXPECT_EQ(bars.back(), 100);
    EXPECT_GE(std::set<int>(bars.begin(), bars.end()).size(), 20u);
    EXPECT_FALSE(dialogUp);
    EXPECT_TRUE(statusDown);
    // Every plane written once, and right: picture, extra column and row.
    EXPECT_EQ(BufR(0, 0), 0x50);
    EXPECT_EQ(BufG(2399, 2399), 0x40);
    EXPECT_EQ(SwapB(1200, 7), 0x30);
    EXPECT_EQ(BufA(5, 2399), 255);
    EXPECT_EQ(BufR(2400, 10), 0);
    EXPECT_EQ(BufA(10, 2400), 0);
    EXPECT_EQ(MarqueePlane(100, 100), 0);
    EXPECT_EQ(UndoR(17, 3), 0x50);  // New's own undo step took the cleared picture

    // A small one shows no progress window at all.
    bars.clear();
    host.onEvents = [&] { bars.push_back(Status::form.Visible ? 1 : 0); };
    New(64, 64);
    host.onEvents = nullptr;
    EXPECT_EQ(std::count(bars.begin(), bars.end(), 1), 0);
}
