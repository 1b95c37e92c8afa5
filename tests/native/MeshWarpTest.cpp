// The mesh warp kernels: the identity at rest, clamping at the edges, and
// agreement with a slow reference of the warp's formulas.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "native/MeshWarp.h"

using kwmesh::Mesh;

namespace {
struct Picture {
    int W, H;
    std::vector<uint8_t> p[3];
    Picture(int w, int h) : W(w), H(h) {
        for (int c = 0; c < 3; ++c) {
            p[c].assign(static_cast<size_t>(W + 1) * (H + 1), 0);
            for (int y = 0; y <= H; ++y)
                for (int x = 0; x <= W; ++x) p[c][y * (W + 1) + x] = static_cast<uint8_t>((x * 31 + y * 17 + c * 90) % 256);
        }
    }
    uint8_t at(int c, int x, int y) const { return p[c][y * (W + 1) + x]; }
};

Picture Warp(const Picture& src, const Mesh& mesh, int gx, int gy) {
    Picture out(src.W, src.H);
    const uint8_t* s[3] = {src.p[0].data(), src.p[1].data(), src.p[2].data()};
    uint8_t* d[3] = {out.p[0].data(), out.p[1].data(), out.p[2].data()};
    kwmesh::ApplyMorphRows(mesh, gx, gy, s, d, src.W, src.H, 0, src.H);
    return out;
}

struct MeshData {
    int cols, rows;
    std::vector<int16_t> X, Y;
    MeshData(int c, int r, int16_t x = 0, int16_t y = 0) : cols(c), rows(r), X((c + 1) * (r + 1), x), Y(X.size(), y) {}
    Mesh mesh() const { return {X.data(), Y.data(), cols, rows}; }
};
}  // namespace

TEST(MeshWarpKernels, AMeshAtRestIsTheIdentityAndAPushedOneClampsAtTheEdges) {
    for (auto [w, h] : {std::pair{1, 1}, {2, 1}, {17, 9}, {64, 64}}) {
        const Picture src(w, h);
        const MeshData rest(8, 6);
        const Picture same = Warp(src, rest.mesh(), 7, 5);
        for (int c = 0; c < 3; ++c)
            for (int y = 0; y < h; ++y)
                for (int x = 0; x < w; ++x) ASSERT_EQ(same.at(c, x, y), src.at(c, x, y)) << w << "x" << h;
        // Everything pushed far right and up: each pixel reads column 0 of the bottom row.
        const MeshData pushed(8, 6, 1000, -1000);
        const Picture smear = Warp(src, pushed.mesh(), 7, 5);
        for (int y = 0; y < h; ++y)
            for (int x = 0; x < w; ++x) EXPECT_EQ(smear.at(1, x, y), src.at(1, 0, h - 1));
    }
}

TEST(MeshWarpKernels, OneDraggedNodeAgreesWithTheFormulasPixelByPixel) {
    const Picture src(50, 30);
    MeshData m(4, 3);
    m.X[1 * 5 + 2] = 9;  // node (2, 1)
    m.Y[1 * 5 + 2] = -6;
    const int gx = 3, gy = 2;
    const Picture out = Warp(src, m.mesh(), gx, gy);
    const float W1 = 49, H1 = 29, kx = gx / W1, ky = gy / H1;
    int moved = 0;
    for (int y = 0; y < 30; ++y)
        for (int x = 0; x < 50; ++x) {
            const float u = x * kx, v = y * ky;
            const int iu = int(u), iv = int(v), iu1 = std::min(iu + 1, 4), iv1 = std::min(iv + 1, 3);
            const float fu = u - iu, fv = v - iv;
            auto node = [&](const std::vector<int16_t>& N, int c, int r) { return N[r * 5 + c]; };
            auto d = [&](const std::vector<int16_t>& N) {
                return (node(N, iu, iv) * (1 - fu) + node(N, iu1, iv) * fu) * (1 - fv) +
                       (node(N, iu1, iv1) * fu + node(N, iu, iv1) * (1 - fu)) * fv;
            };
            const float sx = std::clamp(x - d(m.X), 0.0f, W1), sy = std::clamp(y - d(m.Y), 0.0f, H1);
            const int ix = int(sx), iy = int(sy);
            const float fx = sx - ix, fy = sy - iy;
            for (int c = 0; c < 3; ++c) {
                const float want = (src.at(c, ix, iy) * (1 - fx) + src.at(c, ix + 1, iy) * fx) * (1 - fy) +
                                   (src.at(c, ix + 1, iy + 1) * fx + src.at(c, ix, iy + 1) * (1 - fx)) * fy;
                ASSERT_EQ(out.at(c, x, y), std::nearbyint(want)) << x << "," << y;
            }
            moved += out.at(0, x, y) != src.at(0, x, y);
        }
    EXPECT_GT(moved, 100);
    EXPECT_EQ(out.at(0, 0, 0), src.at(0, 0, 0));  // the corners' nodes stayed put
}

TEST(MeshWarpKernels, VectorsFollowTheNodesAndThePreviewIsAnInverseMap) {
    const int ph = 9;
    MeshData m(4, 3);
    std::vector<int16_t> vx(400 * (ph + 1), 1), vy(vx.size(), 1);
    kwmesh::ResampleMorphVectors(m.mesh(), 3, 2, ph, vx.data(), vy.data());
    EXPECT_TRUE(std::all_of(vx.begin(), vx.end(), [](int16_t v) { return v == 0; }));
    m.X[1 * 5 + 1] = 12;  // node (1, 1) stands at preview column 133, row 4.5
    kwmesh::ResampleMorphVectors(m.mesh(), 3, 2, ph, vx.data(), vy.data());
    EXPECT_EQ(vx[4 * 400 + 133], 11);  // row 4 lies 8/9 of the way to the node's row: 12 * 8 / 9 rounds to 11
    EXPECT_EQ(vx[9 * 400 + 133], 0);   // the last row is the grid's last row, at rest
    EXPECT_EQ(vx[0], 0);
    EXPECT_EQ(vx[4 * 400 + 399], 0);
    EXPECT_TRUE(std::all_of(vy.begin(), vy.end(), [](int16_t v) { return v == 0; }));

    std::vector<uint32_t> preview(400 * (ph + 1));
    for (size_t i = 0; i < preview.size(); ++i) preview[i] = static_cast<uint32_t>(i);
    std::vector<int16_t> sx(preview.size(), 5), sy(preview.size(), -2);
    std::vector<uint32_t> dst(400 * 400, 0xDEAD);
    kwmesh::DrawMeshPreview(preview.data(), sx.data(), sy.data(), ph, dst.data(), 400, 3);
    EXPECT_EQ(dst[3 * 400 + 10], preview[2 * 400 + 5]);   // (10, 0) reads (5, 2)
    EXPECT_EQ(dst[3 * 400 + 2], preview[2 * 400 + 0]);    // clamped at the left edge
    EXPECT_EQ(dst[(3 + ph) * 400 + 50], preview[ph * 400 + 45]);  // and at the bottom
    EXPECT_EQ(dst[2 * 400 + 50], 0xDEADu);                 // rows outside the preview untouched
    EXPECT_EQ(dst[(4 + ph) * 400 + 50], 0xDEADu);
}
