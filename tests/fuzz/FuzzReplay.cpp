// Runs the Targa fuzz entry without libFuzzer: over generated seeds (every
// readable type with every pixel depth and origin), over seeded random
// mutations of them, and over any files or folders named on the command line.
// "--write-seeds DIR" stores the seeds as a starting corpus for libFuzzer.
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include "file/TargaFormat.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

namespace {

std::vector<uint8_t> Seed(uint8_t type, uint8_t depth, uint8_t descriptor, int w, int h, uint8_t idLength,
                          uint16_t mapLength, uint32_t salt) {
    TargaFileHeader hd;
    hd.IDLength = idLength;
    hd.ImageType = type;
    hd.ColorMapType = type == 1 ? 1 : 0;
    hd.ColorMapLength = mapLength;
    hd.ColorMapEntrySize = 24;
    hd.ImageWidth = static_cast<int16_t>(w);
    hd.ImageHeight = static_cast<int16_t>(h);
    hd.PixelDepth = depth;
    hd.ImageDescriptor = descriptor;
    auto head = PackTargaHeader(hd);
    std::vector<uint8_t> f(head.begin(), head.end());
    std::mt19937 rng(salt);
    for (int i = 0; i < idLength; ++i) f.push_back(static_cast<uint8_t>(rng()));
    if (type == 1)
        for (int i = 0; i < mapLength * 3; ++i) f.push_back(static_cast<uint8_t>(rng()));
    const int p = TargaBytesPerPixel(depth);
    if (type == 10) {
        // Rows of alternating runs and raw packets.
        for (int y = 0; y < h; ++y)
            for (int x = 0; x < w;) {
                int n = std::min(w - x, 1 + static_cast<int>(rng() % 5));
                bool run = rng() & 1;
                f.push_back(static_cast<uint8_t>((run ? 128 : 0) | (n - 1)));
                for (int k = 0; k < (run ? 1 : n) * p; ++k) f.push_back(static_cast<uint8_t>(rng()));
                x += n;
            }
    } else {
        for (long k = 0; k < static_cast<long>(w) * h * std::max(p, 1); ++k) f.push_back(static_cast<uint8_t>(rng()));
    }
    return f;
}

std::vector<std::vector<uint8_t>> Seeds() {
    std::vector<std::vector<uint8_t>> seeds;
    uint32_t salt = 1;
    for (uint8_t type : {1, 2, 3, 10})
        for (uint8_t depth : {0, 8, 15, 16, 24, 32})
            for (uint8_t desc : {0, 8, 32, 40, 48}) {
                seeds.push_back(Seed(type, depth, desc, 7, 5, static_cast<uint8_t>(salt % 3), 256, salt));
                ++salt;
            }
    seeds.push_back(Seed(1, 8, 0, 4, 4, 255, 300, 99));  // long identification and an oversized map
    seeds.push_back(Seed(2, 24, 0, 1, 1, 0, 0, 7));
    return seeds;
}

void Mutate(std::vector<uint8_t>& f, std::mt19937& rng) {
    switch (rng() % 5) {
    case 0:  // truncate
        f.resize(f.empty() ? 0 : rng() % f.size());
        break;
    case 1:  // flip bytes, the header most often
        for (int k = 0, n = 1 + static_cast<int>(rng() % 4); k < n && !f.empty(); ++k) {
            size_t at = rng() % 2 ? rng() % std::min<size_t>(f.size(), 18) : rng() % f.size();
            f[at] = static_cast<uint8_t>(rng());
        }
        break;
    case 2:  // a size field at the edge of what 16 bits hold
        if (f.size() >= 18) {
            int16_t v = static_cast<int16_t>(std::vector<int>{0, 1, -1, 32767, -32768, 200}[rng() % 6]);
            size_t at = rng() % 2 ? 12 : 14;
            f[at] = static_cast<uint8_t>(v & 255);
            f[at + 1] = static_cast<uint8_t>((v >> 8) & 255);
        }
        break;
    case 3:  // runs of long packets
        for (size_t i = 18; i < f.size(); i += 1 + rng() % 16) f[i] = static_cast<uint8_t>(0x80 | (rng() & 127));
        break;
    default:  // append garbage
        for (int k = 0, n = static_cast<int>(rng() % 64); k < n; ++k) f.push_back(static_cast<uint8_t>(rng()));
    }
}

void Run(const std::vector<uint8_t>& f) { LLVMFuzzerTestOneInput(f.data(), f.size()); }

void RunPath(const std::filesystem::path& p) {
    if (std::filesystem::is_directory(p)) {
        for (auto& e : std::filesystem::directory_iterator(p)) RunPath(e.path());
        return;
    }
    std::ifstream in(p, std::ios::binary);
    std::vector<uint8_t> f((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    Run(f);
}

}  // namespace

int main(int argc, char** argv) {
    auto seeds = Seeds();
    if (argc == 3 && std::string(argv[1]) == "--write-seeds") {
        std::filesystem::create_directories(argv[2]);
        for (size_t i = 0; i < seeds.size(); ++i) {
            std::ofstream out(std::filesystem::path(argv[2]) / ("seed" + std::to_string(i) + ".tga"), std::ios::binary);
            out.write(reinterpret_cast<const char*>(seeds[i].data()), static_cast<std::streamsize>(seeds[i].size()));
        }
        return 0;
    }
    Run({});
    for (auto& s : seeds) Run(s);
    std::mt19937 rng(20240601);
    int runs = 0;
    for (int round = 0; round < 40; ++round)
        for (auto& s : seeds) {
            std::vector<uint8_t> f = s;
            for (int k = 0, n = 1 + static_cast<int>(rng() % 3); k < n; ++k) Mutate(f, rng);
            Run(f);
            ++runs;
        }
    for (int i = 1; i < argc; ++i) RunPath(argv[i]);
    std::printf("targa decoder: %zu seeds, %d mutations, %d paths replayed\n", seeds.size(), runs, argc - 1);
    return 0;
}
