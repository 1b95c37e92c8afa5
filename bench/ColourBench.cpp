// The whole-buffer fill of a 4000 x 3000 picture, measured against a plain fill
// of the three planes with one colour (std::fill_n per row) in the same run.
// Buffer_Fill_Click includes its undo snapshot and the redisplay of a
// 1600 x 1000 view; DeliverFill is its pixel loop alone.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <vector>

#include "colour/DeliverPixel.h"
#include "colour/Gradients.h"
#include "colour/Paper.h"
#include "core/framework/AppState.h"
#include "core/document/Buffers.h"
#include "core/display/Display.h"
#include "core/frame/Form2.h"
#include "core/framework/Host.h"
#include "core/framework/MixTables.h"
#include "core/framework/vb.h"

namespace {
constexpr int kW = 4000, kH = 3000;

class BenchHost : public Host {
public:
    void ShowForm(Form&, bool, Form*) override {}
    void HideForm(Form&) override {}
    void UnloadForm(Form&) override {}
    void DoEvents() override {}
    CanvasSurface GetCanvasSurface() override { return {1600, 1000, 32, 0, 0}; }
    void SetCanvasWindowSize(int, int) override {}
    void CanvasImageChanged(int, int, int, int) override {}
    std::optional<std::string> OpenFileDialog(FileDialogRequest&) override { return std::nullopt; }
    std::optional<std::string> SaveFileDialog(FileDialogRequest&) override { return std::nullopt; }
    std::optional<uint32_t> ChooseColor(uint32_t) override { return std::nullopt; }
    bool OpenDocument(const std::string&) override { return false; }
    double Clock() override { return 0; }
    void PopupMenu(MenuEntry&) override {}
};

void Prepare() {
    static bool ready = false;
    if (ready) return;
    static BenchHost host;
    SetHost(&host);
    BuildMixTables(nullptr);
    InitGradientData();
    PickStockPaper(1);
    SetBufferSize(kW, kH);
    CreateNewDocument(false);
    DemensionRefreshBuff();
    ready = true;
}

// One fill setting of the panels: 0 solid default, 1 the horizontal gradient
// with colour noise and paper (bumpiness and drybrush), 2 the gradient alone.
void Settings(int setting) {
    const bool fancy = setting == 1;
    App.FillStyle = setting != 0 ? kwmode::FillStyle::Horizontal : kwmode::FillStyle::Colour;
    App.FillMode = kwmode::FillMode::Default;
    App.NoiseAmount = fancy ? 40 : 0;
    App.NoiseMode = fancy ? 1 : 0;
    Form2::Check1.Value = fancy ? 1 : 0;
    Form2::Check2.Value = fancy ? 1 : 0;
    Form2::HScroll4.Value = 255;
    Form2::Shape4.FillColor = 0x3060C0;
    LoadFillOpacity();
}

void BM_PlainFill(benchmark::State& state) {
    Prepare();
    for (auto _ : state) {
        for (int y = 0; y < kH; ++y) {
            std::fill_n(BufR.row(y), kW, uint8_t{0xC0});
            std::fill_n(BufG.row(y), kW, uint8_t{0x60});
            std::fill_n(BufB.row(y), kW, uint8_t{0x30});
        }
        benchmark::ClobberMemory();
    }
}

// The noise draws of the gradient + noise + paper fill alone: a result of the
// generator a pixel, cut into a centred 16-bit draw per channel, as the fill
// takes them, several rows at once.
void BM_FillDrawsAlone(benchmark::State& state) {
    constexpr int rows = 8;
    std::vector<int16_t> draws(3 * static_cast<size_t>(kW) * rows);
    int16_t* const d = draws.data();
    const size_t n = static_cast<size_t>(kW) * rows;
    for (auto _ : state) {
        for (int y = 0; y < kH; y += rows) vb::RndRowNoise(d, d + n, d + 2 * n, n);
        benchmark::DoNotOptimize(draws.data());
        benchmark::ClobberMemory();
    }
}

void BM_DeliverFill(benchmark::State& state) {
    Prepare();
    Settings(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        DeliverFill(0x3060C0);
        benchmark::ClobberMemory();
    }
}

void BM_Buffer_Fill_Click(benchmark::State& state) {
    Prepare();
    Settings(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        Buffer_Fill_Click();
        benchmark::ClobberMemory();
    }
}
}  // namespace

BENCHMARK(BM_PlainFill)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_FillDrawsAlone)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_DeliverFill)->ArgName("setting")->Arg(0)->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Buffer_Fill_Click)->ArgName("setting")->Arg(0)->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond);
BENCHMARK_MAIN();
