// Shape masks: the even-odd polygon fill of the lasso and the row spans of the
// filled ellipse.
//
// Conventions:
//
//  * A pixel (x, y) is inside a polygon when its centre (x + 0.5, y + 0.5) is
//    inside by the even-odd rule: an outline that crosses itself leaves the
//    doubly enclosed parts out. Edges are half-open in y, so a vertex on a
//    row's centre line counts once.
//  * The plane is written only inside the clip box left..right by top..bottom
//    (inclusive), which the caller keeps within the plane.
#pragma once

#include <cstddef>
#include <cstdint>

namespace kwshape {

// Sets every pixel of the closed polygon (n points, x at xy[2i], y at
// xy[2i + 1]) to value. Fewer than three points fill nothing.
void PolygonEvenOdd(const int32_t* xy, int n, uint8_t* plane, size_t stride, int left, int top, int right, int bottom,
                    uint8_t value);

// The filled ellipse's test for one pixel: t below 128, with
// t = sqrt(((x - cx) * (255 / w))^2 + ((y - cy) * (255 / h))^2) in single
// precision; w and h are the box's size, already floored away from 0.
inline bool InEllipse(float x, float y, float cx, float cy, float w, float h);

// The run of pixels of row y inside the ellipse, searched within x0..x1:
// first and last (inclusive), or false when the row has none there. The
// test is monotone in the distance from the centre, so the ends are walked
// from where the row meets the ellipse and agree with InEllipse exactly.
bool EllipseRowSpan(float cx, float cy, float w, float h, int y, int x0, int x1, int& first, int& last);

}  // namespace kwshape

#include <cmath>

inline bool kwshape::InEllipse(float x, float y, float cx, float cy, float w, float h) {
    const float a = (x - cx) * (255.0f / w), b = (y - cy) * (255.0f / h);
    return std::sqrt(a * a + b * b) < 128.0f;
}
