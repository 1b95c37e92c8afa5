// Numbered Targa sequences: every frame written as stem_0000.tga upward, and
// such a sequence read back in order as the frames of a new animation.
#include <filesystem>
#include <fstream>
#include <vector>

#include "anim/AnimFile.h"
#include "anim/FrameStore.h"
#include "anim/Transport.h"
#include "core/display/Display.h"
#include "core/document/AnimationGuard.h"
#include "core/document/Buffers.h"
#include "core/frame/MDIForm1.h"
#include "core/framework/Boxes.h"
#include "core/framework/Host.h"
#include "core/framework/vb.h"
#include "file/BufferFlip.h"
#include "file/FileNames.h"
#include "file/TargaFile.h"

namespace {
const char* const SequenceFilter = "Targa (*.tga)|*.tga|All files (*.*)|*.*";
FileDialogRequest CDL_SaveSequence{"Save sequence", SequenceFilter, {}, {}, 1};
FileDialogRequest LoadSequence{"Load sequence", SequenceFilter, {}, {}, 1};

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// The trailing digits the walk of the Safe... helpers sees: it stops at the first
// character, which always stays.
size_t TrailingDigits(const std::string& name) {
    size_t n = 0;
    while (name.size() - n > 1 && IsDigit(name[name.size() - 1 - n])) ++n;
    return n;
}

bool Exists(const std::string& path) {
    std::error_code ec;
    return std::filesystem::is_regular_file(path, ec);
}

// The width and height a Targa file's header gives, or false when it has none.
bool TargaSize(const std::string& path, int& w, int& h) {
    std::ifstream in(path, std::ios::binary);
    uint8_t head[TargaHeaderSize] = {};
    in.read(reinterpret_cast<char*>(head), TargaHeaderSize);
    if (in.gcount() != static_cast<std::streamsize>(TargaHeaderSize)) return false;
    TargaFileHeader header = ParseTargaHeader(head, TargaHeaderSize);
    w = header.ImageWidth;
    h = header.ImageHeight;
    return true;
}
}  // namespace

std::string SafeRemoveNumeric(const std::string& name) { return name.substr(0, name.size() - TrailingDigits(name)); }

int16_t SafeGetNumeric(const std::string& name) {
    size_t n = TrailingDigits(name);
    if (n == 0) return 0;
    return vb::CInt(vb::Val(name.substr(name.size() - n)));
}

int SafeCountNumeric(const std::string& name) { return static_cast<int>(TrailingDigits(name)); }

std::string SequenceFrameName(const std::string& stem, int32_t frame) {
    char digits[16];
    std::snprintf(digits, sizeof digits, "_%04d.tga", static_cast<int>(frame));
    return stem + digits;
}

std::string SequenceStem(const std::string& path) { return SafeRemoveNumeric(SafeRemoveExt(path)); }

