// Colour keying. The raw key of an undo pixel is ((255 - red) * key) \ 255, with
// key its green (or blue): the red term keeps white and skin out of the ground.
// The ramp between "Low clip" and "High pass" turns it into the matte.
#include "filter/Keying.h"

#include <algorithm>

#include "core/display/Display.h"
#include "core/document/Buffers.h"
#include "core/document/Undo.h"
#include "core/frame/MDIForm1.h"
#include "core/framework/AppState.h"
#include "core/framework/Host.h"
#include "core/framework/PanelLook.h"
#include "core/framework/vb.h"
#include "filter/FilterFrame.h"
#include "native/kwfilter.h"

uint8_t KeyBusy = 0;

void BuildKeyLUT(int lo, int hi, uint8_t lut[256]) {
    lo = std::clamp(lo, 0, 255), hi = std::clamp(hi, 0, 255);
    const int span = hi - lo == 0 ? 1 : hi - lo;
    double f = 0.0;
    for (int i = lo; i <= hi; ++i) {
        f = std::min(f, 255.0);
        lut[i] = vb::CByte(f);
        f += 255.0 / span;
    }
    for (int i = 0; i < lo; ++i) lut[i] = 0;
    for (int i = hi; i <= 255; ++i) lut[i] = 255;
}

namespace {
// The controls of one keying panel; green and blue are twins.
struct KeyPanel {
    Form& form;
    Slider &lo, &hi, &art;
    CheckBox& matte;
    PictureBox& bar;
    bool blue;
};

const Plane& KeyPlane(const KeyPanel& p) { return p.blue ? UndoB : UndoG; }

void DrawBar(const KeyPanel& p) {
    uint8_t lut[256];
    BuildKeyLUT(p.lo.Value, p.hi.Value, lut);
    for (int x = 0; x < p.bar.Width && x < 256; ++x) p.bar.VLine(x, vb::RGB(lut[x], lut[x], lut[x]));
    p.bar.Refresh();
}

void Run(const KeyPanel& p) {
    if (KeyBusy != 0) return;
    const FilterArea s = FilterSize();
    if (s.empty()) return;
    Hourglass busy;
    uint8_t lut[256];
    BuildKeyLUT(p.lo.Value, p.hi.Value, lut);
    if (p.matte.Value != 0) {
        // The matte in grey, white for the ground; the swap page is not read.
        kwfilter::KeyMatte(BufR.data(), UndoR.data(), KeyPlane(p).data(), lut, s.w, s.h);
        BufG.copyFrom(BufR);
        BufB.copyFrom(BufR);
    } else {
        auto composite = p.blue ? kwfilter::FastBluescreen : kwfilter::FastGreenscreen;
        composite(BufR.data(), BufG.data(), BufB.data(), BufA.data(), s.w, s.h, UndoR.data(), UndoG.data(),
                  UndoB.data(), SwapR.data(), SwapG.data(), SwapB.data(), lut, p.art.Value, App.AlphaOff);
    }
    OverlayAfterPass();
    QuickRedisplay();
}

// Low clip stays under high pass: the other slider gives way, quietly.
void HighChanged(const KeyPanel& p) {
    if (p.hi.Value <= p.lo.Value) {
        KeyBusy = 1;
        if (p.hi.Value > 1) p.lo.Value = p.hi.Value - 1;
        else p.hi.Value = p.lo.Value + 1;
        KeyBusy = 0;
    }
    DrawBar(p);
    Run(p);
}

void LowChanged(const KeyPanel& p) {
    if (p.lo.Value >= p.hi.Value) {
        KeyBusy = 1;
        if (p.lo.Value < 255) p.hi.Value = p.lo.Value + 1;
        else p.lo.Value = p.hi.Value - 1;
        KeyBusy = 0;
    }
    DrawBar(p);
    Run(p);
}

// The matte, spill rule and all, written into the alpha plane as the selection:
// the foreground is where the matte is 0. The picture becomes the foreground
// with its spill taken out. The panel's own undo step covers it all.
void MatteToAlpha(const KeyPanel& p) {
    const FilterArea s = FilterSize();
    if (s.empty()) return;
    Hourglass busy;
    uint8_t lut[256], inverse[256];
    BuildKeyLUT(p.lo.Value, p.hi.Value, lut);
    for (int i = 0; i < 256; ++i) inverse[i] = static_cast<uint8_t>(255 - lut[i]);
    kwfilter::KeyMatte(BufA.data(), UndoR.data(), KeyPlane(p).data(), inverse, s.w, s.h);
    kwfilter::Despill(BufR.data(), BufG.data(), BufB.data(), UndoR.data(), UndoG.data(), UndoB.data(), s.w, s.h,
                      p.art.Value, p.blue);
    Hide(p.form);
    SetAlphaOn(true);
    InitMarquee();
    RedisplayWindow();
}

void Wire(const KeyPanel& p, CommandButton& ok, CommandButton& cancel, CommandButton& toAlpha, const char* artName) {
    p.lo.Caption.setQuietly("Low clip");
    p.hi.Caption.setQuietly("High pass");
    p.art.Caption.setQuietly(artName);
    ok.Group = cancel.Group = toAlpha.Group = 1;
    toAlpha.ToolTipText = "Put the matte into the alpha plane as the selection.";
    p.bar.Paint = [&p] { DrawBar(p); };
    p.form.Load = [&p] { PrefsCallBack(p.form); };
}

void Open(const KeyPanel& p) {
    if (!DocumentExists()) return;
    SaveUndo();
    Show(p.form, false, &MDIForm1::form);
    DrawBar(p);
    Run(p);
}
}  // namespace

