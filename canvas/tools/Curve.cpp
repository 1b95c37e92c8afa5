// The curve tool: press and release give the end points, like the linear
// tool's rubber line; then the tool waits for a click that fixes the bend
// point, previewing the curve under the cursor, and paints the curve as one
// brush stroke.
#include "canvas/CanvasState.h"
#include "canvas/Curve.h"
#include "canvas/tools/Tools.h"
#include "core/display/Display.h"
#include "core/display/Form1.h"
#include "core/frame/Form2.h"

namespace {
void Down(int16_t, int16_t, float X, float Y) { canvastool::StartRubberLine(X, Y); }

void Move(int16_t, int16_t, float X, float Y) { canvastool::StretchRubberLine(X, Y); }

void Up(int16_t Button, int16_t, float X, float Y) {
    LineActive = 0;
    Form1::Line3.Visible = false;
    const float x1 = LineStartX, y1 = LineStartY;
    if (!Wait_On_hermite_Value(x1, X, y1, Y, curvemode::Preview, Button)) return;  // the frame closed
    MyCurve(x1, X, y1, Y, curvemode::Render, Button);
    RedisplayWindow();
}
}  // namespace

Rows CurveRows() {
    Rows rows;
    ToolRow tool{&Form2::Option17, "The curve tool."};
    tool.down = Down;
    tool.move = Move;
    tool.up = Up;
    tool.brushBox = true;
    rows.tools = {tool};
    return rows;
}
