// The paint fills from the user's side (a coat only inside the selection,
// thinner at its edges, one undo step; the adjustable one fading along the
// band drawn after the key), the edge table and an empty selection, the
// stroke texture's file, and "Map to current gradient" through alpha.
#include "tests/canvas/CanvasFixture.h"

#include <cstdio>
#include <fstream>

#include "colour/Gradients.h"
#include "core/display/Form1.h"
#include "core/frame/MDIForm1.h"
#include "fill/FillMenus.h"
#include "fill/PaintFill.h"
#include "native/PaintFill.h"

namespace {
class PaintFillTest : public CanvasTest {
protected:
    void SetUp() override {
        CanvasTest::SetUp();
        Form2::Shape4.FillColor = vb::RGB(20, 90, 200);
        Form2::HScroll4.Value = 255;
        Form2::Check1.Value = 0;
        Form2::Check2.Value = 0;
        BufA.fill(0);
        for (int y = 10; y < 50; ++y)
            for (int x = 20; x < 80; ++x) BufA(x, y) = 255;
        App.AlphaOff = 0;
    }
    // How far the pixel moved from white toward the primary's blue.
    static int Coat(int x, int y) { return 255 - BufR(x, y); }
};

TEST_F(PaintFillTest, CoatLiesInsideTheSelectionThickerInTheMiddleAsOneUndoStep) {
    const int16_t undo = UndoIndex;
    Key('w');
    EXPECT_NE(UndoIndex, undo);
    int outside = 0;
    for (int y = 0; y < H; ++y)
        for (int x = 0; x < W; ++x)
            if (x < 19 || x > 80 || y < 9 || y > 50) outside += BufR(x, y) != 255 || BufB(x, y) != 255;
    EXPECT_EQ(outside, 0) << "nothing beyond the selection and its softened rim";
    EXPECT_GT(Coat(50, 30), 60) << "the middle takes paint";
    EXPECT_LT(Coat(21, 30), Coat(50, 30)) << "the coat thins toward the edges";
    EXPECT_LT(Coat(50, 11), Coat(50, 30));
    // Red falls more than blue: the colour is the primary's (20, 90, 200).
    EXPECT_LT(BufR(50, 30), BufB(50, 30));
    RepaintUndo();
    // With alpha off the selection is the whole picture.
    App.AlphaOff = 255;
    MDIForm1::Buffer_Paint.press();
    EXPECT_GT(Coat(10, 60), 0);
}

TEST_F(PaintFillTest, ASelectionThatIsNotABoxTakesTheCoatOnlyWhereItIs) {
    // An L: the box's lower right quarter lies outside every row's and column's span.
    for (int y = 30; y < 50; ++y)
        for (int x = 50; x < 80; ++x) BufA(x, y) = 0;
    Key('w');
    EXPECT_GT(Coat(30, 40), 0);
    EXPECT_GT(Coat(60, 20), 0);
    EXPECT_EQ(Coat(70, 45), 0);
    EXPECT_EQ(BufB(70, 45), 255);
}

TEST_F(PaintFillTest, AdjustableFillFadesAlongTheBandDrawnAfterTheKey) {
    // The band runs down the selection: the cursor where the key was pressed,
    // then moves, a press (ignored) and a release that ends it.
    App.CursorX = 50, App.CursorY = 10;
    int pumps = 0;
    host.onEvents = [&] {
        if (++pumps == 2) {
            EXPECT_TRUE(Form1::PaintFill_Band.Visible);
            Move(MouseButton::None, 50, 50);
            Press(MouseButton::Left, 50, 50);
            Release(MouseButton::Left, 50, 50);
        }
    };
    Key('e');
    host.onEvents = nullptr;
    EXPECT_FALSE(Form1::PaintFill_Band.Visible);
    EXPECT_EQ(App.WaitingForClick, 0);
    EXPECT_EQ(App.LockCount, 0);
    EXPECT_GT(Coat(50, 16), Coat(50, 30)) << "the band's start keeps the coat";
    EXPECT_GT(Coat(50, 30), Coat(50, 46)) << "toward its end it fades";
}

TEST_F(PaintFillTest, EdgeTableAndAnEmptySelection) {
    uint8_t full[257], thin[257];
    kwpaintfill::EdgeTable(0, full);
    kwpaintfill::EdgeTable(255, thin);
    EXPECT_EQ(full[0], 0);
    EXPECT_EQ(full[256], 0);
    EXPECT_EQ(full[128], 255);
    EXPECT_EQ(thin[128], 128) << "a thin coat reaches half";
    EXPECT_GT(full[16], thin[16]) << "a full coat rises faster from the edge";
    for (int p = 1; p <= 128; ++p) ASSERT_GE(full[p], full[p - 1]);
    // An empty selection: nothing to paint, nothing changes.
    std::vector<uint8_t> mask(11 * 9, 0), r(mask.size(), 5), g = r, b = r;
    kwpaintfill::Coat c{mask.data(), r.data(), g.data(), b.data(), 11, 10, 8, {}, {}, 0, {255, 255, 255}};
    EXPECT_FALSE(kwpaintfill::PaintCoat(c));
    for (uint8_t v : r) ASSERT_EQ(v, 5);
}

TEST_F(PaintFillTest, StrokeTextureIsReadFromItsFileOrLeftFlat) {
    const std::string saved = App.StartDirectory;
    App.StartDirectory = ::testing::TempDir();
    const std::string path = ProgramFile("StrokeTexture.pgm");
    {
        std::ofstream f(path, std::ios::binary);
        f << "P5\n377 358\n255\n";
        for (int i = 0; i < 377 * 358; ++i) f.put(static_cast<char>(i % 7 * 30));
    }
    StartupStrokeTexture();
    EXPECT_EQ(StrokeTexture(1, 0), 30);
    EXPECT_EQ(StrokeTexture(376, 357), static_cast<uint8_t>((377 * 358 - 1) % 7 * 30));
    {
        std::ofstream f(path, std::ios::binary);
        f << "P5\n377 358\n255\n" << "short";
    }
    StartupStrokeTexture();
    EXPECT_EQ(StrokeTexture(376, 357), 200) << "a cut file leaves the flat texture";
    std::remove(path.c_str());
    App.StartDirectory = saved;
    StartupStrokeTexture();
}

TEST_F(PaintFillTest, MapToGradientIsOneUndoStepThroughTheSelection) {
    App.GradientIndex = 5;
    for (int i = 0; i < 256; ++i) {
        GradientData[5][0][i] = static_cast<uint8_t>(255 - i);
        GradientData[5][1][i] = 7;
        GradientData[5][2][i] = static_cast<uint8_t>(i / 2);
    }
    BufR(30, 20) = 10, BufG(30, 20) = 20, BufB(30, 20) = 31;  // mean 20.33: step 20
    const int16_t undo = UndoIndex;
    MDIForm1::MapGradient.press();
    EXPECT_NE(UndoIndex, undo);
    EXPECT_EQ(BufR(30, 20), 235);
    EXPECT_EQ(BufB(30, 20), 10);
    EXPECT_EQ(BufR(50, 30), 0) << "white is the last step";
    EXPECT_EQ(BufG(5, 5), 255) << "outside the selection nothing changes";
}
}  // namespace
