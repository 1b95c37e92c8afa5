// The rectangle and ellipse tools: a rubber box from the press, drawn at the
// release as an outline (a brush stroke) or filled through DeliverPixel, by
// the button's tag. The keys r / R and c / C pick them outlined or filled.
#include "canvas/Shapes.h"
#include "canvas/tools/Tools.h"
#include "colour/Gradient.h"
#include "core/frame/Form2.h"

namespace {
using canvastool::EndRubberBox;
using canvastool::StartRubberBox;
using canvastool::StretchRubberBox;

void RectDown(int16_t, int16_t, float X, float Y) { StartRubberBox(X, Y, false); }
void RectMove(int16_t Button, int16_t, float X, float Y) { StretchRubberBox(Button, X, Y, false); }
void RectUp(int16_t Button, int16_t Shift, float X, float Y) {
    EndRubberBox(X, Y);
    DrawRectangle(Button, Shift, X, Y);
}

void EllipseDown(int16_t, int16_t, float X, float Y) { StartRubberBox(X, Y, true); }
void EllipseMove(int16_t Button, int16_t, float X, float Y) { StretchRubberBox(Button, X, Y, true); }
void EllipseUp(int16_t Button, int16_t Shift, float X, float Y) {
    EndRubberBox(X, Y);
    DrawCircle(Button, Shift, X, Y);
}

// The key picks the tool with its fill; the button's caption says which.
void Pick(OptionButton& tool, const char* tag, const char* caption) {
    PickTool(tool);
    tool.Tag = tag;
    tool.Caption = caption;
    tool.Value = true;
}

ToolRow ShapeTool(OptionButton& button, const char* tip, ToolProcedure down, ToolProcedure move, ToolProcedure up) {
    ToolRow tool{&button, tip};
    tool.down = down;
    tool.move = move;
    tool.up = up;
    tool.settings = win_Gradient_Click;  // the fill settings
    tool.crosshair = true;
    tool.brushBox = true;
    return tool;
}
}  // namespace

Rows RectangleRows() {
    Rows rows;
    rows.tools = {ShapeTool(Form2::Option2,
                            "Upper left, unfilled rectangle.  Lower right, filled rectangle.  Right click for "
                            "settings.  Keyboard r/R",
                            RectDown, RectMove, RectUp)};
    return rows;
}

Rows EllipseRows() {
    Rows rows;
    rows.tools = {ShapeTool(Form2::Option3,
                            "Upper left, unfilled ellipse.  Lower right, filled ellipse.  Right click for settings",
                            EllipseDown, EllipseMove, EllipseUp)};
    return rows;
}

void PickRectangle(bool filled) {
    if (filled) Pick(Form2::Option2, "filled", "Filled rect");
    else Pick(Form2::Option2, "unfilled", "Rect");
}

void PickEllipse(bool filled) {
    if (filled) Pick(Form2::Option3, "filled", "Filled ellipse");
    else Pick(Form2::Option3, "unfilled", "Ellipse");
}
