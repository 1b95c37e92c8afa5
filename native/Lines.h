// Line drawers over the three picture planes: the solid midpoint line, the
// bilinear anti-aliased line (integer and float end points) and the line whose
// colour ramps from one end to the other.
//
// Conventions:
//
//  * Planes. r, g, b share one stride and cover 0..W by 0..H inclusive (the
//    picture plus the extra column and row), as every picture plane does.
//  * Clipping. Each point is tested on its own, as the drawers always did:
//    MidPointLine plots 0 <= x <= W, 0 <= y <= H; the anti-aliased lines test
//    only the top-left pixel of their 2 x 2 stamp against 0..W-1, 0..H-1, so
//    the stamp's right column and bottom row may land on the extra column and
//    row. Nothing is ever written outside the planes.
//  * Arithmetic. Single precision for the positions and weights, rounding half
//    to even at each stage of a blend.
#pragma once

#include <cstddef>
#include <cstdint>

namespace kwline {

struct RgbPlanes {
    uint8_t *r = nullptr, *g = nullptr, *b = nullptr;
    size_t stride = 0;
};

// Integer midpoint line, every point written as (R, G, B) with no blending.
// Steps along the major axis from (X1, Y1) to (X2, Y2); the minor axis moves
// when the decision is above 0, so exact midpoints stay on the start's side.
void MidPointLine(const RgbPlanes& p, int X1, int Y1, int X2, int Y2, uint8_t R, uint8_t G, uint8_t B, int W, int H);

// Anti-aliased line of D + 1 bilinear stamps, D the rounded length.
void AALine(const RgbPlanes& p, int X1, int Y1, int X2, int Y2, uint8_t R, uint8_t G, uint8_t B, int W, int H);
void AAFloatLine(const RgbPlanes& p, float X1, float Y1, float X2, float Y2, uint8_t R, uint8_t G, uint8_t B, int W,
                 int H);

// A colour ramp along the line, each point mixed 1/5 into the picture, so a
// line builds up over repeated passes.
void GradAALine(const RgbPlanes& p, int X1, int Y1, int X2, int Y2, int R1, int G1, int B1, int R2, int G2, int B2,
                int W, int H);

}  // namespace kwline
