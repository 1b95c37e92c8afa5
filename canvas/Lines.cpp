// The line drawers on the main planes.
#include "canvas/Lines.h"

#include <algorithm>
#include <cmath>

#include "core/document/Buffers.h"
#include "core/framework/vb.h"
#include "native/Lines.h"

namespace {
uint8_t Byte(int32_t v) { return static_cast<uint8_t>(std::clamp(v, 0, 255)); }

// The planes and the size the kernels may walk: never more than the planes hold.
bool Planes(kwline::RgbPlanes& p, int32_t& W, int32_t& H) {
    if (BufR.empty() || BufG.empty() || BufB.empty()) return false;
    p = {BufR.data(), BufG.data(), BufB.data(), BufR.stride()};
    W = std::min(W, BufR.ubX());
    H = std::min(H, BufR.ubY());
    return W > 0 && H > 0;
}
}  // namespace

void MidPointLine(int32_t X1, int32_t Y1, int32_t X2, int32_t Y2, int32_t R, int32_t G, int32_t B, int32_t W,
                  int32_t H) {
    kwline::RgbPlanes p;
    if (Planes(p, W, H)) kwline::MidPointLine(p, X1, Y1, X2, Y2, Byte(R), Byte(G), Byte(B), W, H);
}

void AALine(int32_t X1, int32_t Y1, int32_t X2, int32_t Y2, int32_t R, int32_t G, int32_t B, int32_t W, int32_t H) {
    kwline::RgbPlanes p;
    if (Planes(p, W, H)) kwline::AALine(p, X1, Y1, X2, Y2, Byte(R), Byte(G), Byte(B), W, H);
}

void AAFloatLine(float X1, float Y1, float X2, float Y2, int32_t R, int32_t G, int32_t B, int32_t W, int32_t H) {
    kwline::RgbPlanes p;
    if (Planes(p, W, H)) kwline::AAFloatLine(p, X1, Y1, X2, Y2, Byte(R), Byte(G), Byte(B), W, H);
}

void GradAALine(int32_t X1, int32_t Y1, int32_t X2, int32_t Y2, int32_t R1, int32_t G1, int32_t B1, int32_t R2,
                int32_t G2, int32_t B2, int32_t W, int32_t H) {
    kwline::RgbPlanes p;
    if (Planes(p, W, H)) kwline::GradAALine(p, X1, Y1, X2, Y2, R1, G1, B1, R2, G2, B2, W, H);
}
