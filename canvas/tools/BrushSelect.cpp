// The custom brush selector: a rubber rectangle from the press to the release
// cuts the brush from the picture, then the brush paints at once. A right click
// on the button opens the colour key.
#include <algorithm>
#include <cmath>

#include "brush/CustomBrush.h"
#include "canvas/tools/Tools.h"
#include "core/display/Form1.h"
#include "core/document/Buffers.h"
#include "core/frame/Form2.h"
#include "core/framework/Codes.h"
#include "core/framework/Host.h"

namespace {
using canvastool::Round16;
using canvastool::Zoom;

int16_t DragStartX = 0, DragStartY = 0;

void Down(int16_t Button, int16_t, float X, float Y) {
    if (Button != MouseButton::Left) return;
    Form1::Line1.Visible = false;
    Form1::Line2.Visible = false;
    DragStartX = Round16(X);
    DragStartY = Round16(Y);
    Form1::Shape1.Left = DragStartX;
    Form1::Shape1.Top = DragStartY;
    Form1::Shape1.Width = 0;
    Form1::Shape1.Height = 0;
    Form1::Shape1.Visible = true;
}

// Corner to corner while the button is held.
void Move(int16_t Button, int16_t, float X, float Y) {
    if (Button != MouseButton::Left || !Form1::Shape1.Visible) return;
    const int16_t x = Round16(X), y = Round16(Y);
    Form1::Shape1.Left = std::min(DragStartX, x);
    Form1::Shape1.Top = std::min(DragStartY, y);
    Form1::Shape1.Width = std::abs(x - DragStartX);
    Form1::Shape1.Height = std::abs(y - DragStartY);
}

// The rectangle in picture pixels, each side held to the picture; a rectangle
// of no width or height picks nothing and leaves the tool as it is.
void Up(int16_t Button, int16_t, float, float) {
    if (Button != MouseButton::Left || !Form1::Shape1.Visible) return;
    Form1::Shape1.Visible = false;
    const float z = Zoom();
    const int W = BufferWidth(), H = BufferHeight();
    auto side = [z](int v, int most) { return std::clamp(vb::CLng(v / z), 0, std::max(most - 1, 0)); };
    const int left = side(Form1::Shape1.Left, W), top = side(Form1::Shape1.Top, H);
    const int right = side(Form1::Shape1.Left + Form1::Shape1.Width, W);
    const int bottom = side(Form1::Shape1.Top + Form1::Shape1.Height, H);
    if (right <= left || bottom <= top) return;
    CustomBrushSelect(left, top, right, bottom);
    if (!BrushExists()) return;
    PickTool(Form2::Option1);
    Form2::slider1.Value = 16;
    App.CustomBrushOn = -1;
    BrushChanged();
}

void Settings() { Show(BrushKey::form); }
}  // namespace

Rows BrushSelectRows() {
    Rows rows;
    ToolRow tool{&Form2::Option20, "Custom brush selector tool.  Right click for options.  Keyboard  'b'"};
    tool.down = Down;
    tool.move = Move;
    tool.up = Up;
    tool.settings = Settings;
    tool.marksPicture = false;
    tool.crosshair = true;
    rows.tools = {tool};
    return rows;
}
