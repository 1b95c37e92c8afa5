// Animation timings on a 1920 x 1080 document.
//  - A frame change through GotoFrame (StoreFrame, GetFrame and the redisplay
//    of the whole visible canvas) against its floor: the six plane copies and
//    one FastRefresh32 of the same planes into the same screen image.
//  - Playback of 100 frames at 30 frames per second on a Qt timer, as the
//    program drives the frame timer model: the achieved rate and the late ticks. The
//    screen image is converted; the widget's paint is not part of it.
#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTimer>

#include <algorithm>
#include <cstring>

#include "anim/FrameStore.h"
#include "anim/Transport.h"
#include "core/display/Display.h"
#include "core/document/Buffers.h"
#include "core/frame/Form2.h"
#include "core/frame/MDIForm1.h"
#include "native/kwpaint.h"
#include "tests/support/ScriptedHost.h"

namespace {
constexpr int kW = 1920, kH = 1080;

struct Setup {
    ScriptedHost host;
    explicit Setup(int frames) {
        // As the program connects them: the preview and the title follow a
        // redisplay, and the frame timer runs the transport's procedure.
        static const bool wired = [] {
            DisplayRedrawn.listen(Form2::AfterRedisplay);
            DisplayRedrawn.listen(MDIForm1::TitleAfterRedisplay);
            MDIForm1::Anim_Timer.Tick = MDIForm1::Anim_Timer_Timer;
            return true;
        }();
        (void)wired;
        host.surface = CanvasSurface{kW, kH, 32, 0, 0};
        MakeTestDocument(kW, kH);
        for (size_t i = 0; i < BufR.count(); ++i) BufR.data()[i] = static_cast<uint8_t>(i * 7);
        CreateAnim(frames);
        for (int f = 0; f < frames; ++f) std::memset(AnimG.frame(f), f * 2, AnimG.frameBytes());
        RedisplayWindow();
    }
    ~Setup() {
        MDIForm1::Anim_Timer.TimerEnabled = false;
        FreeAnim();
    }
};

void BM_FrameChange(benchmark::State& state) {
    Setup s(2);
    int f = 0;
    for (auto _ : state) {
        f ^= 1;
        GotoFrame(f);
        benchmark::DoNotOptimize(RefreshBuff32.data());
        benchmark::ClobberMemory();
    }
}
BENCHMARK(BM_FrameChange)->Unit(benchmark::kMillisecond);

// The same memory, the same copies and the same conversion, without the store's logic.
void BM_SixCopiesAndFastRefresh32(benchmark::State& state) {
    Setup s(2);
    int f = 0;
    FrameArray* frames[3] = {&AnimR, &AnimG, &AnimB};
    Plane* planes[3] = {&BufR, &BufG, &BufB};
    for (auto _ : state) {
        for (int i = 0; i < 3; ++i) std::memcpy(frames[i]->frame(f), planes[i]->data(), planes[i]->count());
        f ^= 1;
        for (int i = 0; i < 3; ++i) std::memcpy(planes[i]->data(), frames[i]->frame(f), planes[i]->count());
        kwpaint::FastRefresh32(RefreshBuff32.data(), 0, 0, kW, kH, BufR.data(), BufG.data(), BufB.data(),
                               RefreshStride32, RefreshRows32, kW, kH);
        benchmark::DoNotOptimize(RefreshBuff32.data());
        benchmark::ClobberMemory();
    }
}
BENCHMARK(BM_SixCopiesAndFastRefresh32)->Unit(benchmark::kMillisecond);

// 100 frames at 30 frames per second. A tick more than half an interval late
// counts as a dropped frame.
void BM_Playback100At30(benchmark::State& state) {
    Setup s(100);
    int argc = 1;
    char name[] = "bench_anim";
    char* argv[] = {name, nullptr};
    QCoreApplication app(argc, argv);
    for (auto _ : state) {
        MDIForm1::Anim_Framerate.Text = "30";
        MDIForm1::Anim_Play_Click();
        const int interval = MDIForm1::Anim_Timer.Interval;
        QTimer timer;
        timer.setTimerType(Qt::PreciseTimer);
        timer.setInterval(interval);
        QElapsedTimer clock;
        int ticks = 0, late = 0;
        double last = 0, worstGap = 0, worstWork = 0;
        QObject::connect(&timer, &QTimer::timeout, [&] {
            const double now = clock.nsecsElapsed() / 1e6;
            if (ticks > 0) {
                worstGap = std::max(worstGap, now - last);
                if (now - last > 1.5 * interval) ++late;
            }
            last = now;
            MDIForm1::Anim_Timer.fire();
            worstWork = std::max(worstWork, clock.nsecsElapsed() / 1e6 - now);
            if (++ticks == 100) QCoreApplication::quit();
        });
        clock.start();
        timer.start();
        QCoreApplication::exec();
        timer.stop();
        const double seconds = last / 1000.0;
        state.counters["fps"] = (ticks - 1) / seconds;
        state.counters["late_ticks"] = late;
        state.counters["worst_gap_ms"] = worstGap;
        state.counters["worst_tick_ms"] = worstWork;
        MDIForm1::Anim_Stop_Click();
    }
}
BENCHMARK(BM_Playback100At30)->Iterations(1)->UseRealTime()->Unit(benchmark::kMillisecond);
}  // namespace

BENCHMARK_MAIN();
