// The sky render and its panel. The noise of each row is independent of the
// others, so a band of rows is worked on both threads; with cloud depth the
// columns raised from a row overpaint earlier rows, so the band is then
// written out one row after another, as a single pass would.
#include "render/Sky.h"

#include <algorithm>
#include <cmath>
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

SkyRow SkyProjection(int y, int H1) {
    const double p = std::pow(static_cast<double>(H1 - y) / H1, 0.25);
    const double r = std::pow(static_cast<double>(y) / H1, 1.5) * H1;
    return {static_cast<float>((1 - p) * H1), H1 - r != 0 ? H1 / (H1 - r) : 1.0};
}

namespace {
struct SkySettings {
    int W1, H1, K, scale, slot;
    float depth;
    uint8_t fog[3];
};

// One pixel of the sky: its colour and the top row of its raised column.
struct SkyPixel {
    uint8_t c[3];
    int16_t top;
};

void SkyRowPixels(const SkySettings& s, int y, SkyPixel* out) {
    const SkyRow row = SkyProjection(y, s.H1);
    const double fog = std::clamp(static_cast<double>(y) / s.H1, 0.0, 1.0);
    for (int x = 0; x <= s.W1; ++x) {
        double t = x - s.W1 / 2.0;
        const double sign = t < 0 ? -1 : 1;
        t = std::fabs(t) * row.widen / 4.0 * sign;
        float acc = kwfilter::PerlinOctaves(static_cast<float>(t), row.v, s.K, s.scale) / s.K;
        acc = std::clamp(acc, 0.0f, 255.0f);
        const int step = vb::CLng(acc);
        for (int c = 0; c < 3; ++c)
            out[x].c[c] = vb::CByte(Grad(step, c, s.slot) * (1 - fog) + s.fog[c] * fog);
        out[x].top = y;
        if (s.depth != 0) {
            const int y0 = vb::CInt(y - ((s.H1 - y) * ((s.depth / 100) * acc)) / s.H1);
            out[x].top = static_cast<int16_t>(std::clamp(y0, 0, y));
        }
    }
}

void WriteSkyRow(const SkySettings& s, int y, const SkyPixel* px) {
    for (int x = 0; x <= s.W1; ++x)
        for (int r = px[x].top; r <= y; ++r) {
            BufR(x, r) = px[x].c[0];
            BufG(x, r) = px[x].c[1];
            BufB(x, r) = px[x].c[2];
        }
}

SkySettings ReadSky(const FilterArea& a) {
    using namespace RenderSky;
    const uint32_t colour = Command5.BackColor;
    return {a.w - 1, a.h - 1, HScroll7.Value, Hscroll2.Value, Hscroll1.Value, static_cast<float>(Hscroll3.Value.get()),
            {vb::RedOf(colour), vb::GreenOf(colour), vb::BlueOf(colour)}};
}
}  // namespace

void RenderPerlinSky() {
    const FilterArea a = FilterSize();
    if (a.empty()) return;
    if (a.w < 2 || a.h < 2) return Kelpwick_MsgBox("The sky needs a picture at least 2 pixels wide and 2 high.");
    const SkySettings s = ReadSky(a);
    Hourglass busy;
    std::vector<SkyPixel> band;
    InBands(a.h, 16, [&](int y0, int y1) {
        band.resize(static_cast<size_t>(y1 - y0) * a.w);
        kwthreads::ForRows(y1 - y0, [&](int r0, int r1) {
            for (int r = r0; r < r1; ++r) SkyRowPixels(s, y0 + r, band.data() + static_cast<size_t>(r) * a.w);
        }, 2);
        for (int y = y0; y < y1; ++y) WriteSkyRow(s, y, band.data() + static_cast<size_t>(y - y0) * a.w);
    });
    OverlayAfterPass();
}

namespace RenderSky {
Form form("RenderSky", "Sky");
Slider HScroll7(form, "HScroll7", 1, 8, 5);
Slider Hscroll2(form, "Hscroll2", 1, 10, 1);
Slider Hscroll1(form, "Hscroll1", 0, 7, 0);
Slider Hscroll3(form, "Hscroll3", 0, 7, 0);
CommandButton Command5(form, "Command5", "Fog color", [] {
    if (auto c = host().ChooseColor(Command5.BackColor)) Command5.BackColor = *c;
});
CommandButton Command1(form, "Command1", "Ok", [] {
    RenderPerlinSky();
    Hide(form);
    filterCloseDown();
}, ButtonRole::Default);
CommandButton Command3(form, "Command3", "Render", [] {
    RenderPerlinSky();
    filterCloseDown();
});
CommandButton Command2(form, "Command2", "Cancel", [] { PreviewCancel(form); }, ButtonRole::Cancel);

void Command5_DragDrop(uint32_t colour) { Command5.BackColor = colour & 0xFFFFFF; }

namespace {
struct Wiring {
    Wiring() {
        HScroll7.Caption.setQuietly("Iterations");
        Hscroll2.Caption.setQuietly("Scale");
        Hscroll1.Caption.setQuietly("Gradient index");
        Hscroll3.Caption.setQuietly("Cloud depth");
        Command5.BackColor.setQuietly(0xFFFFFF);
        Command5.ColourDrop = Command5_DragDrop;
        Command1.Group = Command3.Group = Command2.Group = 1;
        form.Load = [] {
            const uint32_t fog = Command5.BackColor;  // the panel's colours leave the fog alone
            PrefsCallBack(form);
            Command5.BackColor = fog;
        };
    }
} wiring;
}  // namespace
}  // namespace RenderSky

void Render_Sky_Click() {
    if (!DocumentExists()) return;
    filterSetup();
    Show(RenderSky::form, false, &MDIForm1::form);
}