namespace GreenScreen_Control {
namespace {
extern const KeyPanel panel;
}
Form form("GreenScreen_Control", "Green screen");
Slider HScroll5(form, "HScroll5", 1, 255, 64, [] { LowChanged(panel); });
Slider hscroll1(form, "hscroll1", 1, 255, 80, [] { HighChanged(panel); });
Slider hscroll2(form, "hscroll2", 0, 255, 128, [] { Run(panel); });
CheckBox Check1(form, "Check1", "Show matte", 0, [] { Run(panel); });
PictureBox Picture1(form, "Picture1", 256, 12);
CommandButton Command1(form, "Command1", "Ok", [] { Hide(form); }, ButtonRole::Default);
CommandButton Command2(form, "Command2", "Cancel", [] { PreviewCancel(form); }, ButtonRole::Cancel);
CommandButton Command3(form, "Command3", "Matte to alpha", [] { Command3_Click(); });
namespace {
const KeyPanel panel{form, HScroll5, hscroll1, hscroll2, Check1, Picture1, false};
struct Wiring {
    Wiring() { Wire(panel, Command1, Command2, Command3, "Artificial green"); }
} wiring;
}  // namespace
void Command3_Click() { MatteToAlpha(panel); }
}  // namespace GreenScreen_Control

namespace Bluescreen_Control {
namespace {
extern const KeyPanel panel;
}
Form form("Bluescreen_Control", "Blue screen");
Slider HScroll5(form, "HScroll5", 1, 255, 64, [] { LowChanged(panel); });
Slider hscroll1(form, "hscroll1", 1, 255, 80, [] { HighChanged(panel); });
Slider hscroll2(form, "hscroll2", 0, 255, 128, [] { Run(panel); });
CheckBox Check1(form, "Check1", "Show matte", 0, [] { Run(panel); });
PictureBox Picture1(form, "Picture1", 256, 12);
CommandButton Command1(form, "Command1", "Ok", [] { Hide(form); }, ButtonRole::Default);
CommandButton Command2(form, "Command2", "Cancel", [] { PreviewCancel(form); }, ButtonRole::Cancel);
CommandButton Command3(form, "Command3", "Matte to alpha", [] { Command3_Click(); });
namespace {
const KeyPanel panel{form, HScroll5, hscroll1, hscroll2, Check1, Picture1, true};
struct Wiring {
    Wiring() { Wire(panel, Command1, Command2, Command3, "Artificial blue"); }
} wiring;
}  // namespace
void Command3_Click() { MatteToAlpha(panel); }
}  // namespace Bluescreen_Control

void DoGreenscreen() { Run(GreenScreen_Control::panel); }
void DoBluescreen() { Run(Bluescreen_Control::panel); }
void Comp_green_Click() { Open(GreenScreen_Control::panel); }
void comp_blue_Click() { Open(Bluescreen_Control::panel); }
