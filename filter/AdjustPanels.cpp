// Colour balance, saturation and hue: previews rebuilt from the undo planes.
#include "filter/AdjustPanels.h"

#include <algorithm>
#include <cmath>
#include <new>

#include "core/display/Display.h"
#include "core/document/Buffers.h"
#include "core/frame/MDIForm1.h"
#include "core/framework/AppState.h"
#include "core/framework/Host.h"
#include "core/framework/PanelLook.h"
#include "core/framework/vb.h"
#include "filter/FilterFrame.h"
#include "native/ColourSpace.h"
#include "native/kwfilter.h"

namespace {
void Buttons(CommandButton& ok, CommandButton& cancel, CommandButton* reset, Form& form) {
    ok.Group = cancel.Group = 1;
    if (reset) reset->Group = 1;
    form.Load = [&form] { PrefsCallBack(form); };
}

void ChannelBalance(Plane& dest, const Plane& undo, float f) {
    const FilterArea s = FilterSize();
    if (s.empty()) return;
    kwfilter::ChannelValue(dest.data(), undo.data(), BufA.data(), App.AlphaOff, s.w, s.h, f);
    RedisplayWindow();
}
}  // namespace

// ---- colour balance
namespace AdjustColor {
Form form("AdjustColor", "Adjust color");
Slider HScroll6(form, "HScroll6", 0, 200, 100, [] { ColorRedBalance(HScroll6.Value / 100.0f); });
Slider Hscroll5(form, "Hscroll5", 0, 200, 100, [] { ColorGreenBalance(Hscroll5.Value / 100.0f); });
Slider Hscroll4(form, "Hscroll4", 0, 200, 100, [] { ColorBlueBalance(Hscroll4.Value / 100.0f); });
CommandButton Command1(form, "Command1", "Ok", [] { Hide(form); }, ButtonRole::Default);
CommandButton Command2(form, "Command2", "Cancel", [] { PreviewCancel(form); }, ButtonRole::Cancel);
CommandButton Command3(form, "Command3", "Reset", [] {
    HScroll6.Value = 100;
    Hscroll5.Value = 100;
    Hscroll4.Value = 100;
});
namespace {
struct Wiring {
    Wiring() {
        HScroll6.Caption.setQuietly("Red");
        Hscroll5.Caption.setQuietly("Green");
        Hscroll4.Caption.setQuietly("Blue");
        Buttons(Command1, Command2, &Command3, form);
        form.Activate = [] {
            ColorBalance(HScroll6.Value / 100.0f, Hscroll5.Value / 100.0f, Hscroll4.Value / 100.0f);
        };
    }
} wiring;
}  // namespace
}  // namespace AdjustColor

void ColorRedBalance(float f) { ChannelBalance(BufR, UndoR, f); }
void ColorGreenBalance(float f) { ChannelBalance(BufG, UndoG, f); }
void ColorBlueBalance(float f) { ChannelBalance(BufB, UndoB, f); }

void ColorBalance(float r, float g, float b) {
    const FilterArea s = FilterSize();
    if (s.empty()) return;
    int x0 = 0, x1 = s.w - 1, y0 = 0, y1 = s.h - 1;
    if (App.AlphaOff == 0) {
        GetAlphaMinMax();
        x0 = AlphaLeft, x1 = std::min<int>(AlphaRight, s.w - 1), y0 = AlphaTop, y1 = std::min<int>(AlphaBottom, s.h - 1);
    }
    const float f[3] = {r, g, b};
    Plane* dest[3] = {&BufR, &BufG, &BufB};
    const Plane* undo[3] = {&UndoR, &UndoG, &UndoB};
    for (int y = y0; y <= y1; ++y)
        for (int x = x0; x <= x1; ++x) {
            const int a = BufA(x, y) | App.AlphaOff;
            for (int c = 0; c < 3; ++c) {
                const int u = (*undo[c])(x, y);
                const int v = std::min<int>(255, vb::CInt(u * f[c]));
                (*dest[c])(x, y) = static_cast<uint8_t>((u * (255 - a) + v * a) / 255);
            }
        }
    RedisplayWindow();
}

