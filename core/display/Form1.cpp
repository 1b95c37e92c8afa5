// The canvas window: its load, the marquee timer and the keys every panel forwards.
#include "core/display/Form1.h"

#include "core/framework/Codes.h"
#include "core/framework/AppState.h"
#include "core/document/Buffers.h"
#include "core/display/Display.h"
#include "core/framework/Host.h"
#include "core/framework/Commands.h"

#include <memory>
#include <string>
#include <vector>

namespace Form1 {
const char* const DesignCaption = "Canvas";
Form form("Form1", DesignCaption);
Timer Timer1(form, "Timer1", 100, [] { Timer1_Timer(); });
Shape Brush_bounds(form, "Brush_bounds");
LineControl Line1(form, "Line1");
LineControl Line2(form, "Line2");
LineControl Line3(form, "Line3");
LineControl PaintFill_Band(form, "PaintFill_Band");
Shape Shape1(form, "Shape1");
Shape CloneCross(form, "CloneCross");
TextBox TextTool(form, "TextTool");
Shape TextToolFrame(form, "TextToolFrame");
Prop<uint32_t>& BackColor = form.BackColor;

namespace {
std::vector<std::unique_ptr<LineControl>> MakeCurveSegments() {
    std::vector<std::unique_ptr<LineControl>> lines;
    for (int i = 0; i < CurveSegments; ++i)
        lines.push_back(std::make_unique<LineControl>(form, "CurveSegment" + std::to_string(i)));
    return lines;
}
std::vector<std::unique_ptr<LineControl>> CurveLines = MakeCurveSegments();
}  // namespace

LineControl& CurveSegment(int i) { return *CurveLines.at(static_cast<size_t>(i)); }

namespace {
struct Wiring {
    Wiring() {
        form.Load = Form_Load;
        form.Resize = Form_Resize;
        for (Shape* s : {&Brush_bounds, &Shape1, &CloneCross}) s->Visible.setQuietly(false);
        TextTool.Visible.setQuietly(false);
        PaintFill_Band.Visible.setQuietly(false);
    }
} wiring;
}  // namespace

namespace {
int loads = 0;
}

// A new canvas shows the picture from its top left at 100 %, whatever the last
// document's view was, and the zoom controls say so.
void Form_Load() {
    ++loads;
    App.ZoomPercent = 100;
    ResetView();
}

int Loads() { return loads; }

void ResetView() {
    ResizeWindow();
    host().ScrollCanvasTo(0, 0);
    ZoomFollowed.raise();
}

void Form_Resize() { ResizeWindow(); }

// The window goes with its document, and with it the name of the document's file.
void Document_Closing() {
    if (form.Loaded) Unload(form);
    form.Caption = DesignCaption;
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

// Keys are compared with the installed key rows one after another, in table order.
void Form_KeyUp(int16_t& keyCode, int16_t shift) {
    Commands().keyUp(keyCode, shift);
}

void Form_KeyPress(int16_t& keyAscii) { Commands().keyPress(keyAscii); }

namespace {
bool helpPointer = false;
}  // namespace

void ToggleHelpPointer() {
    helpPointer = !helpPointer;
    Form_GotFocus();
    if (!helpPointer) form.MousePointer = Pointer::Default;
}

void Form_GotFocus() {
    if (helpPointer) form.MousePointer = Pointer::Help;
}

void Form_KeyDown(int16_t& keyCode, int16_t shift) { Commands().keyDown(keyCode, shift); }
}  // namespace Form1
