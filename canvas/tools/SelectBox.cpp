// The rectangle and ellipse selection tools: a rubber box from the press, and
// at the release the box goes into alpha. Without Alt the old selection goes
// first; with Alt the box adds, or with Alt and the right button subtracts.
#include "canvas/CanvasState.h"
#include "canvas/Shapes.h"
#include "canvas/tools/Tools.h"
#include "core/framework/AppState.h"
#include "core/frame/Form2.h"
#include "core/framework/Codes.h"

namespace {
using canvastool::EndRubberBox;
using canvastool::StartRubberBox;
using canvastool::StretchRubberBox;

uint8_t SelectionValue(int16_t Button, int16_t Shift) {
    const bool alt = (Shift & ShiftState::Alt) != 0;
    if (!alt) AlphaToBlack();
    return alt && Button != MouseButton::Left ? 0 : 255;
}

void RectDown(int16_t, int16_t, float X, float Y) { StartRubberBox(X, Y, false); }
void RectMove(int16_t Button, int16_t, float X, float Y) { StretchRubberBox(Button, X, Y, false); }
void RectUp(int16_t Button, int16_t Shift, float X, float Y) {
    const uint8_t value = SelectionValue(Button, Shift);
    RectToAlpha(X, Y, value);
    EndRubberBox(X, Y);
    ShowNewSelection();
}

void EllipseDown(int16_t, int16_t, float X, float Y) { StartRubberBox(X, Y, true); }
void EllipseMove(int16_t Button, int16_t, float X, float Y) { StretchRubberBox(Button, X, Y, true); }
// The ellipse goes in as a filled shape in the alpha fill mode, put back afterwards.
void EllipseUp(int16_t Button, int16_t Shift, float X, float Y) {
    const uint8_t value = SelectionValue(Button, Shift);
    const kwmode::FillMode mode = App.FillMode;
    const std::string tag = Form2::Option3.Tag;
    App.FillMode = kwmode::FillMode::Alpha;
    Form2::Option3.Tag = "filled";
    CircleToAlpha(X, Y, value);
    App.FillMode = mode;
    Form2::Option3.Tag = tag;
    EndRubberBox(X, Y);
    ShowNewSelection();
}

ToolRow BoxTool(OptionButton& button, const char* tip, ToolProcedure down, ToolProcedure move, ToolProcedure up) {
    ToolRow tool{&button, tip};
    tool.down = down;
    tool.move = move;
    tool.up = up;
    tool.crosshair = true;
    return tool;
}
}  // namespace

Rows RectAlphaRows() {
    Rows rows;
    rows.tools = {BoxTool(Form2::Option14, "Rectangle to Alpha.  Alt to add or subtract.", RectDown, RectMove, RectUp)};
    return rows;
}

Rows EllipseAlphaRows() {
    Rows rows;
    rows.tools = {
        BoxTool(Form2::Option15, "Ellipse to Alpha.  Alt to add or subtract.", EllipseDown, EllipseMove, EllipseUp)};
    return rows;
}
