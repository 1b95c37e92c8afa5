// The flood fill: the region search fills a coverage mask (TempPlane), the
// anti-aliasing smooths it, and each covered pixel gets the fill pipeline's
// colour, fitted to the mask's box or to its row by the fill style.
#include "fill/Flood.h"

#include <algorithm>
#include <cstring>

#include "colour/DeliverPixel.h"
#include "core/display/Display.h"
#include "core/document/Buffers.h"
#include "core/frame/Form2.h"
#include "core/framework/AppState.h"
#include "fill/FillPanels.h"
#include "fill/FillShared.h"
#include "native/DeliverRows.h"
#include "native/Flood.h"

namespace {
using kwmode::FillStyle;

struct Box {
    int left, top, right, bottom;
};

// The mask of the region under the press, smoothed when the panel says so.
// False when there is no picture to search.
bool MakeMask(float X, float Y, int Tolerance, int& W, int& H) {
    W = PictureWidth({&BufR, &BufG, &BufB, &BufA});
    H = PictureHeight({&BufR, &BufG, &BufB, &BufA});
    if (W <= 0 || H <= 0) return false;
    const float z = static_cast<float>(App.ZoomPercent) / 100.0f;
    const int x = vb::CLng(X / z), y = vb::CLng(Y / z);
    // The mask shares the picture's stride, so that one offset serves every plane.
    TempPlane.alloc(BufR.ubX(), BufR.ubY());
    kwflood::floodfrombuff2(x, y, W, H, BufR.data(), BufG.data(), BufB.data(), TempPlane.data(), TempPlane.stride(),
                            Tolerance);
    if (Form4::Check1.Value) {
        Plane SmoothPlane;
        SmoothPlane.alloc(BufR.ubX(), BufR.ubY(), false);
        kwflood::SmoothFloodMask(TempPlane.data(), SmoothPlane.data(), TempPlane.stride(), W, H);
    }
    return true;
}

// The first and last covered columns of a row; false when none is.
bool RowExtent(const uint8_t* m, int W, int& first, int& last) {
    first = 0;
    while (first < W && m[first] == 0) ++first;
    if (first == W) return false;
    last = W - 1;
    while (m[last] == 0) --last;
    return true;
}

Box MaskBox(int W, int H) {
    Box b{W, H, -1, -1};
    for (int y = 0; y < H; ++y) {
        int first, last;
        if (!RowExtent(TempPlane.row(y), W, first, last)) continue;
        b.left = std::min(b.left, first), b.right = std::max(b.right, last);
        b.top = std::min(b.top, y), b.bottom = y;
    }
    return b;
}

// What the colour loop needs besides the pipeline's own settings.
struct MaskFill {
    uint32_t colour;
    bool antiAliased, toAlpha, coverage;
    int W, H;
};

// One covered run of a row, x0..x1, with the box the style fits to.
template <unsigned Steps>
void DeliverSpan(const kwfill::DeliverSettings& s, kwfill::DeliverState& st, const kwfill::FillPlan* plan,
                const MaskFill& f, int y, int x0, int x1, const Box& b) {
    const uint8_t* m = TempPlane.row(y);
    uint8_t *r = BufR.row(y), *g = BufG.row(y), *bl = BufB.row(y), *a = BufA.row(y);
    if (plan && x1 > x0) {
        // A plain colour at full coverage: the row tables, the last pixel through the kernel.
        uint8_t* out[3] = {r + x0, g + x0, bl + x0};
        kwfill::detail::PlainRow<Steps>(s, *plan, static_cast<size_t>(y) * s.stride + static_cast<size_t>(x0), out, x1 - x0);
        x0 = x1;
    }
    for (int x = x0; x <= x1; ++x) {
        if (f.toAlpha && f.coverage) {
            a[x] = m[x];
            continue;
        }
        const uint32_t v = DeliverPixel<Steps>(s, st, f.colour, x, y, b.left, b.top, b.right, b.bottom);
        unsigned c[3] = {v & 255u, (v >> 8) & 255u, (v >> 16) & 255u};
        if (f.antiAliased && m[x] < 255) {
            const unsigned k = m[x], old[3] = {r[x], g[x], bl[x]};
            for (int i = 0; i < 3; ++i) c[i] = (old[i] * (255 - k) + c[i] * k) / 255;
        }
        if (f.toAlpha) {
            a[x] = static_cast<uint8_t>(vb::CInt((c[0] + c[1] + c[2]) / 3.0));
        } else {
            r[x] = static_cast<uint8_t>(c[0]), g[x] = static_cast<uint8_t>(c[1]), bl[x] = static_cast<uint8_t>(c[2]);
        }
    }
}

// Every covered pixel in rows from the top, run by run.
template <unsigned Steps>
void DeliverMask(const kwfill::DeliverSettings& s, kwfill::DeliverState& st, const MaskFill& f) {
    const FillStyle style = s.style;
    // The fitting styles take each row's own ends, the rows of the mask's box.
    const bool perRow = style == FillStyle::FitHorizontal || style == FillStyle::FitBrush;
    const bool boxed = style == FillStyle::Horizontal || style == FillStyle::Vertical || style == FillStyle::Circular;
    const Box maskBox = boxed || perRow ? MaskBox(f.W, f.H) : Box{0, 0, f.W - 1, f.H - 1};
    Box box = maskBox;
    kwfill::FillPlan plan;
    const bool byTable = !f.toAlpha && !f.antiAliased && (plan = kwfill::PlanFill(s, f.colour, 0, 0, 0, 0)).byTable;
    for (int y = 0; y < f.H; ++y) {
        const uint8_t* m = TempPlane.row(y);
        int first, last;
        if (!RowExtent(m, f.W, first, last)) continue;
        if (perRow) box = {first, maskBox.top, last, maskBox.bottom};
        for (int x = first; x <= last;) {
            const uint8_t* hole = static_cast<const uint8_t*>(std::memchr(m + x, 0, static_cast<size_t>(last + 1 - x)));
            const int end = hole ? static_cast<int>(hole - m) : last + 1;
            DeliverSpan<Steps>(s, st, byTable ? &plan : nullptr, f, y, x, end - 1, box);
            x = end;
            while (x <= last && m[x] == 0) ++x;
        }
    }
}

// The ending every flood shares: the mask goes, the picture and the preview follow.
void FinishFlood(bool selection) {
    TempPlane.alloc(0, 0);
    if (selection) ShowFillSelection();
    else RedisplayWindow();
    Form2::Picture27_Paint();
}
}  // namespace

