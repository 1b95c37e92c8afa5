// The natural brush: a press remembers where the stroke starts, a held button
// paints dabs along the moves, and a free cursor only moves the start.
#include "brush/BrushState.h"
#include "brush/FormDraw.h"
#include "brush/Media.h"
#include "canvas/tools/Tools.h"
#include "core/frame/Form2.h"
#include "core/framework/Codes.h"
#include "core/framework/Host.h"

namespace {
using canvastool::Round16;
using canvastool::Zoom;

void Follow(float X, float Y) {
    LastX = Round16(X / Zoom());
    LastY = Round16(Y / Zoom());
}

void Down(int16_t, int16_t, float X, float Y) { Follow(X, Y); }

void Move(int16_t Button, int16_t Shift, float X, float Y) {
    if (Button > MouseButton::None && host().CanvasIsActive()) {
        Form1::Form_Draw(Button, Shift, X, Y);
    } else if (Button == MouseButton::None) {
        Follow(X, Y);
    }
}
}  // namespace

Rows NaturalBrushRows() {
    Rows rows;
    ToolRow tool{&Form2::Option1, "Natural paint tools.  Right click for presets.  Keyboard d"};
    tool.down = Down;
    tool.move = Move;
    tool.brushBox = true;
    tool.settings = [] { host().PopupMenu(MediaMenu()); };
    rows.tools = {tool};
    return rows;
}
