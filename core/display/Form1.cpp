// The canvas window: its load, the marquee timer and the keys every panel forwards.
#include "core/display/Form1.h"

#include "core/framework/AppState.h"
#include "core/document/Buffers.h"
#include "core/display/Display.h"
#include "core/framework/Host.h"
#include "core/frame/Form2.h"
#include "core/document/Undo.h"
#include "core/frame/AlphaMenu.h"
#include "core/frame/BufferMenu.h"

namespace Form1 {
Form form("Form1", "Canvas");
Timer Timer1(form, "Timer1", 100, [] { Timer1_Timer(); });
Shape Brush_bounds(form, "Brush_bounds");
LineControl Line1(form, "Line1");
LineControl Line2(form, "Line2");
LineControl Line3(form, "Line3");
Shape Shape1(form, "Shape1");
Shape CloneCross(form, "CloneCross");
Prop<uint32_t>& BackColor = form.BackColor;
std::function<void()> ShowGradientKey, BufferFillKey, NextGradientColourKey, PrevGradientColourKey;
std::function<void()> ClearAllGadsKey, BrushOptionsKey;
std::function<void(int dx, int dy)> NudgeAlphaKey;

namespace {
struct Wiring {
    Wiring() {
        form.Load = Form_Load;
        form.Resize = Form_Resize;
        form.KeyPress = Form_KeyPress;
        form.KeyDown = Form_KeyDown;
        form.KeyUp = Form_KeyUp;
        for (Shape* s : {&Brush_bounds, &Shape1, &CloneCross}) s->Visible.setQuietly(false);
    }
} wiring;
}  // namespace

void Form_Load() {
    App.ZoomPercent = 100;
    App.LastStrokeX = App.LastStrokeY = -1.0f;
}

void Form_Resize() { ResizeWindow(); }

void Document_Closing() {
    if (form.Loaded) Unload(form);
}

void Document_Created(uint32_t backColour) {
    form.BackColor = backColour;
    ResizeWindow();
    Show(form);
}

void Timer1_Timer() { DisplayMarquee(); }

void ViewportChanged() {
    if (!DocumentExists()) return;
    DemensionRefreshBuff();
    RedisplayWindow();
}

void Form_KeyDown(int16_t& keyCode, int16_t /*shift*/) { App.KeyDownCode = keyCode; }

namespace {
void RunKey(const std::function<void()>& command) {
    if (command) command();
}

void Nudge(int dx, int dy) {
    if (!NudgeAlphaKey) return;
    NudgeAlphaKey(dx, dy);
    RedisplayWindow();
}

// A tool key: the button's click runs, and the button is down.
void PickTool(OptionButton& tool) {
    if (tool.Value) {
        if (tool.Click) tool.Click();
    } else {
        tool.Value = true;
    }
}
}  // namespace

void Form_KeyUp(int16_t& keyCode, int16_t shift) {
    App.KeyDownCode = 0;
    const int16_t k = keyCode;
    if (shift == 0) {
        if (k == 116) Form2::slider1.Value = 1;
        if (k == 117) Form2::HScroll4.Value = 255;
        if (k == 118) Form2::HScroll4.Value = 128;
        if (k == 119) Form2::HScroll4.Value = 64;
    }
    if (shift == 1) {
        if (k == 38) Nudge(0, -1);
        if (k == 40) Nudge(0, 1);
        if (k == 37) Nudge(-1, 0);
        if (k == 39) Nudge(1, 0);
    }
}

void Form_KeyPress(int16_t& keyAscii) {
    // Keys are compared one after another; each fires once.
    const int16_t k = keyAscii;
    if (k == 27) RunKey(ClearAllGadsKey);
    if (k == 'u') RepaintUndo();
    if (k == 'U' || k == 'a') Redo();
    if (k == 26) RepaintUndo();
    if (k == 1) Redo();
    if (k == 'p') RunKey(ShowGradientKey);
    if (k == 'o') RunKey(BrushOptionsKey);
    if (k == 'q') RunKey(BufferFillKey);
    if (k == ']') RunKey(NextGradientColourKey);
    if (k == '[') RunKey(PrevGradientColourKey);
    if (k == 'J') CopyToSwap_Click();
    if (k == 'j') swapbuffer_Click();
    if (k == 'S') SwapToAlpha_Click();
    if (k == '\\') AlphaEnable_Click();
    if (k == '|') InvertAlpha_Click();
    if (k == 'W') AlhpaToSwap_Click();
    if (k == 'd') PickTool(Form2::Option1);
    if (k == ',') PickTool(Form2::Option6);
    if (k == '=' || k == '+') {
        if (Form2::HScroll5.Value < Form2::HScroll5.Max) Form2::HScroll5.Value = Form2::HScroll5.Value + 1;
    }
    if (k == '_' || k == '-') {
        if (Form2::HScroll5.Value > Form2::HScroll5.Min) Form2::HScroll5.Value = Form2::HScroll5.Value - 1;
    }
    if (k == 'K') Clear_Click();
    // The painting modes by list position: 1..9, then 0, ! and @.
    if (k >= '1' && k <= '9') Form2::Combo4.ListIndex = k - '1';
    if (k == '0') Form2::Combo4.ListIndex = 9;
    if (k == '!') Form2::Combo4.ListIndex = 10;
    if (k == '@') Form2::Combo4.ListIndex = 11;
}
}  // namespace Form1
