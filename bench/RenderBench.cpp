// The render and mesh warp kernels on a 4000 x 3000 picture, driven as the
// procedures drive them (rows split over the threads), without the panels.
// The Perlin Bumpy toy (5 octaves at scale 2, through a gradient into three
// planes) against libvips summing the same 5 octaves of its perlin noise into
// one byte image, vips held to one thread; ours on 1 or 2 threads (the
// argument). The mesh warp's full resample against one bilinear resample pass
// of the three planes at the same size. One drag step of the mesh preview:
// the vectors rebuilt and the 400-pixel preview drawn. Time one thread under
// taskset -c 1. libvips works on threads of its own while the calling thread
// waits, so the Perlin pair counts the CPU time of the whole process: the
// calling thread's alone would leave out all of vips' work.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <memory>
#include <random>
#include <vector>

#include "native/FilterThreads.h"
#include "native/MeshWarp.h"
#include "native/Noise.h"
#include "native/RenderKernels.h"
#include "native/Resample.h"

#ifdef KW_HAVE_VIPS
#include <vips/vips.h>
#endif

namespace {
constexpr int W = 4000, H = 3000;
constexpr size_t PlaneBytes = static_cast<size_t>(W + 1) * (H + 1);

struct Planes {
    std::vector<uint8_t> r, g, b, ur, ug, ub, grad;
    Planes() {
        std::mt19937 rng(3);
        for (auto* p : {&r, &g, &b, &ur, &ug, &ub}) {
            p->resize(PlaneBytes);
            for (auto& v : *p) v = static_cast<uint8_t>(rng() >> 24);
        }
        grad.resize(768);
        for (int i = 0; i < 768; ++i) grad[i] = static_cast<uint8_t>(i);
    }
};
Planes& P() {
    static Planes p;
    return p;
}

void BM_BumpyPerlin5(benchmark::State& state) {
    auto& p = P();
    kwthreads::SetThreads(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        std::unique_ptr<kwfilter::PerlinColumns, void (*)(kwfilter::PerlinColumns*)> columns(
            kwfilter::MakePerlinColumns(W, 5, 2), kwfilter::FreePerlinColumns);
        kwthreads::ForRows(H, [&](int y0, int y1) {
            std::vector<float> acc(W);
            for (int y = y0; y < y1; ++y) {
                const size_t row = static_cast<size_t>(y) * (W + 1);
                kwfilter::PerlinOctaveRow(columns.get(), y, acc.data());
                kwfilter::AccThroughGradient(&p.r[row], &p.g[row], &p.b[row], acc.data(), 5, p.grad.data(), W);
            }
        });
        benchmark::DoNotOptimize(p.r.data());
    }
}
BENCHMARK(BM_BumpyPerlin5)->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();

#ifdef KW_HAVE_VIPS
// Octave i at the cell size ours has (scale 2: 10 * i pixels), summed, scaled
// as ours is ((n * 256 + 128) summed, / 5), cast to bytes in memory.
void BM_VipsPerlin5(benchmark::State& state) {
    static bool started = false;
    if (!started) {
        if (VIPS_INIT("bench")) return state.SkipWithError("vips did not start");
        vips_concurrency_set(1);
        vips_cache_set_max(0);
        started = true;
    }
    for (auto _ : state) {
        VipsImage* sum = nullptr;
        for (int i = 1; i <= 5; ++i) {
            VipsImage* octave = nullptr;
            vips_perlin(&octave, W, H, "cell_size", 10 * i, nullptr);
            if (!sum) {
                sum = octave;
                continue;
            }
            VipsImage* added = nullptr;
            vips_add(sum, octave, &added, nullptr);
            g_object_unref(sum), g_object_unref(octave);
            sum = added;
        }
        VipsImage *scaled = nullptr, *bytes = nullptr;
        vips_linear1(sum, &scaled, 256.0 / 5, 128.0, nullptr);
        vips_cast_uchar(scaled, &bytes, nullptr);
        size_t size = 0;
        void* mem = vips_image_write_to_memory(bytes, &size);
        benchmark::DoNotOptimize(mem);
        g_free(mem);
        g_object_unref(bytes), g_object_unref(scaled), g_object_unref(sum);
    }
}
#else
void BM_VipsPerlin5(benchmark::State& state) {
    for (auto _ : state) {}
    state.SkipWithError("libvips is not installed: no perlin peer (scripts/install-deps.sh --bench)");
}
#endif
BENCHMARK(BM_VipsPerlin5)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();

struct MeshData {
    std::vector<int16_t> X, Y;
    MeshData() : X(9 * 7), Y(9 * 7) {
        for (int r = 0; r <= 5; ++r)
            for (int c = 0; c <= 7; ++c) {
                X[r * 9 + c] = static_cast<int16_t>((c * 7 + r * 3) % 23 - 11);
                Y[r * 9 + c] = static_cast<int16_t>((c * 5 + r * 11) % 19 - 9);
            }
    }
    kwmesh::Mesh mesh() const { return {X.data(), Y.data(), 8, 6}; }
};

void BM_ApplyMorph(benchmark::State& state) {
    auto& p = P();
    const MeshData m;
    kwthreads::SetThreads(static_cast<int>(state.range(0)));
    const uint8_t* const src[3] = {p.ur.data(), p.ug.data(), p.ub.data()};
    uint8_t* const dst[3] = {p.r.data(), p.g.data(), p.b.data()};
    for (auto _ : state) {
        kwthreads::ForRows(H, [&](int y0, int y1) { kwmesh::ApplyMorphRows(m.mesh(), 7, 5, src, dst, W, H, y0, y1); });
        benchmark::DoNotOptimize(p.r.data());
    }
}
BENCHMARK(BM_ApplyMorph)->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_BilinearPass(benchmark::State& state) {
    auto& p = P();
    for (auto _ : state) {
        kwresample::Bilinear(p.ur.data(), W, H, p.r.data(), W, H);
        kwresample::Bilinear(p.ug.data(), W, H, p.g.data(), W, H);
        kwresample::Bilinear(p.ub.data(), W, H, p.b.data(), W, H);
        benchmark::DoNotOptimize(p.r.data());
    }
}
BENCHMARK(BM_BilinearPass)->Unit(benchmark::kMillisecond)->UseRealTime();

// One mouse move of a drag: a node moves, the vectors are rebuilt and the
// 400 x 300 preview drawn into the 400 x 400 square.
void BM_MeshPreviewMove(benchmark::State& state) {
    const int ph = 298;
    MeshData m;
    std::vector<int16_t> vx(400 * (ph + 1)), vy(vx.size());
    std::vector<uint32_t> preview(vx.size()), square(400 * 400);
    for (size_t i = 0; i < preview.size(); ++i) preview[i] = static_cast<uint32_t>(i * 2654435761u);
    int16_t d = 0;
    for (auto _ : state) {
        m.X[2 * 9 + 3] = d = static_cast<int16_t>(d == 10 ? -10 : 10);
        kwmesh::ResampleMorphVectors(m.mesh(), 7, 5, ph, vx.data(), vy.data());
        std::fill(square.begin(), square.end(), 0u);
        kwmesh::DrawMeshPreview(preview.data(), vx.data(), vy.data(), ph, square.data(), 400, 50);
        benchmark::DoNotOptimize(square.data());
    }
}
BENCHMARK(BM_MeshPreviewMove)->Unit(benchmark::kMillisecond)->UseRealTime();
}  // namespace

BENCHMARK_MAIN();
