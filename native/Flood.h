// The connected-region search of the flood fill and the magic wand, and the
// smoothing of its mask.
//
// Conventions:
//
//  * Planes. Red, green, blue and the mask share one stride; the picture is
//    W by H, x fastest. The mask must be zero over the picture on entry: a
//    non-zero mask pixel counts as already reached and stops the search.
//  * Connectivity is 4-way: a pixel reaches its left, right, upper and lower
//    neighbours, never its diagonals, so a one-pixel diagonal line is a wall.
//  * Colour distance is the largest of the three channel differences
//    (|dr|, |dg|, |db|): a pixel belongs when every channel lies within
//    Tolerance of the seed's. Tolerance 0 takes the seed's exact colour only;
//    255 takes every pixel connected to the seed.
//  * No recursion: reached spans wait on an explicit stack of row segments,
//    and a span is scanned once, so the call stack never grows with the region.
#pragma once

#include <cstddef>
#include <cstdint>

namespace kwflood {

// Sets 255 in the mask at each pixel connected to (X, Y) whose colour lies
// within Tolerance of the colour at (X, Y). Returns the number of pixels
// reached; 0 when the seed lies outside the picture.
int64_t floodfrombuff2(int X, int Y, int W, int H, const uint8_t* r, const uint8_t* g, const uint8_t* b,
                       uint8_t* mask, size_t stride, int Tolerance);

// The anti-aliasing of a flood mask, in place. Pass one: each pixel becomes
// the five-point mean (itself and its four neighbours, rounded), and every
// non-zero mean becomes 255, which grows the mask by a pixel. Pass two: the
// same mean again, which softens the rim. Neighbours beyond the picture's edge
// repeat the edge pixel. scratch is a plane of the mask's size and stride.
void SmoothFloodMask(uint8_t* mask, uint8_t* scratch, size_t stride, int W, int H);

}  // namespace kwflood