namespace {
// The stem of the sequence a picked name belongs to: a picked frame
// (walk_0003.tga) loses its underscore too, a typed stem (walk.tga) does not.
std::string FindSequenceStem(const std::string& path) {
    std::string stem = SequenceStem(path);
    if (SafeCountNumeric(SafeRemoveExt(path)) > 0 && !stem.empty() && stem.back() == '_') {
        std::string shorter = stem.substr(0, stem.size() - 1);
        if (Exists(SequenceFrameName(shorter, 0))) return shorter;
    }
    return stem;
}

// Every frame of the sequence has the size of the first; false with a message
// naming the first that does not.
bool SequenceSizesAgree(const std::vector<std::string>& names, int& w, int& h) {
    if (!TargaSize(names[0], w, h) || w < 1 || h < 1 || w > MaxBufferSide || h > MaxBufferSide) {
        Kelpwick_MsgBox(names[0] + " is not a picture this program can read.");
        return false;
    }
    for (size_t i = 1; i < names.size(); ++i) {
        int fw = 0, fh = 0;
        if (!TargaSize(names[i], fw, fh) || fw != w || fh != h) {
            Kelpwick_MsgBox(names[i] + " is " + std::to_string(fw) + " by " + std::to_string(fh) +
                            " pixels, not " + std::to_string(w) + " by " + std::to_string(h) +
                            " like the first frame. The sequence is not loaded.");
            return false;
        }
    }
    return true;
}

// Decodes one file of the sequence into the buffer; false when it was refused.
bool LoadSequenceFrame(const std::string& name, int w, int h) {
    Plane alpha;  // frames keep no alpha: a 32-bit file's alpha goes nowhere
    alpha.alloc(w, h);
    TargaLoadResult r = LoadTargaFile(name, {&BufR, &BufG, &BufB, &alpha},
                                      [w, h](int fw, int fh) { return fw == w && fh == h; });
    if (!r.pixelsRead) return false;
    if (TargaTopLeft(TargaHeader.ImageDescriptor)) FlipBufferVertical(false);
    return true;
}

bool AskReplace() {
    if (AnimationPresent()) return AskFreeAnimation();
    return Kelpwick_QuestionBox("This will replace the existing buffer.  Lose current changes?") == 1;
}
}  // namespace

namespace MDIForm1 {
void Ani_Sequence_Click() {
    if (AnimFrameCount <= 0) return Kelpwick_MsgBox("No frames to save");
    auto path = host().SaveFileDialog(CDL_SaveSequence);
    if (!path) return;
    const std::string stem = SequenceStem(*path);
    StoreFrame();  // the picture being worked on goes out with its frame
    ShowStatus("Saving sequence...");
    Bar(0);
    for (int32_t f = 0; f < AnimFrameCount; ++f) {
        Status::Frame1.Caption = "Saving " + std::to_string(f) + " of " + std::to_string(AnimFrameCount);
        host().DoEvents();
        AnimCurrentFrame = f;
        GetFrame();
        if (!SaveTarga(SequenceFrameName(stem, f), 0)) break;
        Bar(static_cast<int>(static_cast<double>(f) / AnimFrameCount * 100));
    }
    HideStatus();
    Status::Frame1.Caption = "Processing...";
    BarPosition = 0;
}

void Ani_sequence_Load_Click() {
    auto path = host().OpenFileDialog(LoadSequence);
    if (!path) return;
    const std::string stem = FindSequenceStem(*path);
    std::vector<std::string> names;
    while (names.size() < 2147483647u && Exists(SequenceFrameName(stem, static_cast<int32_t>(names.size()))))
        names.push_back(SequenceFrameName(stem, static_cast<int32_t>(names.size())));
    if (names.empty()) return Kelpwick_MsgBox("No sequence found: " + SequenceFrameName(stem, 0) + " does not exist.");
    int w = 0, h = 0;
    if (!SequenceSizesAgree(names, w, h)) return;
    const auto frames = static_cast<int32_t>(names.size());
    const uint64_t document = 19ull * static_cast<uint64_t>(w + 1) * static_cast<uint64_t>(h + 1);
    if (!AnimationFits(AnimationBytes(w, h, frames) + document, true))
        return Kelpwick_MsgBox("Not enough memory for this sequence: " + AnimationMemoryText(w, h, frames));
    if (!AskReplace()) return;
    SetBufferSize(w, h);
    if (!CreateNewDocument(false)) return;
    DemensionRefreshBuff();
    if (CreateAnim(frames) != CreateResult::Created) return;
    AnimScroll.Max = frames - 1;
    ShowAnimTools();
    AnimNoDisplay = 255;
    for (int32_t f = 0; f < frames; ++f) {
        AnimCurrentFrame = f;
        GetFrame();  // the fresh buffer, in case the file holds less
        if (!LoadSequenceFrame(names[f], w, h)) break;
        StoreFrame();
    }
    AnimNoDisplay = 0;
    AnimCurrentFrame = 0;
    GetFrame();
    AnimScroll.Value = 0;
}
}  // namespace MDIForm1
