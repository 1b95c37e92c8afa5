// Colour and value noise. With alpha on, the box of the selection is walked and
// each selected pixel gets noise scaled by its alpha, drawn afresh from the
// undo picture; an unselected pixel keeps what the main plane holds. With alpha
// off the whole canvas gets the noise at full strength, a row at a time.
#include "render/NoiseFilters.h"

#include <algorithm>
#include <string>
#include <vector>

#include "core/display/Display.h"
#include "core/document/Buffers.h"
#include "core/document/Undo.h"
#include "core/frame/MDIForm1.h"
#include "core/framework/AppState.h"
#include "core/framework/Host.h"
#include "core/framework/PanelLook.h"
#include "core/framework/vb.h"
#include "filter/FilterFrame.h"
#include "native/RenderKernels.h"

namespace {
uint8_t Held(double v) { return static_cast<uint8_t>(std::clamp<int32_t>(vb::CLng(v), 0, 255)); }

// The whole canvas at full strength: draws per pixel, in pixel order.
void WholeCanvas(int amount, int drawsPerPixel,
                 void (*row)(uint8_t*, uint8_t*, uint8_t*, const uint8_t*, const uint8_t*, const uint8_t*,
                             const double*, int, int)) {
    const FilterArea s = FilterSize();
    std::vector<double> draws(static_cast<size_t>(s.w) * drawsPerPixel);
    for (int y = 0; y < s.h; ++y) {
        vb::RndRow(draws.data(), draws.size());
        row(BufR.row(y), BufG.row(y), BufB.row(y), UndoR.row(y), UndoG.row(y), UndoB.row(y), draws.data(), s.w,
            amount);
    }
}
}  // namespace

void RenderGrain(int amount) {
    const FilterArea s = FilterSize();
    if (s.empty()) return;
    amount *= 2;
    if (App.AlphaOff != 0) return WholeCanvas(amount, 3, kwfilter::ColorNoiseRow);
    GetAlphaMinMax();
    const int x1 = std::min<int>(AlphaRight, s.w), y1 = std::min<int>(AlphaBottom, s.h);
    for (int y = AlphaTop; y < y1; ++y)
        for (int x = AlphaLeft; x < x1; ++x) {
            const int a = BufA(x, y);
            if (a == 0) continue;
            const double strength = (amount * a) / 255.0;
            BufR(x, y) = Held(UndoR(x, y) + (vb::Rnd() - 0.5) * strength);
            BufG(x, y) = Held(UndoG(x, y) + (vb::Rnd() - 0.5) * strength);
            BufB(x, y) = Held(UndoB(x, y) + (vb::Rnd() - 0.5) * strength);
        }
}

void RenderValueNoise(int amount) {
    const FilterArea s = FilterSize();
    if (s.empty()) return;
    amount *= 2;
    if (App.AlphaOff != 0) return WholeCanvas(amount, 1, kwfilter::ValueNoiseRow);
    GetAlphaMinMax();
    const int x1 = std::min<int>(AlphaRight, s.w - 1), y1 = std::min<int>(AlphaBottom, s.h - 1);
    for (int y = AlphaTop; y <= y1; ++y)
        for (int x = AlphaLeft; x <= x1; ++x) {
            const int a = BufA(x, y);
            if (a == 0) continue;
            const int32_t k = vb::CLng((vb::Rnd() - 0.5) * amount * a) / 255;  // all three move together
            BufR(x, y) = static_cast<uint8_t>(std::clamp(UndoR(x, y) + k, 0, 255));
            BufG(x, y) = static_cast<uint8_t>(std::clamp(UndoG(x, y) + k, 0, 255));
            BufB(x, y) = static_cast<uint8_t>(std::clamp(UndoB(x, y) + k, 0, 255));
        }
}

namespace {
// A slider move: the label follows, the noise is drawn again, a quick redisplay.
void NoiseChange(Slider& slider, Label& label, void (*render)(int)) {
    label.Caption = std::to_string(slider.Value.get());
    Hourglass busy;
    render(slider.Value);
    QuickRedisplay();
}

void NoiseStart(Form& form, Slider& slider, Label& label, void (*render)(int)) {
    if (!DocumentExists()) return;
    SaveUndo();
    Show(form, false, &MDIForm1::form);
    label.Caption = std::to_string(slider.Value.get());
    {
        Hourglass busy;
        render(slider.Value);
    }
    RedisplayWindow();
}

void Wire(Form& form, Slider& slider, CommandButton& ok, CommandButton& cancel) {
    slider.Caption.setQuietly("Amount");
    ok.Group = cancel.Group = 1;
    form.Load = [&form] { PrefsCallBack(form); };
}
}  // namespace

namespace AdjustColorNoise {
Form form("AdjustColorNoise", "Color noise");
Slider Hscroll1(form, "Hscroll1", 0, 255, 11, [] { NoiseChange(Hscroll1, Label1, RenderGrain); });
Label Label1(form, "Label1", "11");
CommandButton Command1(form, "Command1", "Ok", [] { Hide(form); }, ButtonRole::Default);
CommandButton Command2(form, "Command2", "Cancel", [] { PreviewCancel(form); }, ButtonRole::Cancel);
namespace {
struct Wiring {
    Wiring() { Wire(form, Hscroll1, Command1, Command2); }
} wiring;
}  // namespace
}  // namespace AdjustColorNoise

namespace AdjustValueNoise {
Form form("AdjustValueNoise", "Value noise");
Slider Hscroll1(form, "Hscroll1", 0, 255, 11, [] { NoiseChange(Hscroll1, Label1, RenderValueNoise); });
Label Label1(form, "Label1", "11");
CommandButton Command1(form, "Command1", "Ok", [] { Hide(form); }, ButtonRole::Default);
CommandButton Command2(form, "Command2", "Cancel", [] { PreviewCancel(form); }, ButtonRole::Cancel);
namespace {
struct Wiring {
    Wiring() { Wire(form, Hscroll1, Command1, Command2); }
} wiring;
}  // namespace
}  // namespace AdjustValueNoise

void AddNoise_Click() {
    using namespace AdjustColorNoise;
    NoiseStart(form, Hscroll1, Label1, RenderGrain);
}

void AddValueNoise_Click() {
    using namespace AdjustValueNoise;
    NoiseStart(form, Hscroll1, Label1, RenderValueNoise);
}
