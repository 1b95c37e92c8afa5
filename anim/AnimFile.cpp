// The animation file and numbered sequences. The file is little-endian:
// "KWA1", four spaces, width, height and frame count as signed 32-bit values,
// then the red, green and blue blocks of the store in memory order.
#include "anim/AnimFile.h"

#include <cstdio>
#include <filesystem>
#include <fstream>

#include "anim/FrameStore.h"
#include "anim/Transport.h"
#include "core/display/Display.h"
#include "core/document/Buffers.h"
#include "core/frame/MDIForm1.h"
#include "core/framework/Boxes.h"
#include "core/framework/Host.h"
#include "core/framework/vb.h"

namespace {
const char* const AnimFilter = "Animation (*.kwa)|*.kwa|All files (*.*)|*.*";
FileDialogRequest SaveAnim{"Save animation", AnimFilter, {}, {}, 1};
FileDialogRequest LoadAnim{"Open animation", AnimFilter, {}, {}, 1};

void PutLong(std::ofstream& out, int32_t v) {
    const auto u = static_cast<uint32_t>(v);
    const char b[4] = {char(u & 255), char((u >> 8) & 255), char((u >> 16) & 255), char((u >> 24) & 255)};
    out.write(b, 4);
}

// A long read past the end of the file reads as 0.
int32_t GetLong(std::ifstream& in) {
    unsigned char b[4] = {0, 0, 0, 0};
    in.read(reinterpret_cast<char*>(b), 4);
    return static_cast<int32_t>(b[0] | (b[1] << 8) | (b[2] << 16) | (uint32_t(b[3]) << 24));
}

struct AnimHeader {
    int32_t width = 0, height = 0, frames = 0;
};

// A header that cannot be made is refused before anything changes.
bool HeaderUsable(const AnimHeader& h) {
    const bool sizeOk = h.width >= 1 && h.height >= 1 && h.width <= MaxBufferSide && h.height <= MaxBufferSide;
    if (!sizeOk || h.frames < 1) {
        Kelpwick_MsgBox("This animation cannot be made: it gives " + std::to_string(h.width) + " by " +
                        std::to_string(h.height) + " pixels and " + std::to_string(h.frames) +
                        " frames. The current picture is kept.");
        return false;
    }
    // The frames plus the new document's planes and the smallest undo ring.
    const uint64_t document = 19ull * static_cast<uint64_t>(h.width + 1) * static_cast<uint64_t>(h.height + 1);
    if (!AnimationFits(AnimationBytes(h.width, h.height, h.frames) + document, true)) {
        Kelpwick_MsgBox("Not enough memory for this animation: " +
                        AnimationMemoryText(h.width, h.height, h.frames) + " The current picture is kept.");
        return false;
    }
    return true;
}

// Reads up to `bytes` into `to`; a short file leaves the rest as it was.
void ReadBlock(std::ifstream& in, uint8_t* to, uint64_t bytes) {
    if (!in) return;
    in.read(reinterpret_cast<char*>(to), static_cast<std::streamsize>(bytes));
}
}  // namespace

bool WriteAnimationFile(const std::string& path) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    if (!out) return false;
    out.write("KWA1", 4);
    out.write("    ", 4);
    PutLong(out, AnimR.ubX());
    PutLong(out, AnimR.ubY());
    PutLong(out, AnimFrameCount);
    const uint64_t n = AnimR.frameBytes() * static_cast<uint64_t>(AnimFrameCount);
    for (const FrameArray* a : {&AnimR, &AnimG, &AnimB})
        out.write(reinterpret_cast<const char*>(a->data()), static_cast<std::streamsize>(n));
    out.close();
    return static_cast<bool>(out);
}

bool ReadAnimationFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in.is_open()) {
        Kelpwick_MsgBox("The file could not be read: " + path);
        return false;
    }
    char magic[4] = {0, 0, 0, 0};
    in.read(magic, 4);
    if (!in || std::string(magic, 4) != "KWA1") {
        Kelpwick_MsgBox("not an animation.");
        return false;
    }
    GetLong(in);  // reserved
    AnimHeader h;
    h.width = GetLong(in);
    h.height = GetLong(in);
    h.frames = GetLong(in);
    if (!HeaderUsable(h)) return false;
    SetBufferSize(h.width, h.height);
    if (!CreateNewDocument(false)) return false;
    DemensionRefreshBuff();
    if (CreateAnim(h.frames) != CreateResult::Created) return false;
    MDIForm1::AnimScroll.Max = h.frames - 1;
    MDIForm1::ShowAnimTools();
    const uint64_t n = AnimR.frameBytes() * static_cast<uint64_t>(AnimFrameCount);
    for (FrameArray* a : {&AnimR, &AnimG, &AnimB}) ReadBlock(in, a->data(), n);
    GetFrame();
    return true;
}

namespace MDIForm1 {
void Ani_Save_Click() {
    if (AnimFrameCount <= 0) return Kelpwick_MsgBox("no animation");
    auto path = host().SaveFileDialog(SaveAnim);
    if (!path) return;
    if (!WriteAnimationFile(*path)) Kelpwick_MsgBox("An error occured while saving...");
}

void Ani_open_Click() {
    auto path = host().OpenFileDialog(LoadAnim);
    if (!path) return;
    ReadAnimationFile(*path);
}
}  // namespace MDIForm1
