// The linear tool and the curve tool driven with the mouse, the curve's
// sampling and its wait for the bend point, and the geometry helpers.
#include "tests/canvas/CanvasFixture.h"

#include <cmath>

#include "canvas/CanvasState.h"
#include "canvas/Curve.h"
#include "canvas/Lines.h"
#include "core/frame/MDIForm1.h"

namespace {
class LineTest : public CanvasTest {
protected:
    void TearDown() override { host.onEvents = nullptr; }
};

TEST_F(LineTest, TheLineToolPaintsOneStrokeFromPressToRelease) {
    Form2::Option18.Value = true;
    Form2::HScroll5.Value = 4;
    const int16_t undo = UndoIndex;
    Move(MouseButton::None, 10, 10);
    Press(MouseButton::Left, 10, 10);
    EXPECT_EQ(LineActive, 255);
    EXPECT_TRUE(Form1::Line3.Visible);
    Move(MouseButton::Left, 50, 30);
    EXPECT_EQ(Form1::Line3.X2, 50);
    EXPECT_EQ(Painted(), 0) << "nothing is painted before the release";
    Release(MouseButton::Left, 80, 40);
    EXPECT_FALSE(Form1::Line3.Visible);
    EXPECT_EQ(LineActive, 0);
    EXPECT_NE(UndoIndex, undo);
    for (int x = 12; x <= 78; x += 6) EXPECT_LT(BufR(x, 10 + (x - 10) * 30 / 70), 255) << x;
    EXPECT_EQ(BufR(80, 10), 255);
    EXPECT_EQ(BufR(10, 40), 255);
    EXPECT_EQ(host.popups.size(), 0u);
}

TEST_F(LineTest, TheLineToolAtZoomPaintsInPicturePixels) {
    App.ZoomPercent = 200;
    Form2::Option18.Value = true;
    Form2::HScroll5.Value = 4;
    Press(MouseButton::Left, 20, 100);
    Release(MouseButton::Left, 160, 100);
    // The brush's dabs run from the press to within a step of the release.
    EXPECT_LT(BufR(10, 50), 255);
    EXPECT_LT(BufR(78, 50), 255);
    EXPECT_EQ(BufR(85, 50), 255);
}

TEST_F(LineTest, CurveSamplesSeventeenPositionsAndTheChordGivesALine) {
    App.CursorX = 50;  // the bend point on the chord's middle
    App.CursorY = 30;
    MyCurve(10, 90, 10, 50, curvemode::Preview, 1);
    EXPECT_FLOAT_EQ(Curve_X(0), 10);
    EXPECT_FLOAT_EQ(Curve_Y(1), 50);
    for (int i = 0; i < Form1::CurveSegments; ++i) {
        const LineControl& l = Form1::CurveSegment(i);
        ASSERT_TRUE(l.Visible);
        EXPECT_FLOAT_EQ(l.X1, Curve_X(i / 16.0f));
        EXPECT_FLOAT_EQ(l.X2, Curve_X((i + 1) / 16.0f));
        EXPECT_NEAR((l.X2 - 10) / 80 * 40 + 10, l.Y2, 1e-3) << "on the chord";
    }
    // Slightly accelerated at the ends: the first step is longer than a sixteenth.
    EXPECT_GT(Curve_X(1 / 16.0f) - 10, 80 / 16.0f);
    EXPECT_LT(Curve_X(9 / 16.0f) - Curve_X(8 / 16.0f), 80 / 16.0f);
    App.CursorX = 50;
    App.CursorY = -30;  // bent upwards
    MyCurve(10, 90, 10, 50, curvemode::Preview, 1);
    EXPECT_LT(Curve_Y(0.5f), 10);
    HideCurvePreview();
}

TEST_F(LineTest, TheCurveToolWaitsForTheBendClickAndPaintsOneStroke) {
    Form2::Option17.Value = true;
    Form2::HScroll5.Value = 4;
    Move(MouseButton::None, 10, 50);
    Press(MouseButton::Left, 10, 50);
    Move(MouseButton::Left, 80, 50);
    int pumps = 0;
    const int16_t undo = UndoIndex;
    // The user moves to the bend point while the tool waits, and clicks there.
    host.onEvents = [&] {
        ++pumps;
        if (pumps == 2) Move(MouseButton::None, 45, 10);
        if (pumps == 3) {
            EXPECT_TRUE(Form1::CurveSegment(0).Visible) << "the preview follows the cursor";
            EXPECT_EQ(Painted(), 0);
            Press(MouseButton::Left, 45, 10);
            Release(MouseButton::Left, 45, 10);
        }
    };
    Release(MouseButton::Left, 80, 50);
    EXPECT_EQ(pumps, 3);
    EXPECT_EQ(App.WaitingForClick, 0);
    EXPECT_EQ(App.LockCount, 0);
    EXPECT_EQ(UndoIndex, undo) << "the bend click is no second undo step";
    EXPECT_FALSE(Form1::CurveSegment(0).Visible);
    EXPECT_LT(BufR(10, 50), 255);
    for (float T : {0.25f, 0.75f, 0.9f})  // the curve's coefficients stay from the painting
        EXPECT_LT(BufR(vb::CInt(Curve_X(T)), vb::CInt(Curve_Y(T))), 255) << T;
    EXPECT_LT(BufR(45, 25), 255) << "the middle is pulled half way to the bend point";
    EXPECT_EQ(BufR(45, 50), 255) << "not the straight line";
}

TEST_F(LineTest, ClosingTheWindowWhileTheCurveWaitsEndsCleanly) {
    Form2::Option17.Value = true;
    Press(MouseButton::Left, 10, 50);
    host.onEvents = [&] { host.closing = true; };
    Release(MouseButton::Left, 80, 50);
    host.closing = false;
    EXPECT_EQ(App.WaitingForClick, 0);
    EXPECT_EQ(App.LockCount, 0);
    EXPECT_EQ(Painted(), 0);
}

TEST_F(LineTest, GeometryHelpers) {
    float a = 0, b = 0, c = 3, d = 4;
    int16_t D = 0;
    Distance(a, b, c, d, D);
    EXPECT_EQ(D, 5);
    c = -1e9f;
    Distance(a, b, c, d, D);
    EXPECT_EQ(D, 32767) << "held to 16 bits";
    // The quadrant comes from the signs of Y1 - Y2 and X1 - X2, zero counting as negative.
    EXPECT_NEAR(CalculateAngle(10, 10, 0, 0), 45, 1e-3);
    EXPECT_NEAR(CalculateAngle(0, 10, 10, 0), 135, 1e-3);
    EXPECT_NEAR(CalculateAngle(0, 0, 10, 0), 180, 1e-3);
    EXPECT_NEAR(CalculateAngle(10, 0, 0, 10), 315, 1e-3);
    EXPECT_NEAR(CalculateAngle(10, 0, 0, 0), 360, 1e-3);
    EXPECT_NEAR(CalculateAngle(5, 10, 5, 0), 90, 1e-3) << "X1 = X2 is taken as 90 before the quadrant";
    EXPECT_NEAR(CalculateAngle(5, 0, 5, 10), 270, 1e-3);
    EXPECT_NEAR(CalculateAngle(5, 5, 5, 5), 180, 1e-3) << "one point: 0 before the quadrant";
}

TEST_F(LineTest, LineDrawersOnThePictureStayInsideThePlanes) {
    MidPointLine(-100, -100, 500, 300, 0, 0, 0, W, H);
    AALine(-100, 300, 500, -100, 0, 0, 0, 10000, 10000);  // a size beyond the planes is held to them
    AAFloatLine(-1e30f, 0, 1e30f, 5, 0, 0, 0, W, H);
    GradAALine(0, 0, W * 3, H * 3, 0, 0, 0, 9, 9, 9, W, H);
    EXPECT_EQ(BufR(90, 27), 0) << "the midpoint line crosses the picture";
    EXPECT_GT(Painted(), 100);
}
}  // namespace
