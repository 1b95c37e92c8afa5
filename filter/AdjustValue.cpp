// Brightness, contrast and gamma: one table over the undo picture, rebuilt on
// every slider move, and the histogram of the result.
#include "filter/AdjustValue.h"

#include <algorithm>
#include <cmath>

#include "core/display/Display.h"
#include "core/document/Buffers.h"
#include "core/frame/MDIForm1.h"
#include "core/framework/AppState.h"
#include "core/framework/Host.h"
#include "core/framework/PanelLook.h"
#include "core/framework/vb.h"
#include "filter/FilterFrame.h"
#include "native/kwfilter.h"

uint8_t ValueLUT[257];
int32_t Spectrograph[768];
int16_t SpectrumZoom = 0;
uint8_t ValueSliding = 0;
int16_t ValueResetting = 0;

namespace AdjustOptions {
Form form("AdjustOptions", "Adjust value");
Slider Hscroll1(form, "Hscroll1", 0, 200, 100);
Slider hscroll2(form, "hscroll2", 0, 200, 100);
Slider Hscroll3(form, "Hscroll3", 0, 200, 100);
PictureBox Picture1(form, "Picture1", 256, 128);
CommandButton Command1(form, "Command1", "Ok", [] { Command1_Click(); }, ButtonRole::Default);
CommandButton Command2(form, "Command2", "Cancel", [] { Command2_Click(); }, ButtonRole::Cancel);
CommandButton Command3(form, "Command3", "Reset", [] { Command3_Click(); });
namespace {
void SliderMoved() {
    ValueSliding = 255;
    callValue();
    ValueSliding = 0;
}

struct Wiring {
    Wiring() {
        Hscroll1.Caption.setQuietly("Brightness");
        hscroll2.Caption.setQuietly("Contrast");
        Hscroll3.Caption.setQuietly("Gamma");
        for (Slider* s : {&Hscroll1, &hscroll2, &Hscroll3}) s->Change = SliderMoved;
        Command1.Group = Command2.Group = Command3.Group = 1;
        Picture1.ToolTipText = "Drag up or down to zoom the histogram.";
        Picture1.MouseMove = [](int button, int, float, float y) {
            if (button != 1) return;
            ValueSliding = 0;
            SpectrumZoom = static_cast<int16_t>(std::clamp(y, 0.0f, 32767.0f));
            callValue();
        };
        Picture1.MouseDown = Picture1.MouseMove;
        form.Load = [] { PrefsCallBack(form); };
    }
} wiring;
}  // namespace

void callValue() {
    float b = static_cast<float>(Hscroll1.Value), c = static_cast<float>(hscroll2.Value - 100),
          g = static_cast<float>(Hscroll3.Value);
    AddjustValue(b, c, g);
}

void Command1_Click() { Hide(form); }
void Command2_Click() { PreviewCancel(form); }

void Command3_Click() {
    ValueResetting = -1;  // 65535 in 16 bits: the table alone, no picture
    hscroll2.Value = 100;
    Hscroll3.Value = 100;
    ValueResetting = 0;
    if (Hscroll1.Value == 100) SliderMoved();
    else Hscroll1.Value = 100;
}

void DrawSpectrograph() {
    int32_t m = 0;
    for (int32_t v : Spectrograph) m = std::max(m, v);
    double scale = m > 0 ? 255.0 / m : 1.0;
    if (SpectrumZoom > 0) scale = scale * SpectrumZoom / 128;
    Picture1.Cls(0x000000);  // black behind, so that the grey lines show on any picture
    for (int i = 0; i < 256; ++i)
        for (int ch = 0; ch < 3; ++ch) {
            const int grey = ch == 0 ? i / 2 : (ch == 1 ? vb::CInt(i / 1.5) : i);
            const int32_t entry = vb::CLng(std::min(1e9, Spectrograph[i + 256 * ch] * scale));
            const int top = std::max(0, 127 - entry / 2);
            for (int y = top; y <= 127; ++y) Picture1.PSet(i, y, vb::RGB(grey, grey, grey));
        }
    Picture1.Refresh();
}
}  // namespace AdjustOptions

void BuildValueTable(float b, float c, float g) {
    const double spread = (100.0 - c) / 100.0 * 127.0, shift = (b - 100.0) * 2.55;
    const int lo = vb::Wrap16(static_cast<int32_t>(std::floor(127.0 - spread - shift)));
    const int hi = vb::Wrap16(static_cast<int32_t>(std::floor(127.0 + spread - shift)));
    const double step = 255.0 / ((hi - lo) + 0.0001);
    const double power = std::pow(g / 100.0, 8.0);
    double acc = 0;
    int last = 0;
    for (int i = lo; i <= hi; ++i) {
        const int idx = std::clamp(i, 0, 256);
        acc = std::clamp(acc + step, 0.0, 255.0);
        double v = acc;
        if (c < 0) v = std::clamp((100.0 - std::fabs(c)) / 100.0 * acc + std::fabs(c) * 1.27, 0.0, 255.0);
        v = 255.0 * std::pow(v / 255.0, power);  // the slider's 100 is neutral
        ValueLUT[idx] = vb::CByte(std::clamp(v, 0.0, 255.0));
        last = vb::CInt(v);
    }
    if (lo >= 0 && lo <= 255)
        for (int i = 0; i <= lo; ++i) ValueLUT[i] = ValueLUT[lo];
    last = std::clamp(last, 0, 255);
    if (hi < 256)
        for (int i = std::max(hi, 1); i <= 255; ++i) ValueLUT[i] = static_cast<uint8_t>(last);  // never entry 0
}

void BuildSpectrograph() {
    const FilterArea s = FilterSize();
    if (s.empty()) return;
    kwfilter::BuildSpect(BufR.data(), BufG.data(), BufB.data(), Spectrograph, s.w, s.h);
}

void AddjustValue(float& b, float& c, float& g) {
    BuildValueTable(b, c, g);
    if (ValueResetting != 0) return;
    const FilterArea s = FilterSize();
    if (s.empty()) return;
    // The main planes become the undo planes through the table, in one pass.
    if (App.AlphaOff != 0)
        kwfilter::SetValueFrom(BufR.data(), BufG.data(), BufB.data(), UndoR.data(), UndoG.data(), UndoB.data(),
                               ValueLUT, s.w, s.h);
    else
        kwfilter::SetValueAlphaFrom(BufR.data(), BufG.data(), BufB.data(), UndoR.data(), UndoG.data(), UndoB.data(),
                                    ValueLUT, BufA.data(), App.AlphaOff, s.w, s.h);
    if (ValueSliding == 255) {
        QuickRedisplay();  // a slider leaves the histogram as the panel last drew it
        return;
    }
    RedisplayWindow();
    BuildSpectrograph();
    AdjustOptions::DrawSpectrograph();
}

void ColorBalance_Click() {
    if (!DocumentExists()) return;
    SpectrumZoom = 0;
    filterSetup();
    Show(AdjustOptions::form, false, &MDIForm1::form);
    AdjustOptions::callValue();
}
