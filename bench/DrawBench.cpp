// The drawing tools on a 4000 x 3000 picture, each beside a peer in the same run:
//  - the lasso's even-odd fill of a 2000-point outline into alpha, against one
//    pass over the alpha plane (inverting it);
//  - a filled ellipse over the whole picture through DeliverPixel (with the
//    redisplay it ends with), against the whole-buffer fill's pixel loop plus
//    the same redisplay; items are pixels, so the rates compare per pixel;
//  - 500 particles per mouse move in the line style, and a bristle move of 100
//    pixels with 200 bristles, against the redisplay each of them ends with and
//    a 100-pixel segment of the natural brush.
#include <benchmark/benchmark.h>

#include <cmath>
#include <vector>

#include "brush/Brush.h"
#include "brush/BrushState.h"
#include "brush/FormDraw.h"
#include "brush/Spraxel.h"
#include "canvas/CanvasState.h"
#include "canvas/Shapes.h"
#include "colour/Colour.h"
#include "colour/DeliverPixel.h"
#include "core/display/Display.h"
#include "core/document/Buffers.h"
#include "core/frame/Form2.h"
#include "core/framework/AppState.h"
#include "core/framework/MixTables.h"
#include "native/Shapes.h"
#include "bench/PaintingDocument.h"

namespace {
constexpr int PictureW = 4000, PictureH = 3000;

struct Document : PaintingDocument {
    Document() : PaintingDocument(PictureW, PictureH) {
        Form2::HScroll4.Value = 255;
        Form2::Shape4.FillColor = 0x3060C0;
        App.AlphaOff = 255;
    }
};

// The shared document with the settings every benchmark starts from: a
// benchmark that turns the selection on (the lasso) must not slow the next.
Document& Doc() {
    static Document d;
    SetAlphaOn(false);  // the marquee stops marching too
    App.MarqueeWasOn = 0;
    Form2::HScroll4.Value = 255;
    Form2::Shape4.FillColor = 0x3060C0;
    return d;
}

// A wobbly ring of 2000 points round the picture's middle.
std::vector<int32_t> Lasso() {
    std::vector<int32_t> xy;
    for (int i = 0; i < 2000; ++i) {
        const double a = i * 2 * M_PI / 2000, r = 1300 + 150 * std::sin(a * 37);
        xy.push_back(static_cast<int32_t>(2000 + r * std::cos(a)));
        xy.push_back(static_cast<int32_t>(1500 + r * std::sin(a)));
    }
    return xy;
}

void BM_AlphaPass(benchmark::State& state) {
    Doc();
    for (auto _ : state) {
        for (int y = 0; y < PictureH; ++y) {
            uint8_t* a = BufA.row(y);
            for (int x = 0; x < PictureW; ++x) a[x] = static_cast<uint8_t>(255 - a[x]);
        }
        benchmark::ClobberMemory();
    }
}

void BM_LassoFill(benchmark::State& state) {
    Doc();
    const std::vector<int32_t> xy = Lasso();
    for (auto _ : state) {
        kwshape::PolygonEvenOdd(xy.data(), 2000, BufA.data(), BufA.stride(), 0, 0, PictureW - 1, PictureH - 1, 255);
        benchmark::ClobberMemory();
    }
}

// PolyToAlpha whole: the fill, replacing the selection, then the marquee and the redisplay.
void BM_PolyToAlpha(benchmark::State& state) {
    Doc();
    const std::vector<int32_t> xy = Lasso();
    LassoCount = 2000;
    for (int i = 0; i < 2000; ++i) {
        LassoPoints[i][0] = static_cast<int16_t>(xy[2 * i]);
        LassoPoints[i][1] = static_cast<int16_t>(xy[2 * i + 1]);
    }
    for (auto _ : state) PolyToAlpha(polymode::Replace);
}

void BM_FillLoopAndRedisplay(benchmark::State& state) {
    Doc();
    LoadFillOpacity();
    for (auto _ : state) {
        DeliverFill(0x3060C0);
        RedisplayWindow();
        Form2::Picture27_Paint();
    }
    state.SetItemsProcessed(state.iterations() * PictureW * PictureH);
}

void BM_FilledEllipse(benchmark::State& state) {
    Doc();
    Form2::Option3.Tag = "filled";
    DragStartX = PictureW / 2.0f;
    DragStartY = PictureH / 2.0f;
    for (auto _ : state) DrawCircle(1, 0, PictureW, PictureH);
    // The pixels the ellipse covers.
    int64_t covered = 0;
    for (int y = 0; y < PictureH; ++y) {
        int a = 0, b = -1;
        if (kwshape::EllipseRowSpan(2000, 1500, 4000, 3000, y, 0, PictureW - 1, a, b)) covered += b - a + 1;
    }
    state.SetItemsProcessed(state.iterations() * covered);
}

// A filled rectangle over the whole picture: the same pixels and the same
// redisplay as the whole-buffer fill, so the two rates compare like for like
// (the ellipse's rate carries the whole redisplay on 79 % of the pixels).
void BM_FilledRectangleWhole(benchmark::State& state) {
    Doc();
    Form2::Option2.Tag = "filled";
    DragStartX = 0;
    DragStartY = 0;
    for (auto _ : state) DrawRectangle(1, 0, PictureW - 1, PictureH - 1);
    state.SetItemsProcessed(state.iterations() * PictureW * PictureH);
}

void BM_Redisplay(benchmark::State& state) {
    Doc();
    for (auto _ : state) RedisplayWindow();
}

void BM_Particles500(benchmark::State& state) {
    Doc();
    Spraxel::Text1.Text = "500";
    Spraxel::Text7.Text = "500";
    Spraxel::Text3.Text = "25";
    Spraxel::Combo4.ListIndex = 0;
    Setup_particles();
    float x = 1000;
    for (auto _ : state) {
        ProcessParticles(x + 10, 1500, x, 1500);
        x = x > 3000 ? 1000 : x + 10;
    }
}

void BM_Bristles100(benchmark::State& state) {
    Doc();
    Spraxel::Text14.Text = "200";
    Spraxel::Text11.Text = "25";
    Setup_Bristles();
    int row = 100;
    for (auto _ : state) {
        row = row >= PictureH - 100 ? 100 : row + 7;
        InitBristles(1000, static_cast<int16_t>(row));
        DrawBristles(1100, static_cast<float>(row), 1000, static_cast<int16_t>(row));
    }
}

void BM_BrushSegment100(benchmark::State& state) {
    Doc();
    PickStockBrush(0);
    Form2::HScroll5.Value = 8;
    Form2::slider1.Value = 2;
    int row = 100;
    for (auto _ : state) {
        row = row >= PictureH - 100 ? 100 : row + 7;
        int16_t b0 = 0, b1 = 1, shift = 0;
        float x0 = 1000, y0 = static_cast<float>(row), x1 = 1100, y1 = y0;
        StepCounter = 0;
        Form1::Form_Draw(b0, shift, x0, y0);
        Form1::Form_Draw(b1, shift, x1, y1);
    }
}
}  // namespace

BENCHMARK(BM_AlphaPass)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_LassoFill)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PolyToAlpha)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_FillLoopAndRedisplay)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_FilledEllipse)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_FilledRectangleWhole)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Redisplay)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Particles500)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Bristles100)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_BrushSegment100)->Unit(benchmark::kMillisecond);
BENCHMARK_MAIN();
