// Display kernel timings. A full 1:1 refresh of a 4000 x 3000 picture writes a
// 48 MB screen image; it is measured against one memcpy of the same size, and
// against OpenCV's cv::merge of the same three planes and a zero plane into
// four channels (the same bytes) at view size and at full size, when OpenCV is
// there. RedisplayWindow is the whole redisplay of a 1920 x 1080 view.
#include <benchmark/benchmark.h>

#ifdef KW_HAVE_OPENCV
#include <opencv2/core.hpp>
#endif

#include "core/display/Display.h"
#include "core/document/Buffers.h"
#include "core/frame/Form2.h"
#include "core/frame/MDIForm1.h"
#include "core/framework/AppState.h"
#include "core/framework/MixTables.h"
#include "tests/support/ScriptedHost.h"

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "native/kwpaint.h"

namespace {

constexpr int kW = 4000;
constexpr int kH = 3000;
constexpr size_t kPlaneBytes = size_t(kW + 1) * (kH + 1);
constexpr size_t kScreenBytes = size_t(kW) * kH * sizeof(uint32_t);  // 48 MB

std::vector<uint8_t> MakePlane(uint32_t seed) {
    std::vector<uint8_t> plane(kPlaneBytes);
    uint32_t s = seed;
    for (auto& v : plane) {
        s = s * 1664525u + 1013904223u;
        v = static_cast<uint8_t>(s >> 24);
    }
    return plane;
}

// Built once, shared by every benchmark.
struct Picture {
    std::vector<uint8_t> r = MakePlane(1), g = MakePlane(2), b = MakePlane(3);
    std::vector<uint8_t> sr = MakePlane(4), sg = MakePlane(5), sb = MakePlane(6);
    std::vector<uint8_t> table = std::vector<uint8_t>(256 * 256);
    Picture() {
        for (int s = 0; s < 256; ++s)
            for (int m = 0; m < 256; ++m) table[m + 256 * s] = static_cast<uint8_t>((m * 3 + s) / 4);
    }
};

const Picture& Pic() {
    static const Picture picture;
    return picture;
}

// A screen image that has already been written once, so no benchmark pays for
// first-touch page faults.
std::vector<uint32_t> Screen(size_t pixels) { return std::vector<uint32_t>(pixels, 0x00ABCDEFu); }

void BM_Memcpy48MB(benchmark::State& state) {
    std::vector<uint32_t> src = Screen(size_t(kW) * kH);
    std::vector<uint32_t> dst = Screen(size_t(kW) * kH);
    for (auto _ : state) {
        std::memcpy(dst.data(), src.data(), kScreenBytes);
        benchmark::DoNotOptimize(dst.data());
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(int64_t(state.iterations()) * int64_t(kScreenBytes));
}
BENCHMARK(BM_Memcpy48MB)->Unit(benchmark::kMillisecond);

void BM_FastRefresh32(benchmark::State& state) {
    const Picture& p = Pic();
    std::vector<uint32_t> dst = Screen(size_t(kW) * kH);
    for (auto _ : state) {
        kwpaint::FastRefresh32(dst.data(), 0, 0, kW, kH, p.r.data(), p.g.data(), p.b.data(), kW, kH, kW, kH);
        benchmark::DoNotOptimize(dst.data());
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(int64_t(state.iterations()) * int64_t(kScreenBytes));
}
BENCHMARK(BM_FastRefresh32)->Unit(benchmark::kMillisecond);

// The row converters on their own over the full picture, with ordinary
// stores: what FastRefresh32 would cost without streaming.
void BM_PackRows(benchmark::State& state) {
    const bool vector = state.range(0) != 0;
    const Picture& p = Pic();
    std::vector<uint32_t> dst = Screen(size_t(kW) * kH);
    for (auto _ : state) {
        for (int y = 0; y < kH; ++y) {
            const size_t src = size_t(y) * (kW + 1);
            uint32_t* d = dst.data() + size_t(y) * kW;
            if (vector)
                kwpaint::detail::PackRow32Vector(d, p.r.data() + src, p.g.data() + src, p.b.data() + src, kW,
                                                 false);
            else
                kwpaint::detail::PackRow32Scalar(d, p.r.data() + src, p.g.data() + src, p.b.data() + src, kW);
        }
        benchmark::DoNotOptimize(dst.data());
        benchmark::ClobberMemory();
    }
    state.SetLabel(vector ? "sse2, cached stores" : "plain loop");
    state.SetBytesProcessed(int64_t(state.iterations()) * int64_t(kScreenBytes));
}
BENCHMARK(BM_PackRows)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

void BM_FastRefresh_Mix32(benchmark::State& state) {
    const Picture& p = Pic();
    std::vector<uint32_t> dst = Screen(size_t(kW) * kH);
    for (auto _ : state) {
        kwpaint::FastRefresh_Mix32(dst.data(), 0, 0, kW, kH, p.r.data(), p.g.data(), p.b.data(), p.sr.data(),
                                   p.sg.data(), p.sb.data(), p.table.data(), kW, kH, kW, kH);
        benchmark::DoNotOptimize(dst.data());
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(int64_t(state.iterations()) * int64_t(kScreenBytes));
}
BENCHMARK(BM_FastRefresh_Mix32)->Unit(benchmark::kMillisecond);

// Zoomed: arg is the zoom. At 600 % a 1920 x 1080 viewport looks at the middle
// of the 24000 x 18000 window; at 50 % the dest holds the whole 2000 x 1500
// window.
void BM_RefreshFromBuffs(benchmark::State& state) {
    const int zoom = static_cast<int>(state.range(0));
    const int winW = int(int64_t(kW) * zoom / 100);
    const int winH = int(int64_t(kH) * zoom / 100);
    const int destW = zoom > 100 ? 1920 : winW;
    const int destH = zoom > 100 ? 1080 : winH;
    const int orgX = (winW - destW) / 2;
    const int orgY = (winH - destH) / 2;
    const Picture& p = Pic();
    std::vector<uint32_t> dst = Screen(size_t(destW) * destH);
    for (auto _ : state) {
        kwpaint::RefreshFromBuffs(dst.data(), orgX, orgY, orgX + destW, orgY + destH, p.r.data(), p.g.data(),
                                  p.b.data(), destW, destH, kW, kH, zoom, orgX, orgY);
        benchmark::DoNotOptimize(dst.data());
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(int64_t(state.iterations()) * int64_t(dst.size() * sizeof(uint32_t)));
}
BENCHMARK(BM_RefreshFromBuffs)->Arg(600)->Arg(50)->Unit(benchmark::kMillisecond);

// The view a 1920 x 1080 canvas shows at 100 %, from the middle of the picture.
constexpr int kViewW = 1920, kViewH = 1080, kViewX = 1000, kViewY = 900;

void FastRefreshAt(benchmark::State& state, int x0, int y0, int w, int h) {
    const Picture& p = Pic();
    std::vector<uint32_t> dst = Screen(size_t(w) * h);
    for (auto _ : state) {
        kwpaint::FastRefresh32(dst.data(), x0, y0, x0 + w, y0 + h, p.r.data(), p.g.data(), p.b.data(), w, h, kW, kH,
                               x0, y0);
        benchmark::DoNotOptimize(dst.data());
        benchmark::ClobberMemory();
    }
    state.SetLabel(kwpaint::detail::HaveAvx2() ? "avx2" : "sse2");
    state.SetBytesProcessed(int64_t(state.iterations()) * int64_t(dst.size() * sizeof(uint32_t)));
}
void BM_FastRefresh32_View(benchmark::State& state) { FastRefreshAt(state, kViewX, kViewY, kViewW, kViewH); }
BENCHMARK(BM_FastRefresh32_View)->Unit(benchmark::kMillisecond);
void BM_FastRefresh32_Full(benchmark::State& state) { FastRefreshAt(state, 0, 0, kW, kH); }
BENCHMARK(BM_FastRefresh32_Full)->Unit(benchmark::kMillisecond);

// The document of the redisplay benchmarks: 4000 x 3000, its planes holding
// the benchmark picture, the view at 1920 x 1080 from the middle, and the
// listeners the program connects to a redisplay (the preview and info box of
// the tool panel, the frame's title), so that a redisplay here does all that
// one does in the program.
void OpenViewDocument() {
    static ScriptedHost* host = new ScriptedHost();  // lives for the run
    static const bool wired = [] {
        DisplayRedrawn.listen(Form2::AfterRedisplay);
        DisplayRedrawn.listen(MDIForm1::TitleAfterRedisplay);
        return true;
    }();
    (void)wired;
    host->surface = CanvasSurface{kViewW, kViewH, 32, kViewX, kViewY};
    BuildMixTables(nullptr);
    SetBufferSize(kW, kH);
    CreateNewDocument(false);
    const Picture& p = Pic();
    std::memcpy(BufR.data(), p.r.data(), kPlaneBytes);
    std::memcpy(BufG.data(), p.g.data(), kPlaneBytes);
    std::memcpy(BufB.data(), p.b.data(), kPlaneBytes);
    DemensionRefreshBuff();
    RedisplayWindow();
}

// The whole RedisplayWindow of a 1920 x 1080 view of a 4000 x 3000 document.
void BM_RedisplayWindow_View(benchmark::State& state) {
    OpenViewDocument();
    for (auto _ : state) {
        RedisplayWindow();
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(int64_t(state.iterations()) * int64_t(kViewW) * kViewH * int64_t(sizeof(uint32_t)));
}
BENCHMARK(BM_RedisplayWindow_View)->Unit(benchmark::kMillisecond);

// The same redisplay with the tool panel's preview left out (a silent run):
// what the preview costs is the difference.
void BM_RedisplayWindow_View_NoPreview(benchmark::State& state) {
    OpenViewDocument();
    App.Silent = 1;
    for (auto _ : state) {
        RedisplayWindow();
        benchmark::ClobberMemory();
    }
    App.Silent = 0;
}
BENCHMARK(BM_RedisplayWindow_View_NoPreview)->Unit(benchmark::kMillisecond);

// The tool panel's preview alone, as a redisplay finds the cache: each time
// after the view's refresh (not timed) has streamed the view through it.
void BM_Picture27_Paint(benchmark::State& state) {
    OpenViewDocument();
    for (auto _ : state) {
        state.PauseTiming();
        kwpaint::FastRefresh32(RefreshBuff32.data(), kViewX, kViewY, kViewX + kViewW, kViewY + kViewH, BufR.data(),
                               BufG.data(), BufB.data(), RefreshStride32, RefreshRows32, kW, kH, kViewX, kViewY);
        state.ResumeTiming();
        Form2::Picture27_Paint();
        benchmark::ClobberMemory();
    }
    state.SetLabel(std::to_string(Form2::Picture27.Width) + " x " + std::to_string(Form2::Picture27.Height));
}
BENCHMARK(BM_Picture27_Paint)->Unit(benchmark::kMicrosecond);

#ifdef KW_HAVE_OPENCV
// cv::merge of B, G, R and a zero plane: the bytes B, G, R, 0 of each pixel are
// the 0x00RRGGBB words of the refresh. The planes are views with the planes'
// own stride, as the refresh reads them.
void MergeAt(benchmark::State& state, int x0, int y0, int w, int h) {
    cv::setNumThreads(1);
    Picture& p = const_cast<Picture&>(Pic());
    auto view = [&](std::vector<uint8_t>& plane) {
        return cv::Mat(kH, kW, CV_8UC1, plane.data(), size_t(kW) + 1)(cv::Rect(x0, y0, w, h));
    };
    std::vector<uint8_t> zeros(kPlaneBytes, 0);
    std::vector<cv::Mat> planes = {view(p.b), view(p.g), view(p.r), view(zeros)};
    std::vector<uint32_t> dst = Screen(size_t(w) * h);
    cv::Mat out(h, w, CV_8UC4, dst.data());
    for (auto _ : state) {
        cv::merge(planes, out);
        benchmark::DoNotOptimize(dst.data());
        benchmark::ClobberMemory();
    }
    // The peer must give the same image, or the comparison means nothing.
    std::vector<uint32_t> ours(dst.size());
    kwpaint::FastRefresh32(ours.data(), x0, y0, x0 + w, y0 + h, p.r.data(), p.g.data(), p.b.data(), w, h, kW, kH, x0,
                           y0);
    if (ours != dst) state.SkipWithError("cv::merge gave other bytes");
    state.SetBytesProcessed(int64_t(state.iterations()) * int64_t(dst.size() * sizeof(uint32_t)));
}
void BM_CvMerge_View(benchmark::State& state) { MergeAt(state, kViewX, kViewY, kViewW, kViewH); }
BENCHMARK(BM_CvMerge_View)->Unit(benchmark::kMillisecond);
void BM_CvMerge_Full(benchmark::State& state) { MergeAt(state, 0, 0, kW, kH); }
BENCHMARK(BM_CvMerge_Full)->Unit(benchmark::kMillisecond);
#else
// Under the names the table looks for, so that its rows say why they have no ratio.
void MergeMissing(benchmark::State& state) {
    for (auto _ : state) {}
    state.SkipWithError("OpenCV is not installed: no cv::merge peer (scripts/install-deps.sh --bench)");
}
void BM_CvMerge_View(benchmark::State& state) { MergeMissing(state); }
BENCHMARK(BM_CvMerge_View)->Unit(benchmark::kMillisecond);
void BM_CvMerge_Full(benchmark::State& state) { MergeMissing(state); }
BENCHMARK(BM_CvMerge_Full)->Unit(benchmark::kMillisecond);
#endif

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
