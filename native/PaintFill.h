// The paint fills: a brushed-looking coat of one colour laid into a mask.
//
// Conventions:
//
//  * The mask M (the selection's copy) and the picture share one stride; the
//    picture is W by H, x fastest. The stroke texture is StrokeW by StrokeH
//    bytes with its own stride, indexed modulo (StrokeW - 1) and
//    (StrokeH - 1); the paper likewise modulo its own size.
//  * The coat: inside the box of non-zero M, each pixel's place within its
//    row's span and its column's span picks two entries of an edge table, so
//    that the coat thins toward the selection's edges; their product is
//    scaled by the stroke texture, the paper and M itself. Then M is softened
//    (five-point means, the picture's edge pixels kept) and the relief of M
//    shades the colour before it is mixed in by M.
#pragma once

#include <cstddef>
#include <cstdint>

namespace kwpaintfill {

constexpr int StrokeW = 377, StrokeH = 358;

struct Texture {
    const uint8_t* p = nullptr;  // null: a flat texture of 255
    size_t stride = 0;
    int w = 0, h = 0;
};

struct Coat {
    uint8_t* mask;  // M, rewritten with the coat's strength
    uint8_t *r, *g, *b;
    size_t stride;
    int W, H;
    Texture stroke, paper;
    int brushOpacity;  // 0: a full coat; 255: the thinnest
    uint8_t colour[3];
};

// The 257 entries of the edge table for a coat's opacity: 0 at either end of
// a span, rising to its level toward the middle, faster for a fuller coat.
void EdgeTable(int brushOpacity, uint8_t table[257]);

// Lays the coat. Returns false (and changes nothing) when M is empty.
bool PaintCoat(const Coat& c);

}  // namespace kwpaintfill
