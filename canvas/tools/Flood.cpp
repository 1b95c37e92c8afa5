// The flood fill (key f) and the magic wand: a press fills the region under
// it, in the primary colour (the secondary with the right button) or into
// alpha. A right click on either button opens the Flood popup.
#include "canvas/CanvasState.h"
#include "canvas/Shapes.h"
#include "canvas/tools/Tools.h"
#include "colour/Gradient.h"
#include "core/document/Buffers.h"
#include "core/frame/Form2.h"
#include "core/frame/MDIForm1.h"
#include "core/framework/Codes.h"
#include "core/framework/Host.h"
#include "fill/FillPanels.h"
#include "fill/Flood.h"
#include "filter/FilterFrame.h"

namespace {
// A press anywhere on the picture, the last row and column included, seeds a flood.
bool OnPicture(float X, float Y) {
    const float z = canvastool::Zoom();
    const int W = PictureWidth({&BufR, &BufG, &BufB, &BufA}), H = PictureHeight({&BufR, &BufG, &BufB, &BufA});
    const int x = vb::CLng(X / z), y = vb::CLng(Y / z);
    return x >= 0 && y >= 0 && x < W && y < H;
}

void FloodDown(int16_t Button, int16_t, float X, float Y) {
    if (!OnPicture(X, Y)) return;
    const uint32_t colour = Button == MouseButton::Right ? Form2::Shape1.FillColor.get() : Form2::Shape4.FillColor.get();
    Hourglass busy;
    Flood(X, Y, Form4::HScroll1.Value, colour, MaskFromShape != 0);
}

// Without Alt the old selection goes first; Alt adds, Alt with the right button subtracts.
void WandDown(int16_t Button, int16_t Shift, float X, float Y) {
    if (!OnPicture(X, Y)) return;
    const bool alt = (Shift & ShiftState::Alt) != 0;
    if (!alt) AlphaToBlack();
    const uint8_t value = alt && Button != MouseButton::Left ? 0 : 255;
    SetAlphaOn(false);  // the region is searched in the picture as it is, unmasked
    {
        Hourglass busy;
        Flood_To_Alpha(X, Y, Form4::HScroll1.Value, value);
    }
    ShowNewSelection();
}

void FloodPopup() { host().PopupMenu(Menus::Flood); }
}  // namespace

Rows FloodRows() {
    Rows rows;
    ToolRow flood{&Form2::Option4, "Flood fill..  Right click for settings."};
    flood.down = FloodDown;
    flood.settings = FloodPopup;
    rows.tools = {flood};
    rows.menus = {{&Menus::Flood_Settings, Flood_Settings_Click}, {&Menus::Flood_FillSettings, win_Gradient_Click}};
    return rows;
}

Rows WandRows() {
    Rows rows;
    ToolRow wand{&Form2::Option16, "Magic wand.  Right click for settings.  Alt for add or subtract."};
    wand.down = WandDown;
    wand.settings = FloodPopup;
    rows.tools = {wand};
    return rows;
}
