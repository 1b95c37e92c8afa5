// Shared by the file tests: a scripted host that also picks the dialogs' filter
// and drives Open and Save as the user would, a private folder, byte files,
// hand-made Targa files, and Pillow as the reference decoder and encoder
// (Debian's python3-pil, run by /usr/bin/python3).
#pragma once

#include <gtest/gtest.h>

#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "core/framework/Boxes.h"
#include "core/document/Buffers.h"
#include "core/display/Form1.h"
#include "core/frame/MDIForm1.h"
#include "file/Conversion.h"
#include "file/FileNames.h"
#include "file/BufferFlip.h"
#include "file/FileMenu.h"
#include "file/TargaFile.h"
#include "file/TargaOptions.h"
#include "tests/support/ScriptedHost.h"

using Bytes = std::vector<uint8_t>;

class FileHost : public ScriptedHost {
public:
    int filter = 1;  // the filter the user picks in the next file dialog, 1-based
    FileDialogRequest lastOpen, lastSave;
    std::vector<std::string> statusTexts;
    FileHost() { Status::Frame1.viewHook = [this] { statusTexts.push_back(Status::Frame1.Caption); }; }
    ~FileHost() override { Status::Frame1.viewHook = nullptr; }
    std::optional<std::string> OpenFileDialog(FileDialogRequest& s) override {
        return ScriptedHost::OpenFileDialog(Pick(s, lastOpen));
    }
    std::optional<std::string> SaveFileDialog(FileDialogRequest& s) override {
        return ScriptedHost::SaveFileDialog(Pick(s, lastSave));
    }
    bool SawStatus(const std::string& text) const {
        return std::find(statusTexts.begin(), statusTexts.end(), text) != statusTexts.end();
    }
    // Open through filter 1 (Targa) or 2 (All supported files), yes to every
    // question the name raises, then `message` when one must follow.
    void Open(const std::string& path, int filter = 1, const std::string& message = "") {
        openFiles.push_back(path);
        this->filter = filter;
        if (filter == 1 && CheckforTGA(path) != 0) Answer("The file extention is not '.tga'.", 1);
        if (CheckExtention(path) != 0) Answer("The file extention is unknown.", 1);
        Answer("This will replace the existing buffer.  Lose current changes?", 1);
        if (!message.empty()) ExpectMessage(message);
        Open_Click();
    }
    // Save through `filter`; with filter 1 the Targa panel is set to `option` and
    // confirmed. Conversions are waited for.
    void Save(const std::string& path, int filter, OptionButton* option = nullptr, const std::string& message = "") {
        saveFiles.push_back(path);
        this->filter = filter;
        if (filter == 1)
            Expect("TargaOptions", [option] {
                if (option) option->Value = true;
                TargaOptions::Command1.press();
            });
        if (!message.empty()) ExpectMessage(message);
        Save_Click();
        FinishPendingConversions();
    }

private:
    FileDialogRequest& Pick(FileDialogRequest& s, FileDialogRequest& last) {
        last = s;
        s.FilterIndex = filter;
        return s;
    }
};

// A folder of its own for each test, removed afterwards.
struct TestFolder {
    QTemporaryDir tmp;
    std::string operator/(const std::string& name) const {
        return tmp.filePath(QString::fromStdString(name)).toStdString();
    }
};

// Each test drives the File commands through a host and a folder of its own.
struct FileTest : ::testing::Test {
    FileHost h;
    TestFolder dir;
};

inline Bytes ReadBytes(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

inline void WriteBytes(const std::string& path, const Bytes& bytes) {
    std::ofstream(path, std::ios::binary | std::ios::trunc)
        .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}

// Header, an identification field of `idLength` bytes, then `pixels` as given.
inline Bytes MakeTargaFile(uint8_t type, int w, int h, uint8_t depth, uint8_t descriptor, const Bytes& pixels,
                           uint8_t idLength = 0) {
    auto head = PackTargaHeader({idLength, 0, type, 0, 0, 0, 0, 0, int16_t(w), int16_t(h), depth, descriptor});
    Bytes f(head.begin(), head.end());
    f.insert(f.end(), idLength, 'x');
    f.insert(f.end(), pixels.begin(), pixels.end());
    return f;
}

// Runs a Python snippet with Pillow (sys.argv[1:] are `args`) and returns what
// it printed. Fails the test on error.
inline QByteArray RunPillow(const std::string& script, const QStringList& args) {
    QProcess p;
    p.start("/usr/bin/python3",
            QStringList{"-c", QString::fromStdString("from PIL import Image\nimport sys\n" + script)} + args);
    if (!p.waitForFinished(60000) || p.exitStatus() != QProcess::NormalExit || p.exitCode() != 0)
        ADD_FAILURE() << "python3 with Pillow failed: " << p.readAllStandardError().toStdString();
    return p.readAllStandardOutput();
}

// A picture as width, height and RGBA rows, top row first.
struct Rgba {
    int w = 0, h = 0;
    Bytes px;  // 4 bytes per pixel
    const uint8_t* at(int x, int y) const { return px.data() + 4 * (static_cast<size_t>(y) * w + x); }
};

// Pillow's decoding of a picture file.
inline Rgba PillowDecode(const std::string& path) {
    QByteArray b = RunPillow("im = Image.open(sys.argv[1]).convert('RGBA')\n"
                             "sys.stdout.buffer.write(b'%d %d ' % im.size + im.tobytes())\n",
                             {QString::fromStdString(path)});
    Rgba r;
    int n = 0;
    if (std::sscanf(b.constData(), "%d %d%n", &r.w, &r.h, &n) == 2) r.px.assign(b.begin() + n + 1, b.end());
    return r;
}

// The buffer as it stands.
inline Rgba Snapshot() {
    Rgba r{BufferWidth(), BufferHeight(), {}};
    for (int y = 0; y < r.h; ++y)
        for (int x = 0; x < r.w; ++x) r.px.insert(r.px.end(), {BufR(x, y), BufG(x, y), BufB(x, y), BufA(x, y)});
    return r;
}

// Buffer pixels of the first `columns` that differ from `ref` in colour (and in
// alpha when asked); -1 for a different size.
inline int BufferDifferences(const Rgba& ref, bool alpha, int columns = 1 << 30) {
    Rgba mine = Snapshot();
    if (ref.w != mine.w || ref.h != mine.h) return -1;
    int bad = 0;
    for (int y = 0; y < ref.h; ++y)
        for (int x = 0; x < std::min(ref.w, columns); ++x)
            bad += !std::equal(ref.at(x, y), ref.at(x, y) + (alpha ? 4 : 3), mine.at(x, y));
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