void Flood(float X, float Y, int Tolerance, uint32_t Colour, bool maskFromShape) {
    int W, H;
    if (!MakeMask(X, Y, Tolerance, W, H)) return;
    LoadFillOpacity();
    const MaskFill f{Colour, Form4::Check1.Value != 0, App.FillMode == kwmode::FillMode::Alpha, maskFromShape, W, H};
    DeliverRun run = DeliverBegin();
    if (kwfill::DeliverSteps(run.settings) == 0) DeliverMask<0>(run.settings, run.state, f);
    else DeliverMask<kwfill::DpAll>(run.settings, run.state, f);
    DeliverEnd(run.state);
    FinishFlood(f.toAlpha);
}

void Flood_To_Alpha(float X, float Y, int Tolerance, uint8_t Value) {
    int W, H;
    if (!MakeMask(X, Y, Tolerance, W, H)) return;
    const bool antiAliased = Form4::Check1.Value != 0;
    for (int y = 0; y < H; ++y) {
        const uint8_t* m = TempPlane.row(y);
        uint8_t* a = BufA.row(y);
        for (int x = 0; x < W; ++x) {
            if (m[x] == 0) continue;
            if (!antiAliased) a[x] = Value;
            else if (Value != 0) a[x] = std::max(a[x], m[x]);
            else a[x] = std::min<uint8_t>(a[x], static_cast<uint8_t>(255 - m[x]));
        }
    }
    FinishFlood(false);
}
