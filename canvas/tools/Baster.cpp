// The turkey baster: picks the colour under the cursor, the left button into the
// primary sliders and the right into the secondary colour. It only reads the
// picture, so a press takes no undo step.
#include <algorithm>

#include "canvas/tools/Tools.h"
#include "colour/DeliverPixel.h"
#include "core/document/Buffers.h"
#include "core/frame/Form2.h"
#include "core/frame/MDIForm1.h"
#include "core/framework/Codes.h"
#include "core/framework/Host.h"

namespace {
void Pick(int16_t button, float x, float y) {
    int32_t r, g, b;
    TurkeyColor(vb::CLng(std::clamp(x, -1e9f, 1e9f)), vb::CLng(std::clamp(y, -1e9f, 1e9f)), r, g, b);
    if (button == MouseButton::Left) {
        Form2::HScroll1.Value = r;
        Form2::hscroll2.Value = g;
        Form2::hscroll3.Value = b;
    } else if (button == MouseButton::Right) {
        Form2::Shape1.FillColor = vb::RGB(r, g, b);
    }
}

// The press picks at once, through the zoom like the moves.
void Down(int16_t Button, int16_t, float X, float Y) {
    const float z = canvastool::Zoom();
    X = X / z;
    Y = Y / z;
    if (X >= BufferWidth() || Y >= BufferHeight()) return;
    Pick(Button, X, Y);
}

// The held button keeps picking, through the zoom.
void Move(int16_t Button, int16_t, float X, float Y) {
    const float z = canvastool::Zoom();
    X = X / z;
    Y = Y / z;
    const bool inside = X >= 0 && Y >= 0 && X < BufferWidth() && Y < BufferHeight();
    if (inside && (Button == MouseButton::Left || Button == MouseButton::Right)) Pick(Button, X, Y);
}

// A right click on the button chooses the baster's size.
void Settings() { host().PopupMenu(Menus::TBaster); }
}  // namespace

Rows BasterRows() {
    Rows rows;
    ToolRow tool{&Form2::Option6, "The turkey baster.  Used to select colors in the buffer.  Keyboard."};
    tool.down = Down;
    tool.move = Move;
    tool.settings = Settings;
    tool.marksPicture = false;
    rows.tools = {tool};
    return rows;
}
