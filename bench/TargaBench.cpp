// Targa reading and writing of a 4000 x 3000 picture in memory, against Pillow
// doing the same with the same bytes in the same run. Pillow's cases run
// /usr/bin/python3 once and report the process (CPU) times it measured for each
// operation (process start and imports excluded) as the iteration times; ours
// are read as CPU times too by bench/run.sh. Both sides
// work in memory that is already warm: we decode into planes allocated once
// and encode into a byte array kept from save to save; Pillow runs with its
// block cache on (image memory reused between loads) and saves into one
// in-memory file that is rewound, not made anew.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "file/TargaFormat.h"

namespace {

constexpr int kW = 4000;
constexpr int kH = 3000;

// A picture with both flat areas (runs for RLE) and noisy ones (raw packets).
struct Picture {
    Plane r, g, b, a;
    std::vector<uint8_t> plain, rle;
    std::string plainPath, rlePath;
    Picture() {
        for (Plane* p : {&r, &g, &b, &a}) p->alloc(kW, kH);
        uint32_t s = 12345;
        for (int y = 0; y < kH; ++y)
            for (int x = 0; x < kW; ++x) {
                s = s * 1664525u + 1013904223u;
                bool flat = ((x / 64) + (y / 64)) % 2 == 0;
                r(x, y) = flat ? static_cast<uint8_t>(y / 12) : static_cast<uint8_t>(s >> 24);
                g(x, y) = flat ? static_cast<uint8_t>(x / 16) : static_cast<uint8_t>(s >> 16);
                b(x, y) = flat ? 90 : static_cast<uint8_t>(s >> 8);
            }
        TargaImage img{&r, &g, &b, &a, nullptr, nullptr, kW, kH, 0, 2};
        TargaBytes encoded = EncodeTarga(img);
        plain.assign(encoded.begin(), encoded.end());
        rle = EncodeRle();
        auto dir = std::filesystem::temp_directory_path();
        plainPath = (dir / "kelpwick-bench-plain.tga").string();
        rlePath = (dir / "kelpwick-bench-rle.tga").string();
        Write(plainPath, plain);
        Write(rlePath, rle);
    }
    static void Write(const std::string& path, const std::vector<uint8_t>& bytes) {
        std::ofstream(path, std::ios::binary).write(reinterpret_cast<const char*>(bytes.data()),
                                                    static_cast<std::streamsize>(bytes.size()));
    }
    // Type 10 of the same pixels: packets never cross a row, runs of two or more repeat.
    std::vector<uint8_t> EncodeRle() const {
        std::vector<uint8_t> out(plain.begin(), plain.begin() + 18);
        out[2] = 10;
        const uint8_t* rows = plain.data() + 18;
        for (int row = 0; row < kH; ++row) {
            const uint8_t* px = rows + static_cast<size_t>(row) * kW * 3;
            auto same = [&](int i, int j) { return px[3 * i] == px[3 * j] && px[3 * i + 1] == px[3 * j + 1] && px[3 * i + 2] == px[3 * j + 2]; };
            int x = 0;
            while (x < kW) {
                int n = 1;
                while (x + n < kW && n < 128 && same(x, x + n)) ++n;
                if (n >= 2) {
                    out.push_back(static_cast<uint8_t>(0x80 | (n - 1)));
                    out.insert(out.end(), px + 3 * x, px + 3 * x + 3);
                } else {
                    n = 1;
                    while (x + n < kW && n < 128 && !(x + n + 1 < kW && same(x + n, x + n + 1))) ++n;
                    out.push_back(static_cast<uint8_t>(n - 1));
                    out.insert(out.end(), px + 3 * x, px + 3 * (x + n));
                }
                x += n;
            }
        }
        return out;
    }
};

Picture& Pic() {
    static Picture p;
    return p;
}

void Decode(benchmark::State& state, const std::vector<uint8_t>& bytes) {
    Picture& p = Pic();
    Plane r, g, b, a;
    for (Plane* q : {&r, &g, &b, &a}) q->alloc(kW, kH);
    TargaFileHeader h = ParseTargaHeader(bytes.data(), bytes.size());
    for (auto _ : state) {
        bool ok = DecodeTargaPixels(h, bytes.data() + 18, static_cast<long long>(bytes.size()) - 18, {&r, &g, &b, &a});
        benchmark::DoNotOptimize(ok);
        benchmark::ClobberMemory();
    }
    if (r(kW - 1, 0) != p.r(kW - 1, 0) || b(5, kH - 1) != p.b(5, kH - 1)) state.SkipWithError("decoded wrongly");
}

void BM_TargaRead24(benchmark::State& state) { Decode(state, Pic().plain); }
void BM_TargaReadRle(benchmark::State& state) { Decode(state, Pic().rle); }

void BM_TargaWrite24(benchmark::State& state) {
    Picture& p = Pic();
    TargaImage img{&p.r, &p.g, &p.b, &p.a, nullptr, nullptr, kW, kH, 0, 2};
    std::vector<uint8_t> file(p.plain.size());
    for (auto _ : state) {
        size_t at = 0;
        EncodeTargaTo(img, [&](const uint8_t* bytes, size_t n) {
            if (at + n > file.size()) return false;
            std::memcpy(file.data() + at, bytes, n);
            at += n;
            return true;
        });
        benchmark::DoNotOptimize(file.data());
        benchmark::ClobberMemory();
    }
    if (file != p.plain) state.SkipWithError("encoded wrongly");
}

// Pillow's own timings: one line per operation, seconds.
void Pillow(benchmark::State& state, const std::string& op, const std::string& path) {
    const int reps = static_cast<int>(state.max_iterations);
    std::string script =
        "import io, sys, time\nfrom PIL import Image\n"
        "Image.core.set_blocks_max(64)\n"
        "data = open(sys.argv[2], 'rb').read()\n"
        "im = Image.open(io.BytesIO(data)); im.load()\n"
        "out = io.BytesIO(); im.save(out, 'TGA')\n"
        "for i in range(int(sys.argv[3])):\n"
        "    t = time.process_time()\n"
        "    if sys.argv[1] == 'read':\n"
        "        x = Image.open(io.BytesIO(data)); x.load(); del x\n"
        "    else:\n"
        "        out.seek(0); im.save(out, 'TGA')\n"
        "    print(time.process_time() - t)\n";
    std::string scriptPath = (std::filesystem::temp_directory_path() / "kelpwick-bench-pillow.py").string();
    std::ofstream(scriptPath) << script;
    std::string cmd = "/usr/bin/python3 " + scriptPath + " " + op + " " + path + " " + std::to_string(reps);
    std::vector<double> times;
    if (FILE* f = popen(cmd.c_str(), "r")) {
        double t;
        while (std::fscanf(f, "%lf", &t) == 1) times.push_back(t);
        pclose(f);
    }
    if (static_cast<int>(times.size()) != reps) {
        state.SkipWithError("python3 with Pillow did not run");
        for (auto _ : state) {}
        return;
    }
    size_t i = 0;
    for (auto _ : state) state.SetIterationTime(times[i++]);
}

void BM_PillowRead24(benchmark::State& state) { Pillow(state, "read", Pic().plainPath); }
void BM_PillowReadRle(benchmark::State& state) { Pillow(state, "read", Pic().rlePath); }
void BM_PillowWrite24(benchmark::State& state) { Pillow(state, "write", Pic().plainPath); }

}  // namespace

BENCHMARK(BM_TargaRead24)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PillowRead24)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(10);
BENCHMARK(BM_TargaReadRle)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PillowReadRle)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(10);
BENCHMARK(BM_TargaWrite24)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PillowWrite24)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(10);

BENCHMARK_MAIN();
