// The plasma and the Bumpy toy: a small random field doubled up to the canvas
// with less noise at each pass, or octaves of gradient noise, put into the
// picture directly or through a gradient.
#include "render/Plasma.h"

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <vector>

#include "colour/Gradients.h"
#include "core/document/Buffers.h"
#include "core/frame/MDIForm1.h"
#include "core/framework/AppState.h"
#include "core/framework/Boxes.h"
#include "core/framework/Host.h"
#include "core/framework/PanelLook.h"
#include "core/framework/vb.h"
#include "filter/FilterFrame.h"
#include "native/FilterThreads.h"
#include "native/Noise.h"
#include "native/RenderKernels.h"

Plane DoublePlane;

namespace {
const uint8_t* GradientTables(int slot) { return &GradientData[std::clamp(slot, 0, 7)][0][0]; }

// The doubling schedule can read a little past what the last pass wrote on
// tiny canvases; the field grows (keeping its cells) rather than be read past.
void FitField(int w, int h) {
    if (TempPlane.ubX() >= w && TempPlane.ubY() >= h) return;
    Plane wider = Plane::Make(std::max(w, TempPlane.ubX()), std::max(h, TempPlane.ubY()));
    for (int y = 0; y <= TempPlane.ubY(); ++y)
        std::copy_n(TempPlane.row(y), TempPlane.stride(), wider.row(y));
    TempPlane = std::move(wider);
}

// The field for a W x H canvas after K passes, in TempPlane.
void GrowField(int W, int H, int K) {
    int w = vb::CInt(static_cast<double>(W) / K), h = vb::CInt(static_cast<double>(H) / K);
    TempPlane = Plane::Make(w, h);
    int16_t amp = 255;
    for (int i = 1; i <= K; ++i) {
        Bar(static_cast<int>((100.0 / K) * (i - 1)));
        DoNoise(w, h, amp);
        DoubleSwapBuffer(w, h);
        w = vb::CInt(static_cast<double>(W) / (K - i + 1));
        h = vb::CInt(static_cast<double>(H) / (K - i + 1));
        amp = static_cast<int16_t>(amp / 2);
    }
    FitField(W, H);
}

void ShrinkField() {
    TempPlane.alloc(1, 1);
    DoublePlane.free();
}

struct StatusShown {
    StatusShown() { ShowStatus("Processing..."); }
    ~StatusShown() { HideStatus(); }
};
}  // namespace

void DoNoise(int w, int h, int amp) {
    FitField(w, h);
    std::vector<double> draws(static_cast<size_t>(w) + 1);
    for (int y = 0; y <= h; ++y) {
        vb::RndRow(draws.data(), draws.size());
        uint8_t* t = TempPlane.row(y);
        for (int x = 0; x <= w; ++x) {
            const int v = std::abs(vb::CInt(t[x] + (0.5 - draws[x]) * amp * 2));  // reflected at 0
            t[x] = static_cast<uint8_t>(std::min(v, 255));
        }
    }
}

void DoubleSwapBuffer(int w, int h) {
    FitField(w, h);
    DoublePlane = Plane::Make(2 * w, 2 * h);
    kwfilter::DoubleField(TempPlane.data(), TempPlane.stride(), w, h, DoublePlane.data(), DoublePlane.stride());
    TempPlane = std::move(DoublePlane);
}

void RenderPlasma(int W, int H, int K) {
    if (W <= 0 || H <= 0 || K <= 0) return;
    StatusShown status;
    GrowField(W, H, K);
    // Through the alpha plane as it stands, even with alpha switched off.
    for (Plane* p : {&BufR, &BufG, &BufB})
        kwfilter::PlasmaChannel(p->data(), TempPlane.data(), TempPlane.stride(), BufA.data(), W, H);
    ShrinkField();
}

void RenderColorPlasma(int W, int H, int K) {
    if (W <= 0 || H <= 0 || K <= 0) return;
    StatusShown status;
    for (Plane* p : {&BufR, &BufG, &BufB}) {  // a field of its own for each channel
        GrowField(W, H, K);
        kwfilter::PlasmaChannel(p->data(), TempPlane.data(), TempPlane.stride(), BufA.data(), W, H);
    }
    ShrinkField();
}

void RenderBumpy(int W, int H, int K, int slot) {
    if (W <= 0 || H <= 0 || K <= 0) return;
    StatusShown status;
    GrowField(W, H, K);
    kwfilter::FieldThroughGradient(BufR.data(), BufG.data(), BufB.data(), TempPlane.data(), TempPlane.stride(),
                                   GradientTables(slot), BufA.data(), App.AlphaOff, W, H);
    ShrinkField();
}