void ColorBalance2_Click() {
    if (!DocumentExists()) return;
    filterSetup();
    Show(AdjustColor::form, false, &MDIForm1::form);
    if (AdjustColor::form.Activate) AdjustColor::form.Activate();
}

// ---- saturation
namespace AddjustSat {
Form form("AddjustSat", "Adjust saturation");
Slider HScroll1(form, "HScroll1", 0, 255, 255, [] { AddjustSaturation(static_cast<float>(HScroll1.Value)); });
CommandButton Command1(form, "Command1", "Ok", [] { Hide(form); }, ButtonRole::Default);
CommandButton Command2(form, "Command2", "Cancel", [] { PreviewCancel(form); }, ButtonRole::Cancel);
namespace {
struct Wiring {
    Wiring() {
        HScroll1.Caption.setQuietly("Saturation");
        Buttons(Command1, Command2, nullptr, form);
    }
} wiring;
}  // namespace
}  // namespace AddjustSat

void AddjustSaturation(float sf) {
    const int s = vb::CLng(sf);
    const FilterArea area = FilterSize();
    if (s <= 0 || area.empty()) return;
    int x0 = 0, x1 = area.w - 1, y0 = 0, y1 = area.h - 1;
    const bool masked = App.AlphaOff == 0;
    if (masked) {
        GetAlphaMinMax();
        x0 = AlphaLeft, x1 = std::min<int>(AlphaRight, area.w - 1), y0 = AlphaTop;
        y1 = std::min<int>(AlphaBottom, area.h - 1);
    }
    for (int y = y0; y <= y1; ++y)
        for (int x = x0; x <= x1; ++x) {
            const int u[3] = {UndoR(x, y), UndoG(x, y), UndoB(x, y)};
            const int grey = (u[0] + u[1] + u[2]) / 3;
            const int a = masked ? BufA(x, y) : 255;
            int out[3];
            for (int c = 0; c < 3; ++c) {
                const int n = (u[c] * s + grey * (255 - s)) / 255;
                out[c] = ((255 - a) * u[c] + a * n) / 255;
            }
            BufR(x, y) = static_cast<uint8_t>(out[0]);
            BufG(x, y) = static_cast<uint8_t>(out[1]);
            BufB(x, y) = static_cast<uint8_t>(out[2]);
        }
    QuickRedisplay();
}

void Adjust_Sat_Click() {
    if (!DocumentExists()) return;
    filterSetup();
    Show(AddjustSat::form, false, &MDIForm1::form);
    AddjustSaturation(static_cast<float>(AddjustSat::HScroll1.Value));
}

// ---- hue, saturation, value
Grid<float> HuePlane, SatPlane, ValPlane;
uint8_t HueResetting = 0;

namespace AdjustHue {
namespace {
void Recompute() {
    int hue = Hscroll1.Value - 180;
    if (hue < 0) hue += 360;
    AlterHue(hue, Hscroll2.Value, Hscroll3.Value);
}
void GiveBack() {
    HuePlane.alloc(1, 1);
    SatPlane.alloc(1, 1);
    ValPlane.alloc(1, 1);
}
}  // namespace
Form form("AdjustHue", "Adjust hue, saturation, value");
Slider Hscroll1(form, "Hscroll1", 1, 360, 180, Recompute);
Slider Hscroll2(form, "Hscroll2", 1, 200, 100, Recompute);
Slider Hscroll3(form, "Hscroll3", 1, 512, 255, Recompute);
CommandButton Command1(form, "Command1", "Ok", [] {
    GiveBack();
    Hide(form);
}, ButtonRole::Default);
CommandButton Command2(form, "Command2", "Cancel", [] {
    GiveBack();
    PreviewCancel(form);
}, ButtonRole::Cancel);
CommandButton Command3(form, "Command3", "Reset", [] {
    HueResetting = 255;
    Hscroll1.Value = 180;
    Hscroll2.Value = 100;
    HueResetting = 0;
    if (Hscroll3.Value == 255) Recompute();
    else Hscroll3.Value = 255;
});
namespace {
struct Wiring {
    Wiring() {
        Hscroll1.Caption.setQuietly("Hue");
        Hscroll2.Caption.setQuietly("Saturation");
        Hscroll3.Caption.setQuietly("Value");
        Buttons(Command1, Command2, &Command3, form);
    }
} wiring;
}  // namespace
}  // namespace AdjustHue

