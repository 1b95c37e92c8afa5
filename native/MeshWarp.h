// Kernels of the mesh warp: node displacements spread to one vector a pixel,
// the preview drawn through those vectors as an inverse map, and the full
// picture resampled through the mesh with bilinear filtering.
//
// A mesh is (cols + 1) x (rows + 1) 16-bit nodes, x fastest, for nodes
// 0..cols by 0..rows: one extra column and row of zeros beyond the last node
// give the "next node" of the last cell a safe landing.
#pragma once

#include <cstddef>
#include <cstdint>

namespace kwmesh {
struct Mesh {
    const int16_t* X;
    const int16_t* Y;
    int cols, rows;  // index of the last column and row of the arrays
    int16_t x(int c, int r) const { return X[static_cast<size_t>(r) * (cols + 1) + c]; }
    int16_t y(int c, int r) const { return Y[static_cast<size_t>(r) * (cols + 1) + c]; }
};

// vecX, vecY (400 x (ph + 1), stride 400) := the mesh, whose gx by gy cells
// span the preview, bilinearly mixed at every preview pixel, rounded half to even.
void ResampleMorphVectors(const Mesh& mesh, int gx, int gy, int ph, int16_t* vecX, int16_t* vecY);

// The preview's 400 x (ph + 1) pixels warped into dst (stride dstStride) from
// row `top` on: dst(c, top + r) := preview(clamp(c - vecX), clamp(r - vecY)).
void DrawMeshPreview(const uint32_t* preview, const int16_t* vecX, const int16_t* vecY, int ph, uint32_t* dst,
                     size_t dstStride, int top);

// Rows y0..y1-1 of the W x H picture (planes of stride W + 1) resampled from
// the source planes through the mesh of gx by gy cells spread over the picture;
// displacements are taken as they are, in pixels.
void ApplyMorphRows(const Mesh& mesh, int gx, int gy, const uint8_t* const src[3], uint8_t* const dst[3], int W, int H,
                    int y0, int y1);
}  // namespace kwmesh
