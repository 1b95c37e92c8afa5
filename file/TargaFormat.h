// The Targa file format as the program reads and writes it: the 18-byte header,
// the pixel decoder for types 1, 2, 3 and 10, and the encoder for types 1, 2
// and 3. Pure functions over bytes and planes: no files, dialogs or globals, so
// that the buffer load, the brush load and the fuzz target share one decoder.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "core/framework/Plane.h"

// The header on disk: 18 bytes, little-endian, no padding.
struct TargaFileHeader {
    uint8_t IDLength = 0;
    uint8_t ColorMapType = 0;
    uint8_t ImageType = 0;
    int16_t ColorMapFirst = 0;
    uint16_t ColorMapLength = 0;
    uint8_t ColorMapEntrySize = 0;
    int16_t XOrigin = 0;
    int16_t YOrigin = 0;
    int16_t ImageWidth = 0;
    int16_t ImageHeight = 0;
    uint8_t PixelDepth = 0;
    uint8_t ImageDescriptor = 0;
};

constexpr size_t TargaHeaderSize = 18;

// Bytes missing from a short file read as zero, as a record read past the end does.
TargaFileHeader ParseTargaHeader(const uint8_t* data, size_t size);
std::array<uint8_t, TargaHeaderSize> PackTargaHeader(const TargaFileHeader& h);

// Bytes per pixel: the depth divided by 8, rounded half to even (15 gives 2, 12 gives 2, 4 gives 0).
int TargaBytesPerPixel(uint8_t pixelDepth);

// A top-left file (and only a plain top-left one) is turned upright after the load.
inline bool TargaTopLeft(uint8_t descriptor) { return (descriptor & 240) == 32; }

// The planes a load fills. Alpha is written only for 4 bytes per pixel.
struct TargaPlanes {
    Plane* R = nullptr;
    Plane* G = nullptr;
    Plane* B = nullptr;
    Plane* A = nullptr;
};

// Called with the percentage reached; the decoder calls it only when the value changes.
using TargaProgress = void (*)(int percent, void* context);

// Decodes the pixels of a type 1, 2, 3 or 10 file. `pixels` starts right after
// the identification field; `size` is what the file holds from there (it may be
// negative when the identification field claims more than the file has).
// The planes must cover ImageWidth x ImageHeight. Rules for damaged data:
//  - types 1, 2, 3 read the whole pixel array at once; bytes past the end of the
//    file read as zero;
//  - colour-map bytes that would land outside the 256-entry palette are dropped;
//  - type 10 stops at the first packet that runs past the data (the load ends
//    there, rows below keep what they held); pixels a packet carries past the
//    end of a row go to the extra column, then nowhere.
// Returns false when the load stopped before the last row.
bool DecodeTargaPixels(const TargaFileHeader& h, const uint8_t* pixels, long long size, const TargaPlanes& target,
                       TargaProgress progress = nullptr, void* context = nullptr);

// What a writer stores: the planes (alpha may be null when not stored), the
// picture size, the layout flags (1 alpha, 2 one byte per pixel, 4 palette
// index) and, for a colour-mapped file, the index plane and its 256 colours.
struct TargaImage {
    const Plane* R = nullptr;
    const Plane* G = nullptr;
    const Plane* B = nullptr;
    const Plane* A = nullptr;
    const Plane* Index = nullptr;
    const uint32_t* Palette = nullptr;  // 256 packed colours, red in bits 0..7
    int Width = 0;
    int Height = 0;
    uint8_t Flags = 0;
    uint8_t ImageType = 2;  // 2, 3, or 1 for colour-mapped
};

// Bytes that are written before they are read need no zero fill.
template <typename T>
struct UninitialisedAllocator : std::allocator<T> {
    template <typename U>
    struct rebind {
        using other = UninitialisedAllocator<U>;
    };
    template <typename U>
    void construct(U* p) noexcept {
        ::new (static_cast<void*>(p)) U;
    }
    template <typename U, typename... Args>
    void construct(U* p, Args&&... args) {
        ::new (static_cast<void*>(p)) U(std::forward<Args>(args)...);
    }
};
using TargaBytes = std::vector<uint8_t, UninitialisedAllocator<uint8_t>>;

// The header, the 768-byte map of a colour-mapped file, then the rows bottom
// row first. Progress is reported on rows whose number is a multiple of ten.
TargaBytes EncodeTarga(const TargaImage& img, TargaProgress progress = nullptr, void* context = nullptr);
// The same bytes handed to sink piece by piece in file order (the header and
// map first, then groups of rows from a buffer that is reused); a sink that
// returns false stops the encoding, and the result is false.
using TargaSink = std::function<bool(const uint8_t* bytes, size_t size)>;
bool EncodeTargaTo(const TargaImage& img, const TargaSink& sink, TargaProgress progress = nullptr,
                   void* context = nullptr);
// The header a writer puts before the pixels of img.
TargaFileHeader TargaHeaderFor(const TargaImage& img);
