// The Gaussian, simple and light diffusion blurs and the alpha blur.
#include "filter/Blurs.h"

#include <algorithm>
#include <cmath>

#include "core/display/Display.h"
#include "core/document/Buffers.h"
#include "core/document/Undo.h"
#include "core/frame/MDIForm1.h"
#include "core/framework/AppState.h"
#include "core/framework/Boxes.h"
#include "core/framework/Host.h"
#include "core/framework/PanelLook.h"
#include "core/framework/vb.h"
#include "filter/Combine.h"
#include "filter/FadeLast.h"
#include "filter/FilterFrame.h"
#include "native/kwfilter.h"

int16_t BlurRadius = 2;
std::vector<float> BlurWeights;

void BuildFastGaussBuff(int r) {
    const int half = std::max(0, r / 2);
    BlurWeights.assign(static_cast<size_t>(half) + 3, 0.0f);
    if (r <= 0) {
        BlurWeights[0] = 1.0f;
        return;
    }
    for (int i = 0; i <= half; ++i)
        BlurWeights[i] = static_cast<float>((std::cos((static_cast<double>(i) / r) * 360 * 0.0174) + 1) / 2);
}

namespace {
// Scratch planes of the two passes, kept between slider moves of one size.
Plane TempR, TempG, TempB;

// A drag of a slider whose preview is slow: the thumb's steps only arm the
// panel's timer, and the preview runs when the program is idle again, with the
// slider where it then stands. A value written outright runs at once.
bool Dragging = false;
void DeferWhileDragging(Timer& timer, void (*preview)()) {
    if (!Dragging) return preview();
    Dragging = false;
    timer.Tick = [&timer, preview] {
        timer.TimerEnabled = false;
        preview();
    };
    timer.TimerEnabled = true;
}

void SizeTemp(Plane& t, const Plane& like) {
    if (t.ubX() != like.ubX() || t.ubY() != like.ubY()) t = Plane::Make(like.ubX(), like.ubY());
}
}  // namespace

namespace Form1 {
void FastGaussian(int half) {
    const FilterArea s = FilterSize();
    if (s.empty() || half < 0) return;
    if (BlurWeights.size() < static_cast<size_t>(half) + 1) BuildFastGaussBuff(2 * half);
    SizeTemp(TempR, BufR);
    SizeTemp(TempG, BufG);
    SizeTemp(TempB, BufB);
    // Pass 1 always reads the undo planes, so repeated moves never accumulate.
    kwfilter::xFastGaussPass1(TempR.data(), TempG.data(), TempB.data(), UndoR.data(), UndoG.data(), UndoB.data(), s.w,
                              s.h, BlurWeights.data(), half);
    kwfilter::xFastGaussPass2(BufR.data(), BufG.data(), BufB.data(), TempR.data(), TempG.data(), TempB.data(), s.w, s.h,
                              BlurWeights.data(), half);
    OverlayAfterPass();
}

void FastGaussianAlpha(int half) {
    const FilterArea s = FilterSize();
    if (s.empty() || half < 0) return;
    if (BlurWeights.size() < static_cast<size_t>(half) + 1) BuildFastGaussBuff(2 * half);
    Plane temp;
    temp.copyFrom(BufA);
    kwfilter::xFastGauss8Pass1(BufA.data(), temp.data(), s.w, s.h, BlurWeights.data(), half);
    temp.copyFrom(BufA);
    kwfilter::xFastGauss8Pass2(BufA.data(), temp.data(), s.w, s.h, BlurWeights.data(), half);
}
}  // namespace Form1

// ---- the Gaussian blur panel
namespace FastGaussian {
Form form("FastGaussian", "Gaussian blur");
Slider HScroll1(form, "HScroll1", 2, 64, 2);
PictureBox Picture1(form, "Picture1", 64, 34);
CommandButton Command1(form, "Command1", "Ok", [] { Hide(form); }, ButtonRole::Default);
CommandButton Command2(form, "Command2", "Cancel", [] { PreviewCancel(form); }, ButtonRole::Cancel);
Timer Timer1(form, "Timer1", 1);
namespace {
void HScroll1_Change() {
    Hourglass busy(&form);
    Picture1_Paint();
    Form1::FastGaussian(BlurRadius / 2);
    RedisplayWindow();
}
struct Wiring {
    Wiring() {
        HScroll1.Caption.setQuietly("Radius");
        HScroll1.Change = [] { DeferWhileDragging(Timer1, HScroll1_Change); };
        HScroll1.Scroll = [] { Dragging = true; };
        Picture1.Paint = Picture1_Paint;
        Command1.Group = Command2.Group = 1;
        form.Load = [] { PrefsCallBack(form); };
    }
} wiring;
}  // namespace

void Picture1_Paint() {
    BlurRadius = static_cast<int16_t>(2 * (HScroll1.Value / 2));
    BuildFastGaussBuff(BlurRadius);
    // The window as a curve mirrored about the middle of the picture.
    Picture1.Cls(0xFFFFFF);
    const int half = BlurRadius / 2;
    for (int i = 0; i <= half; ++i) {
        const int y = std::clamp(32 - static_cast<int>(32 * BlurWeights[i]), 0, 33);
        for (int x : {32 + i * 32 / std::max(1, half), 32 - i * 32 / std::max(1, half)})
            Picture1.PSet(std::clamp(x, 0, 63), y, 0x000000);
    }
    Picture1.Refresh();
}
}  // namespace FastGaussian

void FastGaus_Click() {
    if (!DocumentExists()) return;
    filterSetup();
    Show(FastGaussian::form, false, &MDIForm1::form);
    if (FastGaussian::HScroll1.Change) FastGaussian::HScroll1.Change();
}

