// Custom blur: the profile, the star-shaped mask and the blur by it.
#include "filter/CustomBlur.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "colour/Gradients.h"
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

uint8_t BlurProfile[257];
std::vector<uint8_t> BlurKernel;
int BlurKernelSide = 0;

void BuildBlurProfile(int bias) {
    BlurProfile[256] = 255;
    const double b = bias / 200.0;
    for (int i = 0; i <= 255; ++i) {
        const double x = i / 255.0;
        const double y = x / ((1 / b - 2) * (1 - x) + 1);  // the bias curve
        BlurProfile[i] = vb::CByte(std::clamp(y * 255.0, 0.0, 255.0));
    }
}

namespace {
// Degrees 0..360 of the offset (dx, dy) about the mask's centre.
double CalculateAngle(double dx, double dy) {
    double a = std::atan2(dy, dx) * 180.0 / 3.14159265358979;
    return a < 0 ? a + 360.0 : a;
}
}  // namespace

void BuildGuassBuffer_Oct(double r, double e, double s) {
    if (r <= 0) return;
    const double d2 = 2 * r;
    const int n = static_cast<int>(vb::Int(d2)) + (d2 != vb::Int(d2) ? 1 : 0);
    BlurKernelSide = n + 1;
    BlurKernel.assign(static_cast<size_t>(BlurKernelSide) * BlurKernelSide, 0);
    const double step = n / d2, start = (d2 - vb::Int(d2)) / 2;
    for (int iv = 0; iv <= n; ++iv)
        for (int iu = 0; iu <= n; ++iu) {
            const double u = start + iu * step, v = start + iv * step;
            double d = std::min(255.0, std::sqrt((u - r) * (u - r) + (v - r) * (v - r)) * (255 / r));
            const double q = std::fabs(std::sin(CalculateAngle(u - r, v - r) * e * 0.01745));
            const double t = std::max(0.0, (255 - d) - (d / 255) * s * q);
            d = 255 - t;
            const double f = d - vb::Int(d);
            const int i0 = static_cast<int>(vb::Int(d)), i1 = std::min(256, static_cast<int>(vb::Int(d + 1)));
            BlurKernel[static_cast<size_t>(iv) * BlurKernelSide + iu] =
                static_cast<uint8_t>(vb::Int(BlurProfile[i1] * f + BlurProfile[i0] * (1 - f)));
        }
}

void megablur(int r, int32_t sum) {
    const FilterArea s = FilterSize();
    if (s.empty() || r < 0 || BlurKernelSide != 2 * r + 1) return;
    Hourglass busy;
    const bool masked = App.AlphaOff == 0;
    auto rows = [&](int y0, int y1) {
        if (masked)
            kwfilter::xBlurAlpha(UndoR.data(), UndoG.data(), UndoB.data(), BufR.data(), BufG.data(), BufB.data(),
                                 BufA.data(), App.AlphaOff, s.w, s.h, BlurKernel.data(), r, sum, y0, y1);
        else
            kwfilter::xBlur(UndoR.data(), UndoG.data(), UndoB.data(), BufR.data(), BufG.data(), BufB.data(), s.w, s.h,
                            BlurKernel.data(), r, sum, y0, y1);
    };
    // About 20 million taps a band: the progress moves a few times a second.
    const double perRow = static_cast<double>(s.w) * BlurKernelSide * BlurKernelSide * 3;
    if (perRow * s.h < 2e7) return rows(0, s.h);
    InBands(s.h, static_cast<int>(std::max(1.0, 2e7 / perRow)), rows);
}

namespace BlurOptions {
namespace {
void Redraw();
}
Form form("BlurOptions", "Custom blur");
Slider HScroll1(form, "HScroll1", 1, 32, 1, [] { Redraw(); });
Slider hscroll2(form, "hscroll2", 1, 199, 100, [] { Redraw(); });
Slider hscroll4(form, "hscroll4", 0, 8, 0, [] { Redraw(); });
Slider hscroll5(form, "hscroll5", 0, 7, 0, [] { Redraw(); });
Slider hscroll3(form, "hscroll3", 0, 7, 0, [] { Redraw(); });
CheckBox Check1(form, "Check1", "Map to gradient", 0, [] { Redraw(); });
PictureBox Picture1(form, "Picture1", 130, 130);
PictureBox Picture2(form, "Picture2", 128, 128);
CommandButton Command1(form, "Command1", "Ok", [] { Command1_Click(); }, ButtonRole::Default);
CommandButton Command2(form, "Command2", "Cancel", [] { Hide(form); }, ButtonRole::Cancel);
namespace {
void Picture2_Paint() {
    BuildBlurProfile(hscroll2.Value);
    Picture2.Cls(0x000000);
    for (int i = 0; i < 128; ++i) Picture2.PSet(i, 127 - BlurProfile[i * 2] / 2, vb::RGB(255, 255, 192));
    Picture2.Refresh();
}

void Picture1_Click() {
    BuildGuassBuffer_Oct(HScroll1.Value, vb::Int(hscroll4.Value) / 2, vb::Int(hscroll5.Value));
    const int cell = std::max(1, Picture1.Width / BlurKernelSide);
    const int g = std::clamp<int>(hscroll3.Value, 0, GradientCount - 1);
    for (int v = 0; v < BlurKernelSide; ++v)
        for (int u = 0; u < BlurKernelSide; ++u) {
            const int k = 255 - BlurKernel[static_cast<size_t>(v) * BlurKernelSide + u];
            const uint32_t c = Check1.Value ? vb::RGB(Grad(k, 0, g), Grad(k, 1, g), Grad(k, 2, g)) : vb::RGB(k, k, k);
            for (int y = v * cell; y < (v + 1) * cell && y < Picture1.Height; ++y)
                for (int x = u * cell; x < (u + 1) * cell && x < Picture1.Width; ++x) Picture1.PSet(x, y, c);
        }
    Picture1.Refresh();
}

void Redraw() {
    hscroll3.Caption = "Gradient index " + std::to_string(hscroll3.Value + 1);
    Picture2_Paint();
    Picture1_Click();
}

struct Wiring {
    Wiring() {
        HScroll1.Caption.setQuietly("Radius");
        hscroll2.Caption.setQuietly("Bias");
        hscroll4.Caption.setQuietly("Edges");
        hscroll5.Caption.setQuietly("intensity");
        hscroll3.Caption.setQuietly("Gradient index 1");
        Command1.Group = Command2.Group = 1;
        Picture1.Paint = Picture1_Click;
        Picture2.Paint = Picture2_Paint;
        form.Load = [] {
            PrefsCallBack(form);
            Redraw();
        };
    }
} wiring;
}  // namespace

void Command1_Click() {
    if (!DocumentExists()) return Hide(form);
    SaveUndo();
    const int r = HScroll1.Value;
    Redraw();  // the mask of the sliders as they stand
    int32_t sum = 0;
    for (uint8_t& k : BlurKernel) sum += k = static_cast<uint8_t>(255 - k);
    Hide(form);
    megablur(r, sum);
    RedisplayWindow();
}
}  // namespace BlurOptions

void Adjustableblur_Click() {
    if (!DocumentExists()) return;
    Show(BlurOptions::form, false, &MDIForm1::form);
}
