// The flood's region search on a 4000 x 3000 picture, one thread (time it under
// taskset -c 1), against OpenCV's floodFill on the same picture in the same run
// when its imgproc module is present. Both sides search four-way with a fixed
// range of the seed colour (tolerance 8 per channel), write a mask only, and
// clear their mask before each search. Ours reads three planes, OpenCV one
// interleaved picture of the same bytes with its mask two pixels wider and taller.
//
// Pictures: one colour throughout (the whole picture is one region), and a
// drawing: 120 dark strokes and 150 discs on a light ground, searched from the
// ground, which winds round all of them.
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstring>
#include <random>
#include <vector>

#include "native/Flood.h"

#ifdef KW_HAVE_OPENCV_IMGPROC
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>
#endif

namespace {
constexpr int W = 4000, H = 3000, Tolerance = 8;
constexpr size_t Stride = W + 1;

struct Picture {
    std::vector<uint8_t> r, g, b, mask;
    int seedX = 0, seedY = 0;
    void dot(int x, int y, uint8_t v) {
        if (x < 0 || y < 0 || x >= W || y >= H) return;
        const size_t i = static_cast<size_t>(y) * Stride + static_cast<size_t>(x);
        r[i] = v, g[i] = static_cast<uint8_t>(v / 2), b[i] = static_cast<uint8_t>(255 - v);
    }
    explicit Picture(bool drawing) {
        for (auto* p : {&r, &g, &b, &mask}) p->assign(Stride * (H + 1), 0);
        for (int y = 0; y < H; ++y)
            for (int x = 0; x < W; ++x) {
                const size_t i = static_cast<size_t>(y) * Stride + static_cast<size_t>(x);
                r[i] = 240, g[i] = 235, b[i] = 220;
            }
        if (!drawing) return;
        std::mt19937 rng(11);
        auto u = [&](int n) { return static_cast<int>(rng() % static_cast<unsigned>(n)); };
        for (int s = 0; s < 120; ++s) {  // strokes three pixels thick
            const int x0 = u(W), y0 = u(H), x1 = x0 + u(1200) - 600, y1 = y0 + u(1200) - 600;
            const int n = std::max(std::abs(x1 - x0), std::abs(y1 - y0)) + 1;
            const uint8_t v = static_cast<uint8_t>(u(120));
            for (int k = 0; k <= n; ++k)
                for (int d = -1; d <= 1; ++d) dot(x0 + (x1 - x0) * k / n + d, y0 + (y1 - y0) * k / n, v);
        }
        for (int c = 0; c < 150; ++c) {  // discs
            const int cx = u(W), cy = u(H), rad = 10 + u(90);
            const uint8_t v = static_cast<uint8_t>(60 + u(100));
            for (int y = -rad; y <= rad; ++y)
                for (int x = -rad; x <= rad; ++x)
                    if (x * x + y * y <= rad * rad) dot(cx + x, cy + y, v);
        }
        // The seed: of 32 tries, the ground pixel whose region is largest.
        int64_t best = -1;
        for (int k = 0; k < 32; ++k) {
            const int x = u(W), y = u(H);
            std::fill(mask.begin(), mask.end(), 0);
            const int64_t n =
                kwflood::floodfrombuff2(x, y, W, H, r.data(), g.data(), b.data(), mask.data(), Stride, Tolerance);
            if (n > best) best = n, seedX = x, seedY = y;
        }
    }
};

Picture& Pic(bool drawing) {
    static Picture uniform(false), drawn(true);
    return drawing ? drawn : uniform;
}

void BM_Flood(benchmark::State& state) {
    Picture& p = Pic(state.range(0) != 0);
    int64_t reached = 0;
    for (auto _ : state) {
        std::memset(p.mask.data(), 0, p.mask.size());
        reached = kwflood::floodfrombuff2(p.seedX, p.seedY, W, H, p.r.data(), p.g.data(), p.b.data(), p.mask.data(),
                                          Stride, Tolerance);
        benchmark::DoNotOptimize(p.mask.data());
    }
    state.counters["pixels"] = static_cast<double>(reached);
    state.SetLabel(state.range(0) ? "drawing" : "uniform");
}
BENCHMARK(BM_Flood)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

#ifdef KW_HAVE_OPENCV_IMGPROC
void BM_OpenCvFloodFill(benchmark::State& state) {
    Picture& p = Pic(state.range(0) != 0);
    cv::Mat image(H, W, CV_8UC3);
    for (int y = 0; y < H; ++y) {
        uint8_t* row = image.ptr<uint8_t>(y);
        for (int x = 0; x < W; ++x) {
            const size_t i = static_cast<size_t>(y) * Stride + static_cast<size_t>(x);
            row[3 * x] = p.b[i], row[3 * x + 1] = p.g[i], row[3 * x + 2] = p.r[i];
        }
    }
    cv::Mat mask(H + 2, W + 2, CV_8UC1);
    int reached = 0;
    const cv::Scalar range(Tolerance, Tolerance, Tolerance);
    for (auto _ : state) {
        mask.setTo(0);
        reached = cv::floodFill(image, mask, cv::Point(p.seedX, p.seedY), cv::Scalar(), nullptr, range, range,
                                4 | cv::FLOODFILL_FIXED_RANGE | cv::FLOODFILL_MASK_ONLY | (255 << 8));
        benchmark::DoNotOptimize(mask.data);
    }
    state.counters["pixels"] = reached;
    state.SetLabel(state.range(0) ? "drawing" : "uniform");
}
BENCHMARK(BM_OpenCvFloodFill)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
#endif
}  // namespace

BENCHMARK_MAIN();
