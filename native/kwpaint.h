// kwpaint: the display kernels that turn the picture planes into a screen image.
//
// Conventions shared by every routine in this header:
//
//  * Planes. A picture of W x H pixels keeps each channel (R, G, B, the swap
//    layer SR, SG, SB, the marquee) in its own plane of (W + 1) x (H + 1)
//    bytes, x fastest: pixel (x, y) lives at plane[x + y * (W + 1)]. The row
//    stride is therefore W + 1 bytes. The extra column and row are never part
//    of the picture and no routine here reads them.
//
//  * Screen image ("dest"). destHeight rows of destStride elements each
//    (uint32_t, uint16_t, or for the 24-bit route bytes, where destStride is
//    in BYTES and a row holds destStride / 3 pixels). Element (dx, dy) is
//    dest[dx + dy * destStride]. Elements outside what a call draws are left
//    untouched.
//
//  * Window. At a zoom of Z percent the picture is shown as a window of
//    W * Z / 100 by H * Z / 100 window pixels; window pixel (u, v) shows the
//    source pixel (u * 100 / Z, v * 100 / Z) (integer division with 64-bit
//    intermediates). The dest may cover only part of the window: its element
//    (0, 0) shows window pixel (orgX, orgY), so window pixel (u, v) lands on
//    dest(u - orgX, v - orgY). The 1:1 routes are the Z = 100 case, where
//    window and picture pixels coincide.
//
//  * Rectangles (left, top, right, bottom) have right and bottom EXCLUSIVE.
//    The 1:1 routes take them in picture pixels, the zoomed routes in window
//    pixels. Every call clips, once, to the picture (window), to the
//    rectangle and to the dest; an empty or inverted rectangle draws nothing.
//
//  * Pixel formats (r, g, b are the 8-bit channel values):
//      32-bit : 0x00RRGGBB
//      24-bit : three bytes per pixel in memory order B, G, R
//      16-bit : 5-6-5, (r >> 3) << 11 | (g >> 2) << 5 | b >> 3
//      15-bit : 5-5-5, (r >> 3) << 10 | (g >> 3) << 5 | b >> 3
//
//  * Layer mixing. A mix table is 256 x 256 bytes, first index fastest; each
//    shown channel is table[main + 256 * swap], e.g. r = table[R + 256 * SR].
//
//  * Zoom is meant to be 25..600 percent; a zoom of zero or less draws nothing.
//
//  * These are pure functions: no globals, no allocation, no locking. Pointers
//    must be valid for the sizes given; the planes of one call may alias each
//    other but must not overlap the dest.
#pragma once

#include <cstddef>
#include <cstdint>