void RenderBumpyPerlin(int W, int H, int K, int scale, int slot) {
    if (W <= 0 || H <= 0 || K <= 0 || scale <= 0) return;
    std::unique_ptr<kwfilter::PerlinColumns, void (*)(kwfilter::PerlinColumns*)> columns(
        kwfilter::MakePerlinColumns(W, K, scale), kwfilter::FreePerlinColumns);
    const uint8_t* grad = GradientTables(slot);
    // The rows of a band split over the threads: each row depends on nothing but y.
    InBands(H, std::max(8, H / 100 / 8 * 8), [&](int y0, int y1) {
        kwthreads::ForRows(y1 - y0, [&](int r0, int r1) {
            std::vector<float> acc(static_cast<size_t>(W));
            for (int y = y0 + r0; y < y0 + r1; ++y) {
                kwfilter::PerlinOctaveRow(columns.get(), y, acc.data());
                kwfilter::AccThroughGradient(BufR.row(y), BufG.row(y), BufB.row(y), acc.data(), K, grad, W);
            }
        }, 2);
    });
    OverlayAfterPass();
}

// ---- the panels
namespace {
void RenderChosen(void (*render)()) {
    filterSetup();
    render();
    filterCloseDown();
}

void PlasmaRender() {
    const FilterArea s = FilterSize();
    if (s.empty()) return;
    Hourglass busy;
    const int K = PlasmaOptions::Hscroll7.Value;
    if (PlasmaOptions::Check1.Value == 1)
        RenderColorPlasma(s.w, s.h, K);
    else
        RenderPlasma(s.w, s.h, K);
}

void BumpyRender() {
    using namespace BumpyOptions;
    const FilterArea s = FilterSize();
    if (s.empty()) return;
    Hourglass busy;
    if (Combo3.Text() == "Recursive subdivision")
        RenderBumpy(s.w, s.h, HScroll7.Value, Hscroll1.Value);
    else
        RenderBumpyPerlin(s.w, s.h, HScroll7.Value, Hscroll2.Value, Hscroll1.Value);
}
}  // namespace

namespace PlasmaOptions {
Form form("PlasmaOptions", "Plasma noise");
Slider Hscroll7(form, "Hscroll7", 1, 8, 7);
CheckBox Check1(form, "Check1", "Color plasma");
CommandButton Command1(form, "Command1", "Ok", [] {
    Hide(form);
    RenderChosen(PlasmaRender);
}, ButtonRole::Default);
CommandButton Command2(form, "Command2", "Cancel", [] { Hide(form); }, ButtonRole::Cancel);
namespace {
struct Wiring {
    Wiring() {
        Hscroll7.Caption.setQuietly("Iterations");
        Command1.Group = Command2.Group = 1;
        form.Load = [] { PrefsCallBack(form); };
    }
} wiring;
}  // namespace
}  // namespace PlasmaOptions

namespace BumpyOptions {
Form form("BumpyOptions", "Bumpy Toy");
Slider HScroll7(form, "HScroll7", 1, 8, 5);
Slider Hscroll2(form, "Hscroll2", 1, 10, 2);
Slider Hscroll1(form, "Hscroll1", 0, 7, 0, [] { Label1.Caption = "Gradient " + std::to_string(Hscroll1.Value + 1); });
Label Label1(form, "Label1", "Gradient 1");
Label Label2(form, "Label2", "Algorithm");
ComboBox Combo3(form, "Combo3");
CommandButton Command1(form, "Command1", "Ok", [] {
    Hide(form);
    RenderChosen(BumpyRender);
}, ButtonRole::Default);
CommandButton Command2(form, "Command2", "Cancel", [] { Hide(form); }, ButtonRole::Cancel);
CommandButton Command3(form, "Command3", "Render", [] { RenderChosen(BumpyRender); });
namespace {
struct Wiring {
    Wiring() {
        HScroll7.Caption.setQuietly("Iterations");
        Hscroll2.Caption.setQuietly("Scale");
        Hscroll1.Caption.setQuietly("Gradient index");
        Combo3.Caption.setQuietly("Algorithm");
        Combo3.AddItem("Multi-Perlin");
        Combo3.AddItem("Recursive subdivision");
        Combo3.ListIndex.setQuietly(0);
        Command1.Group = Command2.Group = Command3.Group = 1;
        form.Load = [] { PrefsCallBack(form); };
    }
} wiring;
}  // namespace
}  // namespace BumpyOptions

void Plasma_Click() {
    if (!DocumentExists()) return;
    Show(PlasmaOptions::form, false, &MDIForm1::form);
}

void BumpyToy_Click() {
    if (!DocumentExists()) return;
    Show(BumpyOptions::form, false, &MDIForm1::form);
}
