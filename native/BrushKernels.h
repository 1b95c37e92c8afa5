// Natural brush kernels: the dab mask built from a brush picture, the mask
// turned and scaled, and one dab blended into the picture planes.
//
// Conventions shared by every routine in this header:
//
//  * Masks. A mask is MaskSide x MaskSide bytes, x fastest: cell (x, y) lives
//    at mask[x + y * MaskSide]. 0 is full paint, 255 no paint. The centre of a
//    dab is cell (MaskCentre, MaskCentre).
//  * Brush pictures. A MaskSide x MaskSide grey picture in the same layout,
//    white (255) where the brush lays nothing.
//  * Picture planes. A W x H picture keeps each channel in a plane of stride
//    W + 1. A dab may land on the extra column W and row H, which every plane
//    allocates, so a dab's clip is 0..W by 0..H inclusive.
//  * Clipping. A dab is clipped once before its loops, to the picture and to
//    the mask: the loops then run over the rows and columns that land on both,
//    and the mask index still advances over the rows and columns the clip
//    skips. What a pixel reads from elsewhere is tested where it is read: the
//    source of panto and smear moves with the pixel, and a source off the
//    picture leaves the old pixel. Mask building works on positions it
//    computes: PlotMask and StretchPicture clip theirs once, while ScaleRotate
//    tests each sample of its turned walk against the mask, since the walk's
//    rounded path is no rectangle.
//  * Arithmetic. Single precision with rounding to nearest even, in the order
//    the engine's formulas give; "\" is truncating integer division. The SSE2
//    twin of the fast blend gives the same bytes as the scalar one.
//  * Pure functions: no globals but a constant table, no allocation. The
//    settings are read only; what a dab changes comes back as its result.
#pragma once

#include <cstddef>
#include <cstdint>

#include "native/Modes.h"

namespace kwbrush {

constexpr int MaskSide = 38;
constexpr int MaskCentre = 17;
constexpr int MaskCells = MaskSide * MaskSide;
constexpr int FineSide = 75;   // the twice-oversampled work mask of ScaleRotate
constexpr int WorkSide = 111;  // the enlarged picture the anti-aliased masks average

// ---- Building the mask from a brush picture at a size of 1..68.

// No anti-aliasing: fill display white, then plot picture pixel (u, v) for u,
// v in 0..37 at (CInt(o + u * s), CInt(o + v * s)) in increasing order, so a
// later pixel overwrites an earlier one.
void PlotMask(const uint8_t* picture, float o, float s, uint8_t* display);

// Copies the top left srcSide x srcSide of the picture onto a work grid of
// WorkSide squared (filled white first), stretched to side pixels at (at, at).
// When it shrinks, a work pixel keeps the darkest picture pixel it covers, so
// thin strokes of paint survive a small size.
void StretchPicture(const uint8_t* picture, int srcSide, int at, int side, uint8_t* work);

// Averages taps of the work grid into display (filled white first) for a, b in
// 0..36: 5 taps (3a, 3b), (3a, 3b+1), (3a+1, 3b), (3a+1, 3b+1), (3a+1, 3b+2)
// divided by 5, or the 9 taps of the 3 x 3 block divided by 9, rounded.
void AverageTaps(const uint8_t* work, int taps, uint8_t* display);

// Anti-aliasing choices of BuildMask.
enum class AntiAlias { None = 0, FiveTap = 1, NineTap = 2 };
// The whole build: mask = the display the picture was drawn on at this size.
// work must hold WorkSide squared bytes.
void BuildMask(const uint8_t* picture, int size, AntiAlias aa, uint8_t* mask, uint8_t* work);

// Turns and scales the mask (angle in whole degrees). Smooth 0 samples once
// per target cell; smooth 1 samples a twice finer grid into fine (FineSide
// squared) and averages 2 x 2 blocks into target cells 0..36, leaving row and
// column 37 of xform as they were.
void ScaleRotate(const uint8_t* mask, int32_t angle, float scale, int smooth, uint8_t* xform, uint8_t* fine);

// ---- One dab.

struct DabTarget {
    uint8_t* r;
    uint8_t* g;
    uint8_t* b;
    const uint8_t* a;  // the alpha plane
    size_t stride;     // W + 1
    int W, H;          // the picture: the dab clips to 0..W by 0..H inclusive
};

// The dab's rows row0..row1 and columns col0..col1 (before clipping) and the
// mask cell its first row and column read.
struct DabBox {
    int col0, col1, row0, row1;
    int maskStart;  // 17 - r: the first mask row and column
};

// Fast case: default mode, no paper, no marquee. With t = opacity / 255
// (negative taken as 0) and k = 1 - (1 - (1 - m / 255) * t):
// new = old * (1 - k) + colour * k, rounded. The alpha plane is not read.
void DabFast(const DabTarget& t, const uint8_t* mask, const DabBox& box, int colR, int colG, int colB,
             int opacity);
void DabFastScalar(const DabTarget& t, const uint8_t* mask, const DabBox& box, int colR, int colG, int colB,
                   int opacity);
void DabFastVector(const DabTarget& t, const uint8_t* mask, const DabBox& box, int colR, int colG, int colB,
                   int opacity);

// What the general case reads besides the target and the mask. The painting
// mode decides which of the fields count; the kernel never writes them.
struct DabSettings {
    kwmode::PaintMode mode = kwmode::PaintMode::Default;
    const uint8_t* table = nullptr;  // table modes: table[old + 256 * amount]
    float cR = 0, cG = 0, cB = 0;    // colour fractions, colour / 256
    int baseOpacity = 255;           // B
    int opacity = 255;               // BrushOpacity: the opacity of every pixel unless drybrush sets it
    bool bump = false, dry = false, negative = false;
    float strength = 0;                // PaperStrength
    const float* paperF = nullptr;     // slope plane
    const uint8_t* paperB = nullptr;   // height plane
    size_t paperStride = 0;
    int paperW = 0, paperH = 0;        // 0: no paper, bump and dry do nothing
    uint8_t alphaOff = 255;
    const uint8_t *sr = nullptr, *sg = nullptr, *sb = nullptr;  // swap planes, stride as the target
    int pantoX = 0, pantoY = 0;        // panto: source is (x - pantoX, y - pantoY)
    float smearDX = 0, smearDY = 0;    // smear: px - PrevDabX, py - PrevDabY
    bool reverseRows = false, reverseCols = false;  // smear scans against the stroke
    const uint8_t *br = nullptr, *bg = nullptr, *bb = nullptr;  // custom brush planes (patterns)
    size_t brushStride = 0;
    int brushW = 0, brushH = 0;        // 0: no custom brush, patterns leave pixels alone
    int patX = 0, patY = 0;            // offset pattern: stroke origin
};

// General case: every mode, bumpiness, drybrush and the alpha plane. Returns
// the brush opacity after the dab: under drybrush the opacity of the last pixel
// it painted, otherwise (or when it painted nothing) s.opacity.
[[nodiscard]] int DabGeneral(const DabTarget& t, const uint8_t* mask, const DabBox& box, const DabSettings& s);

}  // namespace kwbrush
