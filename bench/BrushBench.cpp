// The natural brush on a 4000 x 3000 picture: one 100-pixel mouse segment of the
// size-68 soft brush at step 2 with the 9-tap mask (50 dabs), in the general
// case (bumpiness on) and the fast case, each with the refresh of its
// rectangle. Baseline: libmypaint laying the same 50 dabs of the same radius
// with a soft falloff (hardness 0.5: full paint in the middle, linear to the
// rim) along the same line on a surface of the same size.
#include <benchmark/benchmark.h>

#include <cstring>

#include "app/Startup.h"
#include "brush/Brush.h"
#include "brush/BrushOptions.h"
#include "brush/BrushState.h"
#include "brush/FormDraw.h"
#include "colour/Colour.h"
#include "core/framework/AppState.h"
#include "core/document/Buffers.h"
#include "core/frame/Form2.h"
#include "core/framework/MixTables.h"
#include "bench/PaintingDocument.h"

#ifdef KW_HAVE_MYPAINT
extern "C" {
#include <mypaint-fixed-tiled-surface.h>
#include <mypaint-surface.h>
}
#endif

namespace {
constexpr int PictureW = 4000, PictureH = 3000;
constexpr int SegmentLength = 100, Step = 2, Dabs = SegmentLength / Step;
constexpr float Radius = 17;  // size 68

struct Document : PaintingDocument {
    Document() : PaintingDocument(PictureW, PictureH) {
        PickStockBrush(2);  // soft
        BrushOptions::Option3.Value = true;
        Form2::HScroll5.Value = 68;
        Form2::HScroll4.Value = 255;
        Form2::slider1.Value = Step;
    }
};

Document& Doc() {
    static Document d;
    return d;
}

// Pixels a dab of the current mask blends: the cells of its box that paint.
int PaintingCells() {
    int n = 0;
    for (int y = 17 - BrushRadius; y <= 17 + BrushRadius; ++y)
        for (int x = 17 - BrushRadius; x <= 17 + BrushRadius; ++x) n += MaskCell(BrushMask, x, y) < 255;
    return n;
}

void Segment(benchmark::State& state, bool bumpy) {
    Doc();
    Form2::Check1.Value = bumpy ? 1 : 0;
    int row = 100;
    for (auto _ : state) {
        // Each segment on rows of its own, so the picture does not saturate.
        row = row >= PictureH - 100 ? 100 : row + 7;
        int16_t b0 = 0, b1 = 1, shift = 0;
        float x0 = 1000, y0 = static_cast<float>(row), x1 = 1000 + SegmentLength, y1 = y0;
        StepCounter = 0;
        Form1::Form_Draw(b0, shift, x0, y0);
        Form1::Form_Draw(b1, shift, x1, y1);
    }
    Form2::Check1.Value = 0;
    const double dabs = static_cast<double>(state.iterations()) * Dabs;
    state.counters["dabs_per_s"] = benchmark::Counter(dabs, benchmark::Counter::kIsRate);
    state.counters["blended_px_per_s"] = benchmark::Counter(dabs * PaintingCells(), benchmark::Counter::kIsRate);
}

void BM_Segment_General(benchmark::State& state) { Segment(state, true); }
void BM_Segment_Fast(benchmark::State& state) { Segment(state, false); }
BENCHMARK(BM_Segment_General)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Segment_Fast)->Unit(benchmark::kMicrosecond);

#ifdef KW_HAVE_MYPAINT
void BM_Segment_Libmypaint(benchmark::State& state) {
    MyPaintFixedTiledSurface* surface = mypaint_fixed_tiled_surface_new(PictureW, PictureH);
    MyPaintSurface* s = reinterpret_cast<MyPaintSurface*>(surface);
    int row = 100;
    for (auto _ : state) {
        row = row >= PictureH - 100 ? 100 : row + 7;
        mypaint_surface_begin_atomic(s);
        for (int i = 0; i < Dabs; ++i)
            mypaint_surface_draw_dab(s, 1000.0f + i * Step, static_cast<float>(row), Radius, 0, 0, 0,
                                     /*opaque*/ 1.0f, /*hardness*/ 0.5f, /*alpha_eraser*/ 1.0f,
                                     /*aspect_ratio*/ 1.0f, /*angle*/ 0.0f, /*lock_alpha*/ 0.0f,
                                     /*colorize*/ 0.0f);
        MyPaintRectangle roi;
        mypaint_surface_end_atomic(s, &roi);
        benchmark::DoNotOptimize(roi);
        if (roi.width <= 0) state.SkipWithError("libmypaint laid no dab");
    }
    mypaint_surface_unref(s);
    state.counters["dabs_per_s"] =
        benchmark::Counter(static_cast<double>(state.iterations()) * Dabs, benchmark::Counter::kIsRate);
}
BENCHMARK(BM_Segment_Libmypaint)->Unit(benchmark::kMicrosecond);
#endif
}  // namespace

BENCHMARK_MAIN();