// ---- the simple blur and its fade
namespace SimpleBlur_Options {
Form form("SimpleBlur_Options", "Simple blur");
Slider HScroll1(form, "HScroll1", 0, 255, 255, [] {
    Hourglass busy;
    FadeLast::FadeLast(255 - HScroll1.Value);  // the default 255 is full strength
});
CommandButton Command1(form, "Command1", "Ok", [] { FadeOk(form); }, ButtonRole::Default);
CommandButton Command2(form, "Command2", "Cancel", [] { FadeCancel(form); }, ButtonRole::Cancel);
namespace {
struct Wiring {
    Wiring() {
        HScroll1.Caption.setQuietly("Strength");
        Command1.Group = Command2.Group = 1;
        form.Load = [] { PrefsCallBack(form); };
    }
} wiring;
}  // namespace
}  // namespace SimpleBlur_Options

void Simpleblur_Click() {
    if (!DocumentExists()) return;
    const FilterArea s = FilterSize();
    if (s.empty()) return;
    filterSetup();
    {
        Hourglass busy;
        const kwfilter::Weights3x3 box{{1, 1, 1, 1, 1, 1, 1, 1, 1}};
        kwfilter::ConvolveAlpha(BufR.data(), BufG.data(), BufB.data(), UndoR.data(), UndoG.data(), UndoB.data(),
                                BufA.data(), App.AlphaOff, s.w, s.h, box, 9, 0);
    }
    filterCloseDown();
    FadeStart(SimpleBlur_Options::form, SimpleBlur_Options::HScroll1);
}

// ---- light diffusion
void Build_LD_Gauss(int radius, int curve, int level) {
    BlurRadius = static_cast<int16_t>(2 * (radius / 2));
    if (BlurRadius <= 0) return;
    const float c = curve / 100.0f, l = level / 100.0f;
    BuildFastGaussBuff(BlurRadius);
    for (int i = 0; i <= BlurRadius / 2; ++i) {
        float& w = BlurWeights[i];
        w = std::clamp(w * w * c + (1 - c) * w, 0.0f, 1.0f);
    }
    for (int i = 0; i <= BlurRadius / 2; ++i) BlurWeights[i] *= l;
}

void Light_Diffusion(int radius) {
    const FilterArea s = FilterSize();
    if (radius <= 0 || BlurRadius <= 0 || s.empty()) return;
    BufR.copyFrom(UndoR);
    BufG.copyFrom(UndoG);
    BufB.copyFrom(UndoB);
    // The swap page lends its planes to the source picture for the two combines.
    Plane keepR, keepG, keepB;
    keepR.swap(SwapR), keepG.swap(SwapG), keepB.swap(SwapB);
    struct GiveBack {
        Plane &r, &g, &b;
        ~GiveBack() { r.swap(SwapR), g.swap(SwapG), b.swap(SwapB); }
    } giveBack{keepR, keepG, keepB};
    SwapR.copyFrom(BufR), SwapG.copyFrom(BufG), SwapB.copyFrom(BufB);
    Form1::FastGaussian(BlurRadius / 2);
    Form1::CombineSub();  // what the blur raised over the source: the glow
    Form1::CombineAdd();  // the glow over the source
}

namespace Adjust_LightDiffusion {
namespace {
void Run() {
    Hourglass busy(&form);
    Build_LD_Gauss(HScroll1.Value, HScroll2.Value, Hscroll3.Value);
    Light_Diffusion(HScroll1.Value);
    RedisplayWindow();
}
}  // namespace
Form form("Adjust_LightDiffusion", "Light diffusion");
Slider HScroll1(form, "HScroll1", 2, 64, 2);
Slider HScroll2(form, "HScroll2", -100, 100, 100);
Slider Hscroll3(form, "Hscroll3", 1, 100, 100);
CommandButton Command1(form, "Command1", "Ok", [] { Hide(form); }, ButtonRole::Default);
CommandButton Command2(form, "Command2", "Cancel", [] { PreviewCancel(form); }, ButtonRole::Cancel);
Timer Timer1(form, "Timer1", 1);
namespace {
struct Wiring {
    Wiring() {
        for (Slider* s : {&HScroll1, &HScroll2, &Hscroll3}) {
            s->Change = [] { DeferWhileDragging(Timer1, Run); };
            s->Scroll = [] { Dragging = true; };
        }
        HScroll1.Caption.setQuietly("Radius");
        HScroll2.Caption.setQuietly("Curve");
        Hscroll3.Caption.setQuietly("Level");
        Command1.Group = Command2.Group = 1;
        form.Load = [] { PrefsCallBack(form); };
    }
} wiring;
}  // namespace
}  // namespace Adjust_LightDiffusion

void BlurLightDifuse_Click() {
    if (!DocumentExists()) return;
    filterSetup();
    Show(Adjust_LightDiffusion::form, false, &MDIForm1::form);
    Adjust_LightDiffusion::Run();
}

// ---- the alpha blur
void Alpha_Blur_Click() {
    if (!DocumentExists()) return;
    SaveUndo();
    const int32_t v = GetGenericValue("Blur alpha", 0, 64, 4);
    if (v <= 1) return;
    BlurRadius = static_cast<int16_t>(2 * (v / 2));
    BuildFastGaussBuff(BlurRadius);
    {
        Hourglass busy;
        Form1::FastGaussianAlpha(BlurRadius / 2);
    }
    if (App.AlphaOff == 0) InitMarquee();
    RedisplayWindow();
}
