// The key table. A press is matched by its character with its case; F keys and
// shift with the arrows act on release, plain arrows when they go down.
#include "app/KeyTable.h"

#include <algorithm>

#include "anim/Transport.h"
#include "brush/Brush.h"
#include "brush/BrushTransforms.h"
#include "brush/CustomBrush.h"
#include "brush/Media.h"
#include "brush/Spraxel.h"
#include "canvas/CanvasInput.h"
#include "canvas/tools/Tools.h"
#include "colour/DeliverPixel.h"
#include "colour/Gradient.h"
#include "core/display/Display.h"
#include "core/display/Form1.h"
#include "core/document/Undo.h"
#include "core/frame/AlphaMenu.h"
#include "core/frame/BufferMenu.h"
#include "core/frame/Form2.h"
#include "core/framework/Codes.h"
#include "core/framework/Host.h"
#include "fill/PaintFill.h"
#include "plugin/PluginOptions.h"

namespace {
void StepSize(int by) {
    Slider& s = Form2::HScroll5;
    if (by > 0 && s.Value < s.Max) s.Value = s.Value + 1;
    if (by < 0 && s.Value > s.Min) s.Value = s.Value - 1;
}

void Nudge(int dx, int dy) {
    NudgeAlpha(dx, dy);
    RedisplayWindow();
}

Command Mode(int index) {
    return [index] { Form2::Combo4.ListIndex = index; };
}

Command Tool(OptionButton& button) {
    return [&button] { PickTool(button); };
}

std::vector<KeyLine> MakeTable() {
    using namespace MDIForm1;
    using namespace VirtualKey;
    const int16_t none = ShiftState::None, shift = ShiftState::Shift;
    return {
        {"Buffer", "u, ctrl z", "Undo", {OnPress('u', RepaintUndo), OnPress(KeyChar::CtrlZ, RepaintUndo)}},
        {"Buffer", "U, a, ctrl a", "Redo", {OnPress('U', Redo), OnPress('a', Redo), OnPress(KeyChar::CtrlA, Redo)}},
        {"Buffer", "K", "Clear the buffer to the secondary colour", {OnPress('K', Clear_Click)}},
        {"Buffer", "j", "Swap buffers", {OnPress('j', swapbuffer_Click)}},
        {"Buffer", "J", "Copy to swap", {OnPress('J', CopyToSwap_Click)}},
        {"Buffer", "S", "Copy swap buffer to alpha", {OnPress('S', SwapToAlpha_Click)}},
        {"Buffer", "W", "Copy alpha to swap buffer", {OnPress('W', AlhpaToSwap_Click)}},
        {"Buffer", "q", "Fill the buffer", {OnPress('q', Buffer_Fill_Click)}},
        {"Buffer", "w, e", "Paint fill, adjustable paint fill",
         {OnPress('w', Buffer_Paint_Click), OnPress('e', Buffer_Adjustablepaint_Click)}},
        {"Alpha", "\\", "Alpha on/off", {OnPress('\\', AlphaEnable_Click)}},
        {"Alpha", "|", "Invert alpha", {OnPress('|', InvertAlpha_Click)}},
        {"Alpha", "shift + arrows", "Move the selection by one pixel",
         {OnRelease(Up, shift, [] { Nudge(0, -1); }), OnRelease(Down, shift, [] { Nudge(0, 1); }),
          OnRelease(Left, shift, [] { Nudge(-1, 0); }), OnRelease(Right, shift, [] { Nudge(1, 0); })}},
        {"Tools", "d", "Brush", {OnPress('d', Tool(Form2::Option1))}},
        {"Tools", "r, R", "Rectangle, outline or filled",
         {OnPress('r', [] { PickRectangle(false); }), OnPress('R', [] { PickRectangle(true); })}},
        {"Tools", "c, C", "Ellipse, outline or filled",
         {OnPress('c', [] { PickEllipse(false); }), OnPress('C', [] { PickEllipse(true); })}},
        {"Tools", "f", "Flood fill", {OnPress('f', Tool(Form2::Option4))}},
        {"Tools", ",", "Colour baster", {OnPress(',', Tool(Form2::Option6))}},
        {"Tools", "v", "Linear tool", {OnPress('v', Tool(Form2::Option18))}},
        {"Tools", "b", "Custom brush selector", {OnPress('b', Tool(Form2::Option20))}},
        {"Brush", "Esc", "All brush settings back to neutral", {OnPress(KeyChar::Escape, ClearAllGads)}},
        {"Brush", "+, =  and  -, _", "Brush size up and down",
         {OnPress('=', [] { StepSize(1); }), OnPress('+', [] { StepSize(1); }), OnPress('_', [] { StepSize(-1); }),
          OnPress('-', [] { StepSize(-1); })}},
        {"Brush", "1..9, 0, !, @", "Painting mode by its place in the list",
         {OnPress('1', Mode(0)), OnPress('2', Mode(1)), OnPress('3', Mode(2)), OnPress('4', Mode(3)),
          OnPress('5', Mode(4)), OnPress('6', Mode(5)), OnPress('7', Mode(6)), OnPress('8', Mode(7)),
          OnPress('9', Mode(8)), OnPress('0', Mode(9)), OnPress('!', Mode(10)), OnPress('@', Mode(11))}},
        {"Brush", "F5", "Brush step 1", {OnRelease(F5, none, [] { Form2::slider1.Value = 1; })}},
        {"Brush", "F6, F7, F8", "Opacity 255, 128, 64",
         {OnRelease(F6, none, [] { Form2::HScroll4.Value = 255; }),
          OnRelease(F7, none, [] { Form2::HScroll4.Value = 128; }),
          OnRelease(F8, none, [] { Form2::HScroll4.Value = 64; })}},
        {"Brush", ".", "Single-pixel brush", {OnPress('.', Menus::Default_Single_Click)}},
        {"Brush", "o", "Brush options", {OnPress('o', ShowBrushOptions)}},
        {"Brush", "i", "Spraxelics control: particles and bristles", {OnPress('i', ShowSpraxel)}},
        {"Brush", "g", "Airbrush", {OnPress('g', [] { Show(Airbrush_Options::form); })}},
        {"Custom brush", "B", "Back to the custom brush", {OnPress('B', CustomBrushBack)}},
        {"Custom brush", "F1, F2", "Colour or matte mode",
         {OnRelease(F1, none, Cust_Mode_Color_Click), OnRelease(F2, none, Cust_Mode_Matte_Click)}},
        {"Custom brush", "h", "Brush key", {OnPress('h', [] { Show(BrushKey::form); })}},
        {"Custom brush", "x, y", "Flip horizontally, vertically",
         {OnPress('x', Cust_flipx_Click), OnPress('y', Cust_Flipy_Click)}},
        {"Custom brush", "z, Z", "Rotate a quarter turn, by any angle",
         {OnPress('z', Cust_Rotate_Click), OnPress('Z', Cust_RotateArbitrary_Click)}},
        {"Colour", "p", "Fill and gradient panel", {OnPress('p', win_Gradient_Click)}},
        {"Colour", "], [", "Next, previous colour of the gradient",
         {OnPress(']', NextGradientColour), OnPress('[', PreviousGradientColour)}},
        {"Animation", "right, left", "Next, previous frame",
         {OnDown(Right, none, Anim_Next_Click), OnDown(Left, none, Anim_Previous_Click)}},
        {"Animation", "space", "Stop playing", {OnPress(' ', Anim_Stop_Click)}},
        {"Plug-ins", "l", "Execute plugin panel", {OnPress('l', [] { ShowPluginPanel(0); })}},
        {"Help", "?", "Help pointer on/off", {OnPress('?', Form1::ToggleHelpPointer)}},
    };
}
}  // namespace

const std::vector<KeyLine>& KeyTable() {
    static const std::vector<KeyLine> table = MakeTable();
    return table;
}

Rows KeyRows() {
    Rows rows;
    for (const KeyLine& line : KeyTable()) rows.keys.insert(rows.keys.end(), line.rows.begin(), line.rows.end());
    return rows;
}

std::string KeyReference() {
    std::string text =
        "Keyboard shortcut reference\n\nKeys act the same wherever the focus is, except in text fields.\n"
        "Keys are case sensitive: \"j\" and \"J\" differ.\n";
    std::string group;
    for (const KeyLine& line : KeyTable()) {
        if (line.group != group) text += "\n" + (group = line.group) + "\n";
        std::string keys = line.keys;
        keys.resize(std::max<size_t>(keys.size() + 2, 18), ' ');
        text += "  " + keys + line.what + "\n";
    }
    return text;
}
