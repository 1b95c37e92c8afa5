// The filter kernels on a 4000 x 3000 picture, the same thread count (the last
// argument, 1 or 2) on both sides; one thread is to be timed under taskset -c 1. Each
// against an honest peer when OpenCV is present: the window blur at half 12 and
// 32 against sepFilter2D with the same normalised 25- and 65-tap float window,
// the value table against LUT, the 3 x 3 box against filter2D. Our side works
// three planes, OpenCV one interleaved picture of the same bytes. The preview of
// "Adjust value" is timed as the user meets it: copy from undo, table, redisplay.
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstring>
#include <random>
#include <vector>

#include "app/Startup.h"
#include "core/document/Buffers.h"
#include "core/framework/MixTables.h"
#include "filter/AdjustValue.h"
#include "native/FilterThreads.h"
#include "native/kwfilter.h"
#include "tests/support/ScriptedHost.h"

#ifdef KW_HAVE_OPENCV_IMGPROC
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>
#endif

namespace {
constexpr int W = 4000, H = 3000;
constexpr size_t PlaneBytes = static_cast<size_t>(W + 1) * (H + 1);

struct Planes {
    std::vector<uint8_t> r, g, b, a, ur, ug, ub, tr, tg, tb;
    Planes() {
        std::mt19937 rng(7);
        for (auto* p : {&r, &g, &b, &a, &ur, &ug, &ub, &tr, &tg, &tb}) {
            p->resize(PlaneBytes);
            for (auto& v : *p) v = static_cast<uint8_t>(rng() >> 24);
        }
    }
};

Planes& P() {
    static Planes p;
    return p;
}

std::vector<float> Window(int half) {
    const int r = 2 * half;
    std::vector<float> w(half + 3, 0.0f);
    for (int i = 0; i <= half; ++i) w[i] = static_cast<float>((std::cos((double(i) / r) * 360 * 0.0174) + 1) / 2);
    return w;
}

void BM_FastGaussian(benchmark::State& state) {
    const int half = static_cast<int>(state.range(0));
    kwthreads::SetThreads(static_cast<int>(state.range(1)));
    auto& p = P();
    const auto w = Window(half);
    for (auto _ : state) {
        kwfilter::xFastGaussPass1(p.tr.data(), p.tg.data(), p.tb.data(), p.ur.data(), p.ug.data(), p.ub.data(), W, H,
                                  w.data(), half);
        kwfilter::xFastGaussPass2(p.r.data(), p.g.data(), p.b.data(), p.tr.data(), p.tg.data(), p.tb.data(), W, H,
                                  w.data(), half);
        benchmark::DoNotOptimize(p.r.data());
    }
}
BENCHMARK(BM_FastGaussian)->ArgsProduct({{12, 32}, {1, 2}})->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_SetValue(benchmark::State& state) {
    kwthreads::SetThreads(static_cast<int>(state.range(0)));
    auto& p = P();
    uint8_t lut[256];
    for (int i = 0; i < 256; ++i) lut[i] = static_cast<uint8_t>(255 - i);
    for (auto _ : state) {
        kwfilter::SetValue(p.r.data(), p.g.data(), p.b.data(), lut, W, H);
        benchmark::DoNotOptimize(p.r.data());
    }
}
BENCHMARK(BM_SetValue)->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_ConvolveAlpha(benchmark::State& state) {
    kwthreads::SetThreads(static_cast<int>(state.range(0)));
    auto& p = P();
    const kwfilter::Weights3x3 box{{1, 1, 1, 1, 1, 1, 1, 1, 1}};
    for (auto _ : state) {
        kwfilter::ConvolveAlpha(p.r.data(), p.g.data(), p.b.data(), p.ur.data(), p.ug.data(), p.ub.data(), p.a.data(),
                                255, W, H, box, 9, 0);
        benchmark::DoNotOptimize(p.r.data());
    }
}
BENCHMARK(BM_ConvolveAlpha)->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond)->UseRealTime();

// The whole slider step of "Adjust value" through the logic, on a 1600 x 1000
// visible canvas: undo copy, table, SetValue and the redisplay.
void BM_AdjustValuePreview(benchmark::State& state) {
    kwthreads::SetThreads(2);
    static ScriptedHost host;
    static bool made = false;
    if (!made) {
        BuildMixTables(nullptr);
        host.surface = CanvasSurface{1600, 1000, 32, 0, 0};
        MakeTestDocument(W, H);
        made = true;
    }
    float b = 120, c = 10, g = 95;
    ValueSliding = 255;
    for (auto _ : state) {
        b = b == 120 ? 121 : 120;
        AddjustValue(b, c, g);
    }
    ValueSliding = 0;
}
BENCHMARK(BM_AdjustValuePreview)->Unit(benchmark::kMillisecond)->UseRealTime();

#ifdef KW_HAVE_OPENCV_IMGPROC
cv::Mat& Interleaved() {
    static cv::Mat m = [] {
        cv::Mat x(H, W, CV_8UC3);
        cv::randu(x, 0, 256);
        return x;
    }();
    return m;
}

void BM_OpenCV_SepFilter2D(benchmark::State& state) {
    const int half = static_cast<int>(state.range(0));
    cv::setNumThreads(static_cast<int>(state.range(1)));
    const auto w = Window(half);
    std::vector<float> k(2 * half + 1);
    float sum = w[0];
    for (int i = 1; i <= half; ++i) sum += 2 * w[i];
    for (int i = -half; i <= half; ++i) k[i + half] = w[std::abs(i)] / sum;
    cv::Mat kernel(1, 2 * half + 1, CV_32F, k.data()), out;
    for (auto _ : state) {
        cv::sepFilter2D(Interleaved(), out, CV_8U, kernel, kernel, cv::Point(-1, -1), 0, cv::BORDER_REPLICATE);
        benchmark::DoNotOptimize(out.data);
    }
}
BENCHMARK(BM_OpenCV_SepFilter2D)->ArgsProduct({{12, 32}, {1, 2}})->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_OpenCV_LUT(benchmark::State& state) {
    cv::setNumThreads(static_cast<int>(state.range(0)));
    cv::Mat lut(1, 256, CV_8U);
    for (int i = 0; i < 256; ++i) lut.at<uint8_t>(i) = static_cast<uint8_t>(255 - i);
    cv::Mat out;
    for (auto _ : state) {
        cv::LUT(Interleaved(), lut, out);
        benchmark::DoNotOptimize(out.data);
    }
}
BENCHMARK(BM_OpenCV_LUT)->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_OpenCV_Filter2D3x3(benchmark::State& state) {
    cv::setNumThreads(static_cast<int>(state.range(0)));
    cv::Mat kernel(3, 3, CV_32F, cv::Scalar(1.0f / 9)), out;
    for (auto _ : state) {
        cv::filter2D(Interleaved(), out, CV_8U, kernel, cv::Point(-1, -1), 0, cv::BORDER_REPLICATE);
        benchmark::DoNotOptimize(out.data);
    }
}
BENCHMARK(BM_OpenCV_Filter2D3x3)->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond)->UseRealTime();
#endif
}  // namespace

BENCHMARK_MAIN();