namespace kwpaint {

// ---- 1:1 routes: rectangle in picture pixels, dest(x - orgX, y - orgY) = pixel (x, y)

void FastRefresh32(uint32_t* dest, int left, int top, int right, int bottom,
                   const uint8_t* R, const uint8_t* G, const uint8_t* B,
                   int destStride, int destHeight, int W, int H, int orgX = 0, int orgY = 0);

void FastRefresh16(uint16_t* dest, int left, int top, int right, int bottom,
                   const uint8_t* R, const uint8_t* G, const uint8_t* B,
                   int destStride, int destHeight, int W, int H, int orgX = 0, int orgY = 0);

void FastRefresh_Mix32(uint32_t* dest, int left, int top, int right, int bottom,
                       const uint8_t* R, const uint8_t* G, const uint8_t* B,
                       const uint8_t* SR, const uint8_t* SG, const uint8_t* SB, const uint8_t* table,
                       int destStride, int destHeight, int W, int H, int orgX = 0, int orgY = 0);

void FastRefresh_Mix16(uint16_t* dest, int left, int top, int right, int bottom,
                       const uint8_t* R, const uint8_t* G, const uint8_t* B,
                       const uint8_t* SR, const uint8_t* SG, const uint8_t* SB, const uint8_t* table,
                       int destStride, int destHeight, int W, int H, int orgX = 0, int orgY = 0);

// ---- Zoomed routes: rectangle in window pixels, dest(u - orgX, v - orgY) = window pixel (u, v)

void RefreshFromBuffs(uint32_t* dest, int left, int top, int right, int bottom,
                      const uint8_t* R, const uint8_t* G, const uint8_t* B,
                      int destStride, int destHeight, int W, int H, int zoomPercent,
                      int orgX = 0, int orgY = 0);

// destStride in BYTES; each pixel is the three bytes B, G, R.
void RefreshFromBuffs24(uint8_t* dest, int left, int top, int right, int bottom,
                        const uint8_t* R, const uint8_t* G, const uint8_t* B,
                        int destStride, int destHeight, int W, int H, int zoomPercent,
                        int orgX = 0, int orgY = 0);

void RefreshFromBuffs16(uint16_t* dest, int left, int top, int right, int bottom,
                        const uint8_t* R, const uint8_t* G, const uint8_t* B,
                        int destStride, int destHeight, int W, int H, int zoomPercent,
                        int orgX = 0, int orgY = 0);

void RefreshFromBuffs15(uint16_t* dest, int left, int top, int right, int bottom,
                        const uint8_t* R, const uint8_t* G, const uint8_t* B,
                        int destStride, int destHeight, int W, int H, int zoomPercent,
                        int orgX = 0, int orgY = 0);

// ---- Marquee: every dest pixel whose window pixel shows a non-zero marquee
// pixel (plane stride W + 1) becomes grey phase, 0x00pppppp with p = phase & 0xFF.
// At zoom > 100 a marquee pixel therefore paints its whole block of window
// pixels; at zoom < 100 only the marquee pixels the window samples show.
void DispMarquee(uint32_t* dest, int destStride, int destHeight, const uint8_t* marquee, int W, int H,
                 int zoomPercent, int phase, int orgX = 0, int orgY = 0);

// ---- Thumbnail: a tw x th picture of the whole W x H picture, nearest pixel.
// thumb[u + v * tw] shows pixel (u * W / tw, v * H / th) (integer division with
// 64-bit intermediates) as a colour value, red in the low byte:
// r | g << 8 | b << 16. planeStride is the planes' row stride in bytes (W + 1
// for planes of the picture's own size). Returns whether any thumbnail pixel
// took another value, so that the caller repaints its view only then.
bool NearestThumbnail(uint32_t* thumb, int tw, int th, const uint8_t* R, const uint8_t* G, const uint8_t* B,
                      int W, int H, ptrdiff_t planeStride);

// memcpy; the areas must not overlap. A zero count touches nothing.
void Kel_CopyMem(const void* source, void* destination, size_t byteCount);
// The same with stores that go past the cache whatever the count, for a copy
// that is not read again soon.
void StreamCopy(const void* source, void* destination, size_t byteCount);

// ---- Row converters behind FastRefresh32, exposed so the vector form can be
// checked against the plain one. Both write count pixels of 0x00RRGGBB.
namespace detail {
void PackRow32Scalar(uint32_t* dest, const uint8_t* r, const uint8_t* g, const uint8_t* b, int count);
void PackRow32Vector(uint32_t* dest, const uint8_t* r, const uint8_t* g, const uint8_t* b, int count,
                     bool streaming);
// The AVX2 form; call it only when HaveAvx2() says the processor has it.
void PackRow32Avx2(uint32_t* dest, const uint8_t* r, const uint8_t* g, const uint8_t* b, int count, bool streaming);
bool HaveAvx2();
// The converter FastRefresh32 uses: AVX2 where the processor has it, else SSE2.
using PackRowFn = void (*)(uint32_t*, const uint8_t*, const uint8_t*, const uint8_t*, int, bool);
PackRowFn ChosenPackRow32();
}  // namespace detail

}  // namespace kwpaint
