// The linear tool: a press starts the rubber line, the moves stretch it, and
// the release draws by the checked entry of the tool's popup. The line variant
// paints one brush stroke from the press to the release; the others lay a
// linear or circular gradient, fade alpha along the line, or warp the picture.
#include "brush/FormDraw.h"
#include "brush/Geometry.h"
#include "canvas/CanvasState.h"
#include "canvas/tools/Tools.h"
#include "core/display/Form1.h"
#include "core/frame/Form2.h"
#include "core/frame/MDIForm1.h"
#include "core/framework/Host.h"
#include "fill/FillPanels.h"
#include "fill/LinearTools.h"

namespace {
using canvastool::Round16;

void Down(int16_t, int16_t, float X, float Y) { canvastool::StartRubberLine(X, Y); }

void Move(int16_t, int16_t, float X, float Y) { canvastool::StretchRubberLine(X, Y); }

// The gradient variants work in picture pixels.
void GradientVariants(float X, float Y) {
    const float z = canvastool::Zoom();
    float x1 = LineStartX / z, y1 = LineStartY / z, x2 = X / z, y2 = Y / z;
    if (Menus::Linetool_Gradient.Checked) {
        LinearGradient(x1, y1, x2, y2);
    } else if (Menus::LinearAlhpaFader.Checked) {
        LinearAlphaFade(x1, y1, x2, y2);
    } else if (Menus::Circular_Gradient.Checked) {
        int16_t radius = 0;
        Distance(x1, y1, x2, y2, radius);
        CircularGradient(x1, y1, radius, 1);
    } else if (Menus::LinearWarp.Checked) {
        LinearWarp(x1, y1, x2, y2, WarpStrength);
    }
}

// Positions are window pixels: the brush engine divides by the zoom itself.
void Up(int16_t Button, int16_t Shift, float X, float Y) {
    LineActive = 0;
    Form1::Line3.Visible = false;
    if (!Menus::linetool_Line.Checked) {
        GradientVariants(X, Y);
        return;
    }
    int16_t place = 0, shift = Shift, button = Button;
    float x = LineStartX, y = LineStartY;
    Form1::Form_Draw(place, shift, x, y);
    shift = Shift;
    Form1::Form_Draw(button, shift, X, Y);
}

void Settings() { host().PopupMenu(Menus::Linetool); }

// One variant is checked at a time.
void PickVariant(MenuEntry& chosen) {
    for (MenuEntry* e : {&Menus::linetool_Line, &Menus::Linetool_Gradient, &Menus::Circular_Gradient,
                         &Menus::LinearWarp, &Menus::LinearAlhpaFader})
        e->Checked = e == &chosen;
}
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
    rows.menus = {{&Menus::linetool_Line, [] { PickVariant(Menus::linetool_Line); }},
                  {&Menus::Linetool_Gradient, [] { PickVariant(Menus::Linetool_Gradient); }},
                  {&Menus::Circular_Gradient, [] { PickVariant(Menus::Circular_Gradient); }},
                  {&Menus::LinearWarp,
                   [] {
                       PickVariant(Menus::LinearWarp);
                       Warp_Settings_Click();  // the warp's bias and anti-aliasing beside the canvas
                   }},
                  {&Menus::LinearAlhpaFader, [] { PickVariant(Menus::LinearAlhpaFader); }}};
    return rows;
}
