// A plane of 4000 x 3000 through the automation interface, end to end from a
// client process: the host serves a document of that size in a child process
// of this program on the session bus, and this process gets and sets its red
// plane with the C++ client, against one memcpy of the same plane. Run it
// under dbus-run-session. The work spans two processes, so each iteration is
// timed by the wall clock (manual time), the memcpy too.
#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <chrono>
#include <csignal>
#include <cstring>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include "core/display/Display.h"
#include "core/document/Buffers.h"
#include "plugin/AutomationService.h"
#include "plugins/KelpwickClient.h"
#include "tests/support/ScriptedHost.h"

namespace {
constexpr int W = 4000, H = 3000;
constexpr size_t PlaneBytes = static_cast<size_t>(W + 1) * (H + 1);
const QString Name = "org.kelpwick.Kelpwick";

[[noreturn]] void ServeHost(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    ScriptedHost host;
    SetBufferSize(W, H);
    if (!CreateNewDocument(false)) _exit(3);
    for (int y = 0; y <= H; ++y)
        for (int x = 0; x <= W; ++x) BufR(x, y) = static_cast<uint8_t>(x ^ y);
    if (Automation::StartAutomation().empty()) _exit(4);
    _exit(app.exec());
}

// Runs one iteration and reports its wall-clock time.
template <typename F>
void Timed(benchmark::State& state, F&& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    state.SetIterationTime(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
}

kelpwick::Client& Client() {
    static kelpwick::Client client(Name);
    return client;
}

void BM_GetAndSetPlane(benchmark::State& state) {
    for (auto _ : state) {
        Timed(state, [] {
            kelpwick::MappedPlane red = Client().getPlane("Kel_GetRBuffer");
            Client().setPlane("Kel_SetRbuffer", red.columns(), red.rows(), red.data());
        });
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * 2 * PlaneBytes);
}
BENCHMARK(BM_GetAndSetPlane)->Unit(benchmark::kMillisecond)->UseManualTime();

// Get alone: the mapped plane is read through once, as a plug-in would.
void BM_GetPlane(benchmark::State& state) {
    for (auto _ : state) {
        Timed(state, [] {
            kelpwick::MappedPlane red = Client().getPlane("Kel_GetRBuffer");
            uint64_t sum = 0;
            for (size_t i = 0; i < red.size(); i += 64) sum += red.data()[i];
            benchmark::DoNotOptimize(sum);
        });
    }
}
BENCHMARK(BM_GetPlane)->Unit(benchmark::kMillisecond)->UseManualTime();

void BM_SetPlane(benchmark::State& state) {
    std::vector<uint8_t> plane(PlaneBytes, 7);
    for (auto _ : state) Timed(state, [&] { Client().setPlane("Kel_SetRbuffer", W + 1, H + 1, plane.data()); });
}
BENCHMARK(BM_SetPlane)->Unit(benchmark::kMillisecond)->UseManualTime();

// A call that moves no plane: what the bus itself costs a round trip.
void BM_SmallCall(benchmark::State& state) {
    for (auto _ : state) Timed(state, [] { benchmark::DoNotOptimize(Client().number("Kel_GetAlphabits")); });
}
BENCHMARK(BM_SmallCall)->Unit(benchmark::kMicrosecond)->UseManualTime();

// The peer: one copy of the plane, both buffers touched beforehand.
void BM_MemcpyPlane(benchmark::State& state) {
    std::vector<uint8_t> from(PlaneBytes, 1), to(PlaneBytes, 2);
    for (auto _ : state) {
        Timed(state, [&] {
            std::memcpy(to.data(), from.data(), PlaneBytes);
            benchmark::ClobberMemory();
        });
    }
}
BENCHMARK(BM_MemcpyPlane)->Unit(benchmark::kMillisecond)->UseManualTime();

bool WaitForHost() {
    for (int i = 0; i < 600; ++i) {
        try {
            if (Client().bufferWidth() == W) return true;
        } catch (const kelpwick::Error&) {
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    return false;
}
}  // namespace

int main(int argc, char** argv) {
    const pid_t server = fork();
    if (server == 0) ServeHost(argc, argv);
    QCoreApplication app(argc, argv);
    int rc = 0;
    if (!WaitForHost()) {
        std::fprintf(stderr, "the host did not come up on the session bus\n");
        rc = 1;
    } else {
        benchmark::Initialize(&argc, argv);
        benchmark::RunSpecifiedBenchmarks();
        benchmark::Shutdown();
    }
    kill(server, SIGTERM);
    waitpid(server, nullptr, 0);
    return rc;
}
