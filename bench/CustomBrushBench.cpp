// The custom brush on a 4000 x 3000 picture: a 200 x 200 colour brush stamped
// along one 100-pixel mouse segment at step 8 (13 stamps) in the default mode,
// with the refresh of the segment's rectangle; and the kernels alone, in
// blended pixels per second, beside the natural brush's fast dab on the same
// picture, the same rows and one thread.
#include <benchmark/benchmark.h>

#include "app/Startup.h"
#include "brush/Brush.h"
#include "brush/BrushState.h"
#include "brush/CustomBrush.h"
#include "brush/FormDraw.h"
#include "colour/Colour.h"
#include "core/document/Buffers.h"
#include "core/frame/Form2.h"
#include "core/framework/AppState.h"
#include "core/framework/MixTables.h"
#include "native/BrushKernels.h"
#include "native/CustomBrushKernels.h"
#include "bench/PaintingDocument.h"

namespace {
constexpr int PictureW = 4000, PictureH = 3000, Side = 200;
constexpr int SegmentLength = 100, Step = 8, Stamps = 13;

struct Document : PaintingDocument {
    Document() : PaintingDocument(PictureW, PictureH) {
        Form2::HScroll4.Value = 255;
        Form2::slider1.Value = Step;
        // A brush cut from a picture of stripes, its coverage a ramp.
        for (int y = 0; y < Side; ++y)
            for (int x = 0; x < Side; ++x) BufR(x, y) = uint8_t(x), BufG(x, y) = uint8_t(y), BufB(x, y) = uint8_t(x ^ y);
        CopyNewBrush(0, 0, Side, Side);
        for (int y = 0; y < Side; ++y)
            for (int x = 0; x < Side; ++x) BrushA(x, y) = uint8_t(1 + (x + y) % 255);
        App.CustomBrushOn = -1;
    }
};

Document& Doc() {
    static Document d;
    return d;
}

kwbrush::CustomTarget Target() {
    return {BufR.data(), BufG.data(), BufB.data(), BufA.data(), BufR.stride(), PictureW, PictureH};
}
kwbrush::BrushPlanes Brush() {
    return {BrushR.data(), BrushG.data(), BrushB.data(), BrushA.data(), BrushR.stride(), BrushWidth, BrushHeight};
}
// Each stamp on rows of its own, so the picture does not saturate or stay in cache.
int NextRow(int row) { return row >= PictureH - 2 * Side ? Side : row + 37; }

void BM_Segment_CustomColour(benchmark::State& state) {
    Doc();
    int row = Side;
    for (auto _ : state) {
        row = NextRow(row);
        int16_t b0 = 0, b1 = 1, shift = 0;
        float x0 = 1000, y0 = static_cast<float>(row), x1 = 1000 + SegmentLength, y1 = y0;
        StepCounter = 0;
        Form1::Form_Draw(b0, shift, x0, y0);
        Form1::Form_Draw(b1, shift, x1, y1);
    }
    state.counters["stamps_per_s"] =
        benchmark::Counter(static_cast<double>(state.iterations()) * Stamps, benchmark::Counter::kIsRate);
}
BENCHMARK(BM_Segment_CustomColour)->Unit(benchmark::kMicrosecond);

void Blended(benchmark::State& state, double pixelsPerCall) {
    state.counters["blended_px_per_s"] =
        benchmark::Counter(static_cast<double>(state.iterations()) * pixelsPerCall, benchmark::Counter::kIsRate);
}

void BM_Kernel_CustomBrushBlit(benchmark::State& state) {
    Doc();
    int row = Side;
    for (auto _ : state) {
        row = NextRow(row);
        kwbrush::CustomBrushBlit(Brush(), Target(), 1000, row, 200, 255);
    }
    Blended(state, Side * Side);
}
BENCHMARK(BM_Kernel_CustomBrushBlit)->Unit(benchmark::kMicrosecond);

void BM_Kernel_Full_CustomMatteBlit(benchmark::State& state) {
    Doc();
    int row = Side;
    for (auto _ : state) {
        row = NextRow(row);
        kwbrush::Full_CustomMatteBlit(Brush(), Target(), MixScreen, 30, 60, 90, {}, 50.0f, 1000, row, 200, 255, 1, 0);
    }
    Blended(state, Side * Side);
}
BENCHMARK(BM_Kernel_Full_CustomMatteBlit)->Unit(benchmark::kMicrosecond);

// The natural brush's fast dab: a full 35 x 35 mask, opacity 200.
void BM_Kernel_NaturalDabFast(benchmark::State& state) {
    Doc();
    uint8_t mask[kwbrush::MaskCells];
    for (int i = 0; i < kwbrush::MaskCells; ++i) mask[i] = static_cast<uint8_t>(i % 200);
    const kwbrush::DabTarget t{BufR.data(), BufG.data(), BufB.data(), BufA.data(), BufR.stride(), PictureW, PictureH};
    int row = Side;
    for (auto _ : state) {
        row = NextRow(row);
        kwbrush::DabBox box{1000, 1034, row, row + 34, 0};
        kwbrush::DabFast(t, mask, box, 30, 60, 90, 200);
    }
    Blended(state, 35 * 35);
}
BENCHMARK(BM_Kernel_NaturalDabFast)->Unit(benchmark::kMicrosecond);
}  // namespace

BENCHMARK_MAIN();
