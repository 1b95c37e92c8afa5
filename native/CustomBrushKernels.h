// Custom brush kernels: a four-plane brush picture stamped into the picture
// planes, in colour mode (the brush's own colours), in matte mode (only the
// brush's coverage counts, painted in one colour), and the modes that take
// their paint from elsewhere (swap layer, a brush tile, the picture itself).
//
// Conventions shared by every routine in this header:
//
//  * A stamp's top left corner is (X, Y) in picture pixels; brush pixel (u, v)
//    lands on (X + u, Y + v). The stamp is clipped once, to 0..W-1 by 0..H-1.
//  * Coverage: a = BrushA * Opacity / 255, truncated; Opacity below 0 counts as
//    0 and above 255 as 255. A pixel becomes (old * (255 - a) + paint * a) / 255.
//  * The alpha plane: e = BufA | AlphaOff; when e < 255 the pixel is mixed back
//    towards the old one: (old * (255 - e) + new * e) / 255. "/" truncates.
//  * Paper: bumpiness adds the slope plane (scaled to bytes, rounded half to
//    even, held to 0..255) to the paint; drybrush lowers the opacity by
//    |n - height| * Strength / 100, n = 255 under Negative, else 0; below 0
//    counts as 0. The paper tiles from the picture's corner.
//  * Table modes take the paint through table[old + 256 * paint].
//  * Pure functions: no globals, no allocation.
#pragma once

#include <cstddef>
#include <cstdint>

namespace kwbrush {

// The brush: four planes of the same stride, w by h pixels.
struct BrushPlanes {
    const uint8_t *r = nullptr, *g = nullptr, *b = nullptr, *a = nullptr;
    size_t stride = 0;
    int w = 0, h = 0;
};

// The picture a stamp lands on.
struct CustomTarget {
    uint8_t *r = nullptr, *g = nullptr, *b = nullptr;
    const uint8_t* a = nullptr;  // the alpha plane
    size_t stride = 0;
    int W = 0, H = 0;
};

// The paper: slope and height planes of one stride, tiled; w = 0 for none.
struct PaperPlanes {
    const float* f = nullptr;
    const uint8_t* b = nullptr;
    size_t stride = 0;
    int w = 0, h = 0;
};

// Paper flags of the matte blits.
enum PaperFlag : int { Bumpiness = 1, Drybrush = 2, Negative = 4 };

// Colour mode, default painting mode, no paper.
void CustomBrushBlit(const BrushPlanes& brush, const CustomTarget& t, int X, int Y, int Opacity, uint8_t AlphaOff);
// Colour mode through a mixing table (UseTable 1) and the paper's bumpiness (paperF not null).
void Full_CustomBrushBlit(const BrushPlanes& brush, const CustomTarget& t, const uint8_t* Table,
                          const PaperPlanes& paper, int X, int Y, int Opacity, uint8_t AlphaOff, int UseTable);
// Matte mode: the brush's coverage in the dab colour.
void CustomMatteBlit(const BrushPlanes& brush, const CustomTarget& t, int DabR, int DabG, int DabB, int X, int Y,
                     int Opacity, uint8_t AlphaOff);
// The same bytes as CustomMatteBlit, through per-row product tables.
void Fast_CustomMatteBlit(const BrushPlanes& brush, const CustomTarget& t, int DabR, int DabG, int DabB, int X,
                          int Y, int Opacity, uint8_t AlphaOff);
// Matte mode through a mixing table (UseTable 1) and the paper's flags.
void Full_CustomMatteBlit(const BrushPlanes& brush, const CustomTarget& t, const uint8_t* Table, int DabR, int DabG,
                          int DabB, const PaperPlanes& paper, float Strength, int X, int Y, int Opacity,
                          uint8_t AlphaOff, int UseTable, int Flags);
// Matte mode in the default painting mode with the paper's flags.
void Paper_CustomMatteBlit(const BrushPlanes& brush, const CustomTarget& t, int DabR, int DabG, int DabB, int X,
                           int Y, int Opacity, uint8_t AlphaOff, const PaperPlanes& paper, float Strength, int Flags);

// Rubthrough: the paint is the swap layer's pixel at the same place.
struct SwapPlanes {
    const uint8_t *r = nullptr, *g = nullptr, *b = nullptr;  // stride as the target
};
void RubBrushBlit(const BrushPlanes& brush, const CustomTarget& t, const SwapPlanes& swap, int X, int Y, int Opacity,
                  uint8_t AlphaOff);
// Pattern: the paint is the brush tile at ((x + OrgX) mod w, (y + OrgY) mod h),
// x and y picture pixels; the coverage is the stamp's.
void PatBrushBlit(const BrushPlanes& brush, const CustomTarget& t, int X, int Y, int Opacity, uint8_t AlphaOff,
                  int OrgX, int OrgY);
// Smear (Kind 0) and panto (Kind 1): the paint is the picture at (x - DX, y - DY):
// the stroke's motion since the last dab, or the clone offset. The scan runs
// against the offset so that a pixel is read before it is overwritten; a
// source off the picture leaves the pixel.
void CloneBrushBlit(const BrushPlanes& brush, const CustomTarget& t, int X, int Y, int Opacity, uint8_t AlphaOff,
                    int Kind, int DX, int DY);

}  // namespace kwbrush
