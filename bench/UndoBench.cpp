// The snapshot taken at every press and the undo that restores it, on a 4000 x
// 3000 document, beside plain memory copies: seven plane copies (what a
// snapshot with a separate clean copy costs), four planes read and seven
// written (the same, reading each source once), and four plane copies (the
// snapshot whose slot is the clean copy, as SaveUndo takes it now).
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstring>
#include <vector>

#include "core/framework/AppState.h"
#include "core/document/Buffers.h"
#include "core/display/Display.h"
#include "core/framework/MixTables.h"
#include "core/document/Undo.h"
#include "tests/support/ScriptedHost.h"

namespace {
constexpr int W = 4000, H = 3000;
constexpr size_t PlaneBytes = static_cast<size_t>(W + 1) * (H + 1);

struct Document {
    Document() {
        static ScriptedHost* host = new ScriptedHost();  // lives for the run
        host->surface = CanvasSurface{1920, 1080, 32, 0, 0};
        App.UndoMegs = 14;  // too small for this size: the ring keeps its two slots
        SetBufferSize(W, H);
        CreateNewDocument(false);
        DisplayBroken = 255;  // measure the copies, not the conversion
    }
};
Document& Doc() {
    static Document d;
    return d;
}

// n plain copies of one plane each, from n planes into n planes already in use.
void PlaneCopies(benchmark::State& state, int n) {
    std::vector<std::vector<uint8_t>> src(n, std::vector<uint8_t>(PlaneBytes, 1));
    std::vector<std::vector<uint8_t>> dst(n, std::vector<uint8_t>(PlaneBytes, 2));
    for (auto _ : state) {
        for (int i = 0; i < n; ++i) std::memcpy(dst[i].data(), src[i].data(), PlaneBytes);
        benchmark::ClobberMemory();
    }
}

void BM_SevenPlaneCopies(benchmark::State& state) {
    PlaneCopies(state, 7);
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * 7 * PlaneBytes);
}
BENCHMARK(BM_SevenPlaneCopies)->Unit(benchmark::kMillisecond)->UseRealTime();

// Four planes read, each written to its slot and (colour planes) to a clean copy.
void BM_FourReadSevenWritten(benchmark::State& state) {
    std::vector<std::vector<uint8_t>> src(4, std::vector<uint8_t>(PlaneBytes, 1));
    std::vector<std::vector<uint8_t>> dst(7, std::vector<uint8_t>(PlaneBytes, 2));
    for (auto _ : state) {
        // Block by block, so the second copy of a colour plane reads from cache.
        constexpr size_t Block = 32 * 1024;
        for (int i = 0; i < 4; ++i)
            for (size_t off = 0; off < PlaneBytes; off += Block) {
                const size_t n = std::min(Block, PlaneBytes - off);
                std::memcpy(dst[i].data() + off, src[i].data() + off, n);
                if (i < 3) std::memcpy(dst[4 + i].data() + off, src[i].data() + off, n);
            }
        benchmark::ClobberMemory();
    }
}
BENCHMARK(BM_FourReadSevenWritten)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_SaveUndo(benchmark::State& state) {
    Doc();
    for (auto _ : state) {
        SaveUndo();
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * 7 * PlaneBytes);
}
BENCHMARK(BM_SaveUndo)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_FourPlaneCopies(benchmark::State& state) { PlaneCopies(state, 4); }
BENCHMARK(BM_FourPlaneCopies)->Unit(benchmark::kMillisecond)->UseRealTime();

// Undo after undo: each step restores one slot with block copies.
void BM_RepaintUndo(benchmark::State& state) {
    Doc();
    SaveUndo();
    RepaintUndo();  // the first step from a fresh snapshot keeps the present picture
    for (auto _ : state) {
        RepaintUndo();
        benchmark::ClobberMemory();
    }
}
BENCHMARK(BM_RepaintUndo)->Unit(benchmark::kMillisecond)->UseRealTime();
}  // namespace

int main(int argc, char** argv) {
    BuildMixTables(nullptr);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
