// The linear gradient over a 4000 x 3000 picture, one thread (time it under
// taskset -c 1), against one pass writing the three planes with a value per
// row: the same planes, the same stride, the same stores. The gradient runs
// diagonally over a third of the picture, opaque and without alpha (the
// common case), and once through a half-transparent gradient with alpha on.
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstring>
#include <vector>

#include "native/LinearFill.h"

namespace {
constexpr int W = 4000, H = 3000;
constexpr size_t Stride = W + 1;

struct Picture {
    std::vector<uint8_t> r, g, b, a;
    uint8_t gr[256], gg[256], gb[256], ga[256];
    Picture() {
        for (auto* p : {&r, &g, &b, &a}) p->assign(Stride * (H + 1), 128);
        for (int i = 0; i < 256; ++i)
            gr[i] = static_cast<uint8_t>(i), gg[i] = static_cast<uint8_t>(255 - i), gb[i] = 90, ga[i] = 255;
    }
};

Picture& Pic() {
    static Picture p;
    return p;
}

void BM_LinearGradient(benchmark::State& state) {
    Picture& p = Pic();
    const bool masked = state.range(0) != 0;
    for (int i = 0; i < 256; ++i) p.ga[i] = masked ? static_cast<uint8_t>(i | 1) : 255;
    kwlinear::Planes planes;
    planes.r = p.r.data(), planes.g = p.g.data(), planes.b = p.b.data(), planes.a = p.a.data();
    planes.stride = Stride;
    planes.alphaOff = masked ? 0 : 255;
    // A drag from (1000, 800) to (2200, 1900), as the tool works it out.
    const float d = std::hypot(1200.0f, 1100.0f), s = d / 255, a = std::atan2(1100.0f, -1200.0f);
    const float cx = std::cos(a) / s, cy = -std::sin(a) / s, start = -(1000 * cx + 800 * cy);
    for (auto _ : state) {
        kwlinear::LinearGradient(planes, W, H, start, cx, cy, {p.gr, p.gg, p.gb, p.ga});
        benchmark::DoNotOptimize(p.r.data());
    }
    state.SetLabel(masked ? "half-transparent, alpha on" : "opaque, no alpha");
}
BENCHMARK(BM_LinearGradient)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

void BM_WriteThreePlanes(benchmark::State& state) {
    Picture& p = Pic();
    uint8_t* planes[3] = {p.r.data(), p.g.data(), p.b.data()};
    uint8_t v = 0;
    for (auto _ : state) {
        for (int y = 0; y < H; ++y)
            for (uint8_t* plane : planes) std::memset(plane + static_cast<size_t>(y) * Stride, v + y, W);
        ++v;
        benchmark::DoNotOptimize(p.r.data());
    }
}
BENCHMARK(BM_WriteThreePlanes)->Unit(benchmark::kMillisecond);

// The walk alone, eight rows at a time: what the gradient costs before any colour is written.
void BM_StepsOnly(benchmark::State& state) {
    std::vector<uint8_t> idx(8 * W);
    for (auto _ : state) {
        float acc = 10;
        for (int y0 = 0; y0 < H; y0 += 8) kwlinear::LinearSteps(acc, -0.15f, 0.13f, W, 8, idx.data());
        benchmark::DoNotOptimize(idx.data());
    }
}
BENCHMARK(BM_StepsOnly)->Unit(benchmark::kMillisecond);
}  // namespace

BENCHMARK_MAIN();
