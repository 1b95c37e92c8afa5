// The gradient tools of the linear tool family and the map to a gradient:
// a linear gradient laid over the picture, its fade of alpha, the circular
// gradient, the warp that drags the picture along a line, and the mapping of
// each pixel's brightness to a gradient step.
//
// Conventions:
//
//  * Planes share one stride; the picture is W by H, x fastest. The planes run
//    one column and row further (the classic W + 1 stride), which the warp's
//    bilinear reads land on.
//  * The linear walk is single precision and sequential, as its users see
//    it: a row accumulator starts at `start`, each row first adds cy, a column
//    accumulator starts from it and each pixel first adds cx; the step is the
//    rounded (half to even) negative of the column accumulator, held to
//    0..255. The rounding drift of those sums is part of the result; eight
//    rows walk at once in vector lanes, each lane the same additions in the
//    same order.
//  * A gradient step gives colour g and opacity ga; a channel becomes
//    (g * ga + old * (255 - ga)) / 255, and through alpha (a = alpha | alphaOff)
//    (n * a + old * (255 - a)) / 255, integer division throughout.
#pragma once

#include <cstddef>
#include <cstdint>

namespace kwlinear {

struct Planes {
    uint8_t *r = nullptr, *g = nullptr, *b = nullptr;
    const uint8_t* a = nullptr;  // alpha, read when alphaOff is not 255
    size_t stride = 0;
    uint8_t alphaOff = 255;
};

// The four channels of one gradient, 256 steps each.
struct GradientSteps {
    const uint8_t *r, *g, *b, *a;
};

// The linear walk's steps of `rows` rows (at most 8) into idx, a row of W
// bytes each; rowAcc is the row accumulator before the first of them and is
// left after the last.
void LinearSteps(float& rowAcc, float cx, float cy, int W, int rows, uint8_t* idx);

// The gradient along the walk over the whole picture.
void LinearGradient(const Planes& p, int W, int H, float start, float cx, float cy, const GradientSteps& grad);
// The same walk on alpha alone: alpha = alpha * (255 - step) / 255.
void LinearAlphaFade(uint8_t* alpha, size_t stride, int W, int H, float start, float cx, float cy);
// The step at each pixel is (distance from (CX, CY) / Radius) ^ Power * 255,
// held to 0..255: beyond the radius the last step. Radius 0 does nothing.
void CircularGradient(const Planes& p, int W, int H, float CX, float CY, float Radius, float Power,
                      const GradientSteps& grad);

// The warp: each pixel within reach of (X2, Y2) takes the source picture at
// its own place moved by (X1 - X2, Y1 - Y2) * t, t = 1 - (distance / d) ^ Power;
// pixels with t below 0 keep their colour. Anti-aliased: only the box of
// radius d round (X2, Y2), sampled bilinearly; otherwise every pixel, the
// nearest source pixel. src are the planes of the picture before the drag.
struct WarpLine {
    float X1, Y1, X2, Y2, d, Power;
    bool antiAliased;
};
void LinearWarp(const Planes& dst, const uint8_t* const src[3], int W, int H, const WarpLine& line);

// Each pixel's mean of red, green and blue (rounded half to even) picks the
// gradient step whose colour goes into the pixel, mixed through alpha.
void MapToGradient(const Planes& p, int W, int H, const GradientSteps& grad);

}  // namespace kwlinear
