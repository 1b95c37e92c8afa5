// The canvas window: its load, the marquee timer and the keys every panel forwards.
#include "core/Form1.h"

#include "core/AppState.h"
#include "core/Buffers.h"
#include "core/Display.h"
#include "core/Undo.h"

namespace Form1 {
Form form("Form1", "Canvas");
Timer Timer1(form, "Timer1", 100, [] { Timer1_Timer(); });
Prop<uint32_t>& BackColor = form.BackColor;
std::function<void()> ShowGradientKey, BufferFillKey, NextGradientColourKey, PrevGradientColourKey;

namespace {
struct Wiring {
    Wiring() {
        form.Load = Form_Load;
        form.Resize = Form_Resize;
        form.KeyPress = Form_KeyPress;
        form.KeyDown = Form_KeyDown;
        form.KeyUp = Form_KeyUp;
    }
} wiring;
}  // namespace

void Form_Load() {
    App.ZoomPercent = 100;
    App.LastStrokeX = App.LastStrokeY = -1.0f;
}

void Form_Resize() { ResizeWindow(); }

void Timer1_Timer() { DisplayMarquee(); }

void ViewportChanged() {
    if (!DocumentExists()) return;
    DemensionRefreshBuff();
    RedisplayWindow();
}

void Form_KeyDown(int16_t& keyCode, int16_t /*shift*/) { App.KeyDownCode = keyCode; }

void Form_KeyUp(int16_t& /*keyCode*/, int16_t /*shift*/) { App.KeyDownCode = 0; }

namespace {
void RunKey(const std::function<void()>& command) {
    if (command) command();
}
}  // namespace

void Form_KeyPress(int16_t& keyAscii) {
    // Keys are compared one after another; each fires once.
    const int16_t k = keyAscii;
    if (k == 'u') RepaintUndo();
    if (k == 'U' || k == 'a') Redo();
    if (k == 26) RepaintUndo();
    if (k == 1) Redo();
    if (k == 'p') RunKey(ShowGradientKey);
    if (k == 'q') RunKey(BufferFillKey);
    if (k == ']') RunKey(NextGradientColourKey);
    if (k == '[') RunKey(PrevGradientColourKey);
    if (k == 'J') CopyToSwap_Click();
    if (k == 'j') swapbuffer_Click();
    if (k == 'S') SwapToAlpha_Click();
    if (k == '\\') AlphaEnable_Click();
    if (k == '|') InvertAlpha_Click();
    if (k == 'W') AlhpaToSwap_Click();
    if (k == 'K') Clear_Click();
}
}  // namespace Form1
