// Threshold, power curve and posterize.
#include "filter/AdjustTone.h"

#include <algorithm>

#include "core/display/Display.h"
#include "core/document/Buffers.h"
#include "core/frame/MDIForm1.h"
#include "core/framework/AppState.h"
#include "core/framework/Host.h"
#include "core/framework/PanelLook.h"
#include "core/framework/vb.h"
#include "filter/FilterFrame.h"
#include "native/kwfilter.h"

namespace {
void Wire(Form& form, CommandButton& ok, CommandButton& cancel) {
    ok.Group = cancel.Group = 1;
    form.Load = [&form] { PrefsCallBack(form); };
}

void OpenPanel(Form& form, void (*run)()) {
    if (!DocumentExists()) return;
    filterSetup();
    Show(form, false, &MDIForm1::form);
    run();
}
}  // namespace

namespace BinaryEnhance {
namespace {
void Run() { Threashold(HScroll1.Value, Check1.Value); }
}  // namespace
Form form("BinaryEnhance", "Threshold");
Slider HScroll1(form, "HScroll1", 0, 255, 128, Run);
CheckBox Check1(form, "Check1", "Invert", 0, Run);
CommandButton Command1(form, "Command1", "Ok", [] { Hide(form); }, ButtonRole::Default);
CommandButton Command2(form, "Command2", "Cancel", [] { PreviewCancel(form); }, ButtonRole::Cancel);
namespace {
struct Wiring {
    Wiring() {
        HScroll1.Caption.setQuietly("Level");
        Wire(form, Command1, Command2);
    }
} wiring;
}  // namespace
}  // namespace BinaryEnhance

void Threashold(int level, int invert) {
    // One row and column further than the picture: the planes have room for it.
    const int ubx = std::min({BufR.ubX(), BufG.ubX(), BufB.ubX(), UndoR.ubX(), UndoG.ubX(), UndoB.ubX(), BufferWidth()});
    const int uby = std::min({BufR.ubY(), BufG.ubY(), BufB.ubY(), UndoR.ubY(), UndoG.ubY(), UndoB.ubY(), BufferHeight()});
    const uint8_t above = invert ? 0 : 255, below = invert ? 255 : 0;
    for (int y = 0; y <= uby; ++y)
        for (int x = 0; x <= ubx; ++x) {
            const int avg = (UndoR(x, y) + UndoG(x, y) + UndoB(x, y)) / 3;
            const uint8_t v = avg > level ? above : below;
            BufR(x, y) = BufG(x, y) = BufB(x, y) = v;
        }
    RedisplayWindow();
}

void Adj_Binary_Controst_Click() {
    OpenPanel(BinaryEnhance::form, [] { Threashold(BinaryEnhance::HScroll1.Value, BinaryEnhance::Check1.Value); });
}

namespace PowerCurve {
namespace {
void Run() { PowerC(Hscroll1.Value / 100.0f); }
}  // namespace
Form form("PowerCurve", "Power curve");
Slider Hscroll1(form, "Hscroll1", 1, 99, 85, Run);
CommandButton Command1(form, "Command1", "Ok", [] { Hide(form); }, ButtonRole::Default);
CommandButton Command2(form, "Command2", "Cancel", [] { PreviewCancel(form); }, ButtonRole::Cancel);
namespace {
struct Wiring {
    Wiring() {
        Hscroll1.Caption.setQuietly("Curve");
        Wire(form, Command1, Command2);
    }
} wiring;
}  // namespace
}  // namespace PowerCurve

void PowerC(float f) {
    const FilterArea s = FilterSize();
    if (s.empty() || f <= 0) return;
    Hourglass busy;
    const float bias = 1.0f / f - 2.0f;
    for (int y = 0; y < s.h; ++y)
        for (int x = 0; x < s.w; ++x) {
            const float r = UndoR(x, y) / 255.0f, g = UndoG(x, y) / 255.0f, b = UndoB(x, y) / 255.0f;
            const float L = g * 0.587f + r * 0.299f + b * 0.114f;
            const float t = L / (bias * (1.0f - L) + 1.0f);
            const float w = (1.0f - t) * L;
            BufR(x, y) = vb::CByte(std::clamp((r * t + w) * 255.0f, 0.0f, 255.0f));
            BufG(x, y) = vb::CByte(std::clamp((g * t + w) * 255.0f, 0.0f, 255.0f));
            BufB(x, y) = vb::CByte(std::clamp((b * t + w) * 255.0f, 0.0f, 255.0f));
        }
    OverlayAfterPass();
    RedisplayWindow();
}

void SatXVal_Click() { OpenPanel(PowerCurve::form, PowerCurve::Run); }

namespace Poster {
namespace {
void Run() { posterfy(HScroll1.Value); }
}  // namespace
Form form("Poster", "Posterize");
Slider HScroll1(form, "HScroll1", 1, 128, 1, Run);
CommandButton Command1(form, "Command1", "Ok", [] { Hide(form); }, ButtonRole::Default);
CommandButton Command2(form, "Command2", "Cancel", [] { PreviewCancel(form); }, ButtonRole::Cancel);
namespace {
struct Wiring {
    Wiring() {
        HScroll1.Caption.setQuietly("Step");
        Wire(form, Command1, Command2);
    }
} wiring;
}  // namespace
}  // namespace Poster

void posterfy(int step) {
    const FilterArea s = FilterSize();
    if (step <= 0 || s.empty()) return;
    if (App.AlphaOff == 0) {
        GetAlphaMinMax();
        const int x1 = std::min<int>(AlphaRight, s.w - 1), y1 = std::min<int>(AlphaBottom, s.h - 1);
        for (int y = AlphaTop; y <= y1; ++y)
            for (int x = AlphaLeft; x <= x1; ++x) {
                BufR(x, y) = static_cast<uint8_t>((UndoR(x, y) / step) * step);
                BufG(x, y) = static_cast<uint8_t>((UndoG(x, y) / step) * step);
                BufB(x, y) = static_cast<uint8_t>((UndoB(x, y) / step) * step);
            }
        OverlayAfterPass();
    } else {
        kwfilter::FastPosterize(BufR.data(), BufG.data(), BufB.data(), BufA.data(), s.w, s.h, UndoR.data(),
                                UndoG.data(), UndoB.data(), step, App.AlphaOff);
    }
    RedisplayWindow();
}

void ColorPosterize_Click() { OpenPanel(Poster::form, Poster::Run); }
