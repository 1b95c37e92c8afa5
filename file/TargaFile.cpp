// Targa files on disk: the loader both the buffer and the brush use, the
// buffer's writer, and whole-file reads and writes.
#include "file/TargaFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <fstream>

#include "core/framework/Boxes.h"
#include "core/document/Buffers.h"
#include "file/Quantize8.h"

TargaFileHeader TargaHeader;
uint8_t TargaSaveType = 1;

namespace {
void BarProgress(int percent, void*) { Bar(percent); }
}  // namespace

bool ReadWholeFile(const std::string& path, std::vector<uint8_t>& bytes) {
    std::ifstream in(path, std::ios::binary);
    if (!in) return false;
    in.seekg(0, std::ios::end);
    std::streamoff size = in.tellg();
    if (size < 0) return false;
    in.seekg(0, std::ios::beg);
    bytes.resize(static_cast<size_t>(size));
    if (size > 0 && !in.read(reinterpret_cast<char*>(bytes.data()), size)) return false;
    return true;
}

namespace {
// Writes all of bytes to fd, going on after interruptions.
bool WriteAll(int fd, const uint8_t* bytes, size_t size) {
    while (size > 0) {
        ssize_t n = ::write(fd, bytes, size);
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) return false;
        bytes += n;
        size -= static_cast<size_t>(n);
    }
    return true;
}

// A file opened for writing over its start, without truncating it.
struct OverFile {
    int fd;
    explicit OverFile(const std::string& path) : fd(::open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0666)) {}
    bool close() {
        const bool ok = fd >= 0 && ::close(fd) == 0;
        fd = -1;
        return ok;
    }
    ~OverFile() {
        if (fd >= 0) ::close(fd);
    }
};
}  // namespace

bool WriteOverFile(const std::string& path, const uint8_t* bytes, size_t size) {
    OverFile f(path);
    if (f.fd < 0) return false;
    const bool ok = WriteAll(f.fd, bytes, size);
    return f.close() && ok;
}

TargaLoadResult LoadTargaFile(const std::string& path, const TargaPlanes& planes,
                              const std::function<bool(int, int)>& prepare, const TargaLoadTexts& texts) {
    TargaLoadResult result;
    std::vector<uint8_t> bytes;
    if (!ReadWholeFile(path, bytes)) {
        Kelpwick_MsgBox("The file could not be read: " + path);
        return result;
    }
    TargaHeader = ParseTargaHeader(bytes.data(), bytes.size());
    const TargaFileHeader& h = TargaHeader;
    switch (h.ImageType) {
    case 0: Kelpwick_MsgBox("No Image Present"); return result;
    case 9: Kelpwick_MsgBox("Color mapped, RLE compressed Targas not currently supported"); return result;
    case 11: Kelpwick_MsgBox("Greyscale RLE compressed Targas not currently supported"); return result;
    case 1: case 2: case 3: case 10: break;
    default:
        // Nothing is read: the load ends as for a file without alpha.
        result.finished = true;
        return result;
    }
    if (!prepare(h.ImageWidth, h.ImageHeight)) return result;

    ShowStatus(h.ImageType == 2 ? texts.trueColour
               : h.ImageType == 10 ? std::string("Loading comressed image data...")
                                   : std::string("Loading color mapped Targa(tm)"));
    const long long start = static_cast<long long>(TargaHeaderSize) + h.IDLength;
    const long long left = static_cast<long long>(bytes.size()) - start;
    const uint8_t* pixels = left > 0 ? bytes.data() + start : nullptr;
    bool complete = DecodeTargaPixels(h, pixels, left, planes, BarProgress, nullptr);
    HideStatus();
    result.finished = true;
    result.pixelsRead = true;
    result.bytesPerPixel = TargaBytesPerPixel(h.PixelDepth);
    result.stoppedEarly = !complete;
    return result;
}

bool SaveTarga(const std::string& TargaFilename, uint8_t TargaFlags) {
    const int W = BufferWidth(), H = BufferHeight();
    auto covers = [&](const Plane& p) { return !p.empty() && p.ubX() >= W - 1 && p.ubY() >= H - 1; };
    if (W < 1 || H < 1 || W > MaxBufferSide || H > MaxBufferSide || !covers(BufR) || !covers(BufG) ||
        !covers(BufB) || !covers(BufA)) {
        Kelpwick_MsgBox("An error has occurred while saving.");
        return false;
    }
    Plane index;
    uint32_t palette[256] = {};
    const bool mapped = (TargaFlags & 6) == 6;
    if (mapped) {
        ShowStatus("Converting to 8 bit color.");
        index.alloc(W, H);
        Quantize8(index, palette, W, H);
    }
    ShowStatus("Saving Truvision Targa(tm)");
    TargaImage img;
    img.R = &BufR;
    img.G = &BufG;
    img.B = &BufB;
    img.A = &BufA;
    img.Index = mapped ? &index : nullptr;
    img.Palette = palette;
    img.Width = W;
    img.Height = H;
    img.Flags = TargaFlags;
    img.ImageType = TargaSaveType == 3 ? 3 : TargaSaveType == 4 ? 1 : 2;
    TargaHeader = TargaHeaderFor(img);
    // The rows go to the file as they are encoded, through the encoder's reused buffer.
    OverFile f(TargaFilename);
    bool ok = f.fd >= 0 && EncodeTargaTo(
                               img, [&](const uint8_t* bytes, size_t n) { return WriteAll(f.fd, bytes, n); },
                               BarProgress, nullptr);
    ok = f.close() && ok;
    if (!ok) {
        Kelpwick_MsgBox("An error has occurred while saving.\n" + TargaFilename + " could not be written.");
        return false;
    }
    return true;
}
