// The mesh warp kernels. Mixing orders follow the warp's own formulas term by
// term, so a pixel comes out the same whichever kernel or thread computes it.
#include "native/MeshWarp.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "native/Rounding.h"

namespace kwmesh {
namespace {
// One axis of a cell: the node below, the one after it (held to `last`), the fraction.
struct Cell {
    int i, i1;
    float f;
};
inline Cell CellOf(float g, int last) {
    const int i = static_cast<int>(std::floor(g));
    return {std::clamp(i, 0, last), std::clamp(i + 1, 0, last), g - static_cast<float>(i)};
}
}  // namespace

void ResampleMorphVectors(const Mesh& mesh, int gx, int gy, int ph, int16_t* vecX, int16_t* vecY) {
    if (gx <= 0 || gy <= 0 || ph < 0) return;
    const float kx = gx / 399.0f, ky = ph > 0 ? gy / static_cast<float>(ph) : 0.0f;
    // The columns' cells, from the same running sum every row would make.
    Cell cols[400];
    float gxAcc = 0;
    for (int c = 0; c < 400; ++c, gxAcc += kx) cols[c] = CellOf(gxAcc, mesh.cols);
    const size_t nodeStride = static_cast<size_t>(mesh.cols) + 1;
    float gyAcc = 0;
    for (int r = 0; r <= ph; ++r, gyAcc += ky) {
        const Cell cy = CellOf(gyAcc, mesh.rows);
        for (int k = 0; k < 2; ++k) {
            const int16_t* nodes = k == 0 ? mesh.X : mesh.Y;
            const int16_t* n0 = nodes + cy.i * nodeStride;
            const int16_t* n1 = nodes + cy.i1 * nodeStride;
            int16_t* out = (k == 0 ? vecX : vecY) + static_cast<size_t>(r) * 400;
            for (int c = 0; c < 400; ++c) {
                const Cell& cx = cols[c];
                const float top = n0[cx.i1] * cx.f + n0[cx.i] * (1 - cx.f);
                const float bottom = n1[cx.i1] * cx.f + n1[cx.i] * (1 - cx.f);
                out[c] = static_cast<int16_t>(kwround::RoundF(top * (1 - cy.f) + bottom * cy.f));
            }
        }
    }
}

void DrawMeshPreview(const uint32_t* preview, const int16_t* vecX, const int16_t* vecY, int ph, uint32_t* dst,
                     size_t dstStride, int top) {
    for (int r = 0; r <= ph; ++r) {
        const int16_t* vx = vecX + static_cast<size_t>(r) * 400;
        const int16_t* vy = vecY + static_cast<size_t>(r) * 400;
        uint32_t* out = dst + static_cast<size_t>(top + r) * dstStride;
        for (int c = 0; c < 400; ++c) {
            const int sx = std::clamp(c - vx[c], 0, 399), sy = std::clamp(r - vy[c], 0, ph);
            out[c] = preview[static_cast<size_t>(sy) * 400 + sx];
        }
    }
}

void ApplyMorphRows(const Mesh& mesh, int gx, int gy, const uint8_t* const src[3], uint8_t* const dst[3], int W, int H,
                    int y0, int y1) {
    if (W < 1 || H < 1) return;
    const float W1 = static_cast<float>(W - 1), H1 = static_cast<float>(H - 1);
    const float kx = W1 > 0 ? gx / W1 : 0.0f, ky = H1 > 0 ? gy / H1 : 0.0f;
    const size_t stride = static_cast<size_t>(W) + 1;
    // The column's cell does not depend on the row: worked out once a call.
    std::vector<Cell> cols(static_cast<size_t>(W));
    for (int x = 0; x < W; ++x) cols[x] = CellOf(x * kx, mesh.cols);
    for (int y = y0; y < y1; ++y) {
        const Cell cy = CellOf(y * ky, mesh.rows);
        for (int x = 0; x < W; ++x) {
            const Cell& cx = cols[x];
            auto mix = [&](int16_t (Mesh::*n)(int, int) const) {
                return ((mesh.*n)(cx.i, cy.i) * (1 - cx.f) + (mesh.*n)(cx.i1, cy.i) * cx.f) * (1 - cy.f) +
                       ((mesh.*n)(cx.i1, cy.i1) * cx.f + (mesh.*n)(cx.i, cy.i1) * (1 - cx.f)) * cy.f;
            };
            const float sx = std::clamp(x - mix(&Mesh::x), 0.0f, W1), sy = std::clamp(y - mix(&Mesh::y), 0.0f, H1);
            const int ix = static_cast<int>(sx), iy = static_cast<int>(sy);
            const float fx = sx - ix, fy = sy - iy;
            const size_t p = static_cast<size_t>(iy) * stride + ix;
            for (int c = 0; c < 3; ++c) {
                const uint8_t* u = src[c];
                const float v = (u[p] * (1 - fx) + u[p + 1] * fx) * (1 - fy) +
                                (u[p + stride + 1] * fx + u[p + stride] * (1 - fx)) * fy;
                dst[c][static_cast<size_t>(y) * stride + x] = static_cast<uint8_t>(kwround::RoundF(v));
            }
        }
    }
}
}  // namespace kwmesh
