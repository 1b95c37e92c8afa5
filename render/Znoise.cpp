// Z noise, rebuilt from the undo planes at every change of its panel. Each
// output pixel depends on its own undo pixel alone, so the rows are split over
// both threads.
#include "render/Znoise.h"

#include <algorithm>
#include <cmath>

#include "colour/Gradients.h"
#include "core/display/Display.h"
#include "core/document/Buffers.h"
#include "core/frame/MDIForm1.h"
#include "core/framework/Host.h"
#include "core/framework/PanelLook.h"
#include "core/framework/vb.h"
#include "filter/FilterFrame.h"
#include "native/FilterThreads.h"
#include "native/Noise.h"

namespace {
struct ZnoiseSettings {
    float sc, zs;
    int slot;
    bool gradient, mapBrush, depthCue;
};

// The brush's colour at (u, w) of the tilted surface, the four neighbours
// mixed; both coordinates wrap at the brush's size, the neighbours too, so the
// texture tiles without a seam.
void BrushTexel(double u, double w, int out[3]) {
    const int bw = BrushWidth, bh = BrushHeight;
    u -= vb::Int(u / bw) * bw;
    w -= vb::Int(w / bh) * bh;
    const int ix = std::min(static_cast<int>(u), bw - 1), iy = std::min(static_cast<int>(w), bh - 1);
    const int ix1 = (ix + 1) % bw, iy1 = (iy + 1) % bh;
    const double fx = u - ix, fy = w - iy;
    const Plane* planes[3] = {&BrushR, &BrushG, &BrushB};
    for (int c = 0; c < 3; ++c) {
        const Plane& p = *planes[c];
        const double top = p(ix, iy) * (1 - fx) + p(ix1, iy) * fx;
        const double bottom = p(ix, iy1) * (1 - fx) + p(ix1, iy1) * fx;
        out[c] = vb::CInt(top * (1 - fy) + bottom * fy);
    }
}

void ZnoisePixel(const ZnoiseSettings& s, bool brush, int x, int y, int z, int rgb[3]) {
    if (brush) {
        const double u = std::fabs(x / (s.sc / 32.0)), q = y / (s.sc / 32.0), a = s.zs / (s.sc / 64.0);
        BrushTexel(u, std::fabs(a * std::cos(z * 1.412 * 0.0174) + q), rgb);
    } else {
        const float vec[3] = {x / s.sc, y / s.sc, z / s.zs};
        const float v = (kwfilter::noise3(vec) + 1) * 128;
        const int step = std::clamp<int>(vb::CLng(v), 0, 255);
        for (int c = 0; c < 3; ++c) rgb[c] = s.gradient ? Grad(step, c, s.slot) : step;
    }
    if (s.depthCue)
        for (int c = 0; c < 3; ++c) rgb[c] = vb::CInt(z / 256.0 * rgb[c]);
}

ZnoiseSettings ReadZnoise() {
    using namespace ZnoiseOptions;
    return {std::max(1.0f, static_cast<float>(Hscroll1.Value.get())),
            std::max(1.0f, static_cast<float>(hscroll2.Value.get())),
            std::clamp<int>(Hscroll3.Value, 0, 7),
            Check1.Value == 1,
            Check2.Value == 1,
            Check3.Value == 1};
}
}  // namespace

void DrawZnoise() {
    const FilterArea a = FilterSize();
    if (a.empty()) return;
    const ZnoiseSettings s = ReadZnoise();
    const bool brush = s.mapBrush && CustomBrushUsable();  // no brush: the noise grey
    Hourglass busy;
    kwthreads::ForRows(a.h, [&](int y0, int y1) {
        for (int y = y0; y < y1; ++y)
            for (int x = 0; x < a.w; ++x) {
                const int z = (UndoR(x, y) + UndoG(x, y) + UndoB(x, y)) / 3;
                int rgb[3];
                ZnoisePixel(s, brush, x, y, z, rgb);
                BufR(x, y) = static_cast<uint8_t>(std::clamp(rgb[0], 0, 255));
                BufG(x, y) = static_cast<uint8_t>(std::clamp(rgb[1], 0, 255));
                BufB(x, y) = static_cast<uint8_t>(std::clamp(rgb[2], 0, 255));
            }
    });
    OverlayAfterPass();
    RedisplayWindow();
}

namespace ZnoiseOptions {
Form form("ZnoiseOptions", "Z noise");
Slider Hscroll1(form, "Hscroll1", 1, 64, 16, DrawZnoise);
Slider hscroll2(form, "hscroll2", 1, 64, 16, DrawZnoise);
Slider Hscroll3(form, "Hscroll3", 1, 7, 1, DrawZnoise);
CheckBox Check1(form, "Check1", "Use gradient", 0, DrawZnoise);
CheckBox Check2(form, "Check2", "Map brush", 0, DrawZnoise);
CheckBox Check3(form, "Check3", "Depth cue", 0, DrawZnoise);
CommandButton Command1(form, "Command1", "Ok", [] { Hide(form); }, ButtonRole::Default);
CommandButton Command2(form, "Command2", "Cancel", [] { PreviewCancel(form); }, ButtonRole::Cancel);
namespace {
struct Wiring {
    Wiring() {
        Hscroll1.Caption.setQuietly("Scale");
        hscroll2.Caption.setQuietly("Z scale");
        Hscroll3.Caption.setQuietly("Gradient index");
        Command1.Group = Command2.Group = 1;
        form.Load = [] { PrefsCallBack(form); };
    }
} wiring;
}  // namespace
}  // namespace ZnoiseOptions

void Combine_Znoise_Click() {
    if (!DocumentExists()) return;
    filterSetup();
    Show(ZnoiseOptions::form, false, &MDIForm1::form);
    DrawZnoise();
}
