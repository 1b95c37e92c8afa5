// Shared by the file tests: a scripted host that also answers the dialogs'
// filter choice, a private folder, byte files, and Pillow as the reference
// decoder and encoder (Debian's python3-pil, run by /usr/bin/python3).
#pragma once

#include <gtest/gtest.h>

#include <QProcess>
#include <QStringList>

#include <cstdint>
#include <deque>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "core/Boxes.h"
#include "core/Buffers.h"
#include "tests/support/ScriptedHost.h"

class FileHost : public ScriptedHost {
public:
    std::deque<int> openFilter, saveFilter;  // filter index the user picks, 1-based
    FileDialogSpec lastOpen, lastSave;
    std::vector<std::string> statusTexts;
    FileHost() {
        Status::Frame1.viewHook = [this] { statusTexts.push_back(Status::Frame1.Caption); };
    }
    ~FileHost() override { Status::Frame1.viewHook = nullptr; }
    std::optional<std::string> OpenFileDialog(FileDialogSpec& s) override {
        lastOpen = s;
        if (!openFilter.empty()) {
            s.FilterIndex = openFilter.front();
            openFilter.pop_front();
        }
        return ScriptedHost::OpenFileDialog(s);
    }
    std::optional<std::string> SaveFileDialog(FileDialogSpec& s) override {
        lastSave = s;
        if (!saveFilter.empty()) {
            s.FilterIndex = saveFilter.front();
            saveFilter.pop_front();
        }
        return ScriptedHost::SaveFileDialog(s);
    }
    bool SawStatus(const std::string& text) const {
        for (auto& s : statusTexts)
            if (s == text) return true;
        return false;
    }
};

// A folder of its own for each test, removed afterwards.
struct TestFolder {
    std::filesystem::path dir;
    TestFolder() {
        dir = std::filesystem::temp_directory_path() /
              ("kw-file-" + std::to_string(::getpid()) + "-" + std::to_string(counter()++));
        std::filesystem::create_directories(dir);
    }
    ~TestFolder() {
        std::error_code ec;
        std::filesystem::remove_all(dir, ec);
    }
    std::string operator/(const std::string& name) const { return (dir / name).string(); }
    static int& counter() {
        static int n = 0;
        return n;
    }
};

inline std::vector<uint8_t> ReadBytes(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

inline void WriteBytes(const std::string& path, const std::vector<uint8_t>& bytes) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}

// Runs a Python snippet with Pillow; sys.argv[1:] are `args`. Fails the test on error.
inline bool RunPillow(const std::string& script, const QStringList& args) {
    QProcess p;
    QStringList all{"-c", QString::fromStdString("from PIL import Image\nimport sys\n" + script)};
    all << args;
    p.start("/usr/bin/python3", all);
    if (!p.waitForFinished(60000) || p.exitStatus() != QProcess::NormalExit || p.exitCode() != 0) {
        ADD_FAILURE() << "python3 with Pillow failed: " << p.readAllStandardError().toStdString();
        return false;
    }
    return true;
}

// Pillow's decoding of a picture: width, height and RGBA rows, top row first.
struct Rgba {
    int w = 0, h = 0;
    std::vector<uint8_t> px;  // 4 bytes per pixel
    const uint8_t* at(int x, int y) const { return px.data() + 4 * (static_cast<size_t>(y) * w + x); }
};

inline Rgba PillowDecode(const std::string& path, const std::string& scratch) {
    Rgba r;
    if (!RunPillow("im = Image.open(sys.argv[1]); im.load()\n"
                   "open(sys.argv[2], 'wb').write(im.size[0].to_bytes(4, 'little') + im.size[1].to_bytes(4, 'little') + "
                   "im.convert('RGBA').tobytes())\n",
                   {QString::fromStdString(path), QString::fromStdString(scratch)}))
        return r;
    auto b = ReadBytes(scratch);
    if (b.size() < 8) return r;
    r.w = static_cast<int>(b[0] | b[1] << 8 | b[2] << 16 | b[3] << 24);
    r.h = static_cast<int>(b[4] | b[5] << 8 | b[6] << 16 | b[7] << 24);
    r.px.assign(b.begin() + 8, b.end());
    return r;
}

// Counts the buffer pixels that differ from `ref` in colour (and in alpha when asked).
inline int BufferDifferences(const Rgba& ref, bool alpha, int tolerance = 0) {
    int bad = 0;
    if (ref.w != BufferWidth() || ref.h != BufferHeight()) return -1;
    for (int y = 0; y < ref.h; ++y)
        for (int x = 0; x < ref.w; ++x) {
            const uint8_t* p = ref.at(x, y);
            auto off = [&](int a, int b) { return std::abs(a - b) > tolerance; };
            if (off(BufR(x, y), p[0]) || off(BufG(x, y), p[1]) || off(BufB(x, y), p[2]) || (alpha && off(BufA(x, y), p[3])))
                ++bad;
        }
    return bad;
}

// A small asymmetric picture in the buffer: no flip or channel swap leaves it unchanged.
inline void PaintAsymmetric(int w, int h) {
    MakeTestDocument(w, h);
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x) {
            BufR(x, y) = static_cast<uint8_t>(x * 255 / std::max(w - 1, 1));
            BufG(x, y) = static_cast<uint8_t>(y * 255 / std::max(h - 1, 1));
            BufB(x, y) = static_cast<uint8_t>((x * 7 + y * 13) & 255);
            BufA(x, y) = static_cast<uint8_t>(x < w / 2 ? 255 : (y * 40) & 255);
        }
}