void InitHSV() {
    const FilterArea s = FilterSize();
    if (s.empty()) return;
    Grid<float> h, sat, v;
    try {
        h = Grid<float>::Make(s.w - 1, s.h - 1);
        sat = Grid<float>::Make(s.w - 1, s.h - 1);
        v = Grid<float>::Make(s.w - 1, s.h - 1);
    } catch (const std::bad_alloc&) {
        return;  // the planes stay as they were and the loop is skipped
    }
    for (int y = 0; y < s.h; ++y)
        for (int x = 0; x < s.w; ++x) {
            float hh, ss, vv;
            kwfilter::RGB_To_HSV(UndoR(x, y) / 255.0f, UndoG(x, y) / 255.0f, UndoB(x, y) / 255.0f, hh, ss, vv);
            h(x, y) = static_cast<float>(vb::CLng(hh) % 360);
            sat(x, y) = ss;
            v(x, y) = vv;
        }
    HuePlane = std::move(h), SatPlane = std::move(sat), ValPlane = std::move(v);
}

namespace {
// The hue planes cover the picture: a new document while the panel was open
// leaves them at the old size, and then nothing is recomputed.
bool HuePlanesFit(const FilterArea& s) {
    return HuePlane.ubX() == s.w - 1 && HuePlane.ubY() == s.h - 1 && SatPlane.ubX() == s.w - 1 &&
           ValPlane.ubY() == s.h - 1;
}

void HueBox(int shift, float satF, float valF, const FilterArea& s) {
    GetAlphaMinMax();
    const int x1 = std::min<int>(AlphaRight, s.w - 1), y1 = std::min<int>(AlphaBottom, s.h - 1);
    for (int y = AlphaTop; y <= y1; ++y)
        for (int x = AlphaLeft; x <= x1; ++x) {
            float h = static_cast<float>(vb::CLng(HuePlane(x, y) + static_cast<double>(shift)) % 360);
            if (SatPlane(x, y) == 0) h = -1.0f;
            float r, g, b;
            kwfilter::HSV_To_RGB(r, g, b, h, std::clamp(SatPlane(x, y) * satF, 0.0f, 1.0f),
                                 std::clamp(ValPlane(x, y) * valF, 0.0f, 1.0f));
            BufR(x, y) = vb::CByte(r * 255.0);
            BufG(x, y) = vb::CByte(g * 255.0);
            BufB(x, y) = vb::CByte(b * 255.0);
        }
    OverlayAfterPass();
}
}  // namespace

void AlterHue(int hue, int sat, int val) {
    if (HueResetting != 0) return;
    const FilterArea s = FilterSize();
    if (s.empty() || !HuePlanesFit(s)) return;
    const int shift = hue % 360;
    const float satF = sat / 100.0f, valF = val / 255.0f;
    if (App.AlphaOff != 0)
        kwfilter::FastHSV(BufR.data(), BufG.data(), BufB.data(), BufA.data(), s.w, s.h, HuePlane.data(),
                          SatPlane.data(), ValPlane.data(), shift, satF, valF, App.AlphaOff);
    else
        HueBox(shift, satF, valF, s);
    RedisplayWindow();
}

void Addjust_Hue_Click() {
    if (!DocumentExists()) return;
    filterSetup();
    InitHSV();
    Show(AdjustHue::form, false, &MDIForm1::form);
    int hue = AdjustHue::Hscroll1.Value - 180;
    if (hue < 0) hue += 360;
    AlterHue(hue, AdjustHue::Hscroll2.Value, AdjustHue::Hscroll3.Value);
}
