// The linear tool: a press starts the rubber line, the moves stretch it, and
// the release draws by the checked entry of the tool's popup. The line variant
// paints one brush stroke from the press to the release.
#include "brush/FormDraw.h"
#include "canvas/CanvasState.h"
#include "canvas/tools/Tools.h"
#include "core/display/Form1.h"
#include "core/frame/Form2.h"
#include "core/frame/MDIForm1.h"
#include "core/framework/Host.h"

namespace {
using canvastool::Round16;

void Down(int16_t, int16_t, float X, float Y) { canvastool::StartRubberLine(X, Y); }

void Move(int16_t, int16_t, float X, float Y) { canvastool::StretchRubberLine(X, Y); }

// Positions are window pixels: the brush engine divides by the zoom itself.
void Up(int16_t Button, int16_t Shift, float X, float Y) {
    LineActive = 0;
    Form1::Line3.Visible = false;
    if (!Menus::linetool_Line.Checked) return;
    int16_t place = 0, shift = Shift, button = Button;
    float x = LineStartX, y = LineStartY;
    Form1::Form_Draw(place, shift, x, y);
    shift = Shift;
    Form1::Form_Draw(button, shift, X, Y);
}

void Settings() { host().PopupMenu(Menus::Linetool); }
}  // namespace

namespace canvastool {
void StartRubberLine(float X, float Y) {
    LineActive = 255;
    LineStartX = Round16(X);
    LineStartY = Round16(Y);
    Form1::Line3.X1 = LineStartX;
    Form1::Line3.Y1 = LineStartY;
    Form1::Line3.X2 = LineStartX;
    Form1::Line3.Y2 = LineStartY;
    Form1::Line3.Visible = true;
}

void StretchRubberLine(float X, float Y) {
    if (LineActive != 255) return;
    Form1::Line3.X1 = LineStartX;
    Form1::Line3.Y1 = LineStartY;
    Form1::Line3.X2 = X;
    Form1::Line3.Y2 = Y;
}
}  // namespace canvastool

Rows LineRows() {
    Rows rows;
    ToolRow tool{&Form2::Option18, "Linear tool.  Right click for tools.  Keyboard v"};
    tool.down = Down;
    tool.move = Move;
    tool.up = Up;
    tool.settings = Settings;
    tool.brushBox = true;
    rows.tools = {tool};
    rows.menus = {{&Menus::linetool_Line, [] { Menus::linetool_Line.Checked = true; }}};
    return rows;
}
