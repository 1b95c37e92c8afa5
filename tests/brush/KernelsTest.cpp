// The brush kernels against slow references written from the formulas: mask
// building, ScaleRotate, the fast blend (scalar and vector) and every mode of
// the general blend with paper and alpha.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <random>
#include <vector>

#include "core/MixTables.h"
#include "native/BrushKernels.h"

using namespace kwbrush;

namespace {
int RoundEven(double v) { return static_cast<int>(std::nearbyint(v)); }

std::vector<uint8_t> RandomBytes(size_t n, uint32_t seed, int lo = 0, int hi = 255) {
    std::mt19937 g(seed);
    std::uniform_int_distribution<int> d(lo, hi);
    std::vector<uint8_t> v(n);
    for (auto& b : v) b = static_cast<uint8_t>(d(g));
    return v;
}

// A small picture with its planes, alpha and swap, stride W + 1.
struct Pic {
    int W, H;
    size_t stride;
    std::vector<uint8_t> r, g, b, a, sr, sg, sb;
    Pic(int w, int h, uint32_t seed) : W(w), H(h), stride(static_cast<size_t>(w) + 1) {
        size_t n = stride * static_cast<size_t>(h + 1);
        r = RandomBytes(n, seed);
        g = RandomBytes(n, seed + 1);
        b = RandomBytes(n, seed + 2);
        a = RandomBytes(n, seed + 3);
        sr = RandomBytes(n, seed + 4);
        sg = RandomBytes(n, seed + 5);
        sb = RandomBytes(n, seed + 6);
    }
    DabTarget target() { return {r.data(), g.data(), b.data(), a.data(), stride, W, H}; }
    bool operator==(const Pic& o) const { return r == o.r && g == o.g && b == o.b; }
};

// A mask with every kind of value: 0, 255, 254 and the rest.
std::vector<uint8_t> TestMask(uint32_t seed) {
    std::vector<uint8_t> m = RandomBytes(MaskCells, seed);
    for (int i = 0; i < MaskCells; i += 7) m[static_cast<size_t>(i)] = 255;
    for (int i = 3; i < MaskCells; i += 11) m[static_cast<size_t>(i)] = 0;
    for (int i = 5; i < MaskCells; i += 13) m[static_cast<size_t>(i)] = 254;
    return m;
}
}  // namespace

TEST(BrushMask, PlotsTheScaledPictureAndLaterPixelsWin) {
    std::vector<uint8_t> pic = RandomBytes(MaskCells, 1);
    uint8_t mask[MaskCells];
    for (int size : {1, 4, 17, 33, 50, 68}) {
        float o = (68 - size) / 4.0f, s = size / 68.0f;
        PlotMask(pic.data(), o, s, mask);
        std::vector<uint8_t> want(MaskCells, 255);
        for (int u = 0; u < 38; ++u)
            for (int v = 0; v < 38; ++v) {
                int x = RoundEven(o + u * s), y = RoundEven(o + v * s);
                if (x < 38 && y < 38) want[static_cast<size_t>(x + 38 * y)] = pic[static_cast<size_t>(u + 38 * v)];
            }
        EXPECT_EQ(std::vector<uint8_t>(mask, mask + MaskCells), want) << "size " << size;
    }
    // At full size the mask is the picture itself.
    PlotMask(pic.data(), 0, 1, mask);
    EXPECT_EQ(0, std::memcmp(mask, pic.data(), MaskCells));
    // A one-pixel dot at a small size: the white pixel after it lands on the same cell and wins.
    std::vector<uint8_t> dot(MaskCells, 255);
    dot[17 + 17 * 38] = 0;
    PlotMask(dot.data(), (68 - 4) / 4.0f, 4 / 68.0f, mask);
    EXPECT_EQ(mask[17 + 17 * 38], 255);
}

TEST(BrushMask, FiveTapsAreTheUnevenPatternAndNineTheBlock) {
    std::vector<uint8_t> work(WorkSide * WorkSide, 255);
    uint8_t mask5[MaskCells], mask9[MaskCells];
    // Cell (2, 3): a dark work pixel at (3a + 2, 3b) is one of the nine taps only;
    // one at (3a + 1, 3b + 2) is in both.
    work[(3 * 2 + 2) + (3 * 3) * WorkSide] = 0;
    work[(3 * 5 + 1) + (3 * 6 + 2) * WorkSide] = 0;
    AverageTaps(work.data(), 5, mask5);
    AverageTaps(work.data(), 9, mask9);
    EXPECT_EQ(mask5[2 + 3 * 38], 255);
    EXPECT_EQ(mask9[2 + 3 * 38], RoundEven(255.0 * 8 / 9));
    EXPECT_EQ(mask5[5 + 6 * 38], RoundEven(255.0 * 4 / 5));
    EXPECT_EQ(mask9[5 + 6 * 38], RoundEven(255.0 * 8 / 9));
    // Row and column 37 are never written: they stay white.
    for (int i = 0; i < 38; ++i) {
        EXPECT_EQ(mask9[37 + i * 38], 255);
        EXPECT_EQ(mask9[i + 37 * 38], 255);
    }
}

TEST(BrushMask, AntiAliasedFullSizeKeepsThePicture) {
    // At size 68 the picture is enlarged exactly three times, so every tap of a cell
    // reads the same picture pixel and both averages give it back.
    std::vector<uint8_t> pic = RandomBytes(MaskCells, 2);
    uint8_t mask[MaskCells];
    std::vector<uint8_t> work(WorkSide * WorkSide);
    for (AntiAlias aa : {AntiAlias::FiveTap, AntiAlias::NineTap}) {
        BuildMask(pic.data(), 68, aa, mask, work.data());
        for (int b = 0; b < 36; ++b)
            for (int a = 0; a < 36; ++a) ASSERT_EQ(mask[a + 38 * b], pic[static_cast<size_t>(a + 38 * b)]) << a << "," << b;
    }
    // A small size shrinks: a dark dot survives as the darkest pixel of its block.
    std::vector<uint8_t> dot(MaskCells, 255);
    dot[17 + 17 * 38] = 0;
    BuildMask(dot.data(), 8, AntiAlias::NineTap, mask, work.data());
    int darkest = 255;
    for (int i = 0; i < MaskCells; ++i) darkest = std::min<int>(darkest, mask[i]);
    EXPECT_LT(darkest, 255);
}

namespace {
// ScaleRotate written out from its formula, in the same single precision.
void ReferenceScaleRotate(const uint8_t* mask, int angle, float scale, int smooth, uint8_t* out) {
    if (scale < 0.0001f) scale = 0.0001f;
    float rad = static_cast<float>(angle) * 0.017453292f;
    float cs = std::cos(rad) / scale, sn = std::sin(rad) / scale;
    float ru = 18 - (cs * 18 - sn * 18), rv = 18 - (cs * 18 + sn * 18);
    int side = smooth ? 75 : 38;
    if (smooth) {
        cs /= 2;
        sn /= 2;
    }
    std::vector<uint8_t> grid(static_cast<size_t>(side * side));
    for (int row = 0; row < side; ++row) {
        ru -= sn;
        rv += cs;
        float u = ru, v = rv;
        for (int col = 0; col < side; ++col) {
            u += cs;
            v += sn;
            bool in = u >= 0 && u <= 37 && v >= 0 && v <= 37;
            grid[static_cast<size_t>(col + row * side)] =
                in ? mask[static_cast<int>(std::nearbyint(u)) + 38 * static_cast<int>(std::nearbyint(v))] : 255;
        }
    }
    if (!smooth) {
        std::memcpy(out, grid.data(), MaskCells);
        return;
    }
    for (int b = 0; b <= 36; ++b)
        for (int a = 0; a <= 36; ++a) {
            int sum = grid[static_cast<size_t>(2 * a + 2 * b * 75)] + grid[static_cast<size_t>(2 * a + 1 + 2 * b * 75)] +
                      grid[static_cast<size_t>(2 * a + (2 * b + 1) * 75)] +
                      grid[static_cast<size_t>(2 * a + 1 + (2 * b + 1) * 75)];
            out[a + 38 * b] = static_cast<uint8_t>(RoundEven(sum / 4.0f));
        }
}
}  // namespace

TEST(ScaleRotate, FollowsItsWalkForAnglesScalesAndBothModes) {
    std::vector<uint8_t> mask = RandomBytes(MaskCells, 3);
    uint8_t fine[FineSide * FineSide];
    for (int smooth : {0, 1})
        for (int angle : {0, 30, 90, -45, 180, 359})
            for (float scale : {1.0f, 0.5f, 1.7f, 0.0f}) {
                uint8_t got[MaskCells], want[MaskCells];
                std::memset(got, 77, sizeof got);
                std::memset(want, 77, sizeof want);
                ScaleRotate(mask.data(), angle, scale, smooth, got, fine);
                ReferenceScaleRotate(mask.data(), angle, scale, smooth, want);
                ASSERT_EQ(0, std::memcmp(got, want, MaskCells)) << smooth << " " << angle << " " << scale;
            }
}

TEST(ScaleRotate, UnturnedWalkIsOneCellOnAndTinyScaleLeavesOnlyTheCentre) {
    std::vector<uint8_t> mask = RandomBytes(MaskCells, 4);
    uint8_t out[MaskCells], fine[FineSide * FineSide];
    ScaleRotate(mask.data(), 0, 1, 0, out, fine);
    for (int r = 0; r < 37; ++r)
        for (int c = 0; c < 37; ++c) ASSERT_EQ(out[c + 38 * r], mask[static_cast<size_t>(c + 1 + 38 * (r + 1))]);
    for (int i = 0; i < 38; ++i) EXPECT_EQ(out[37 + 38 * i], 255);
    // Scale by speed at -18 with the mouse still: scale 0 becomes 0.0001, one cell is left.
    ScaleRotate(mask.data(), 0, 0, 0, out, fine);
    for (int i = 0; i < MaskCells; ++i) ASSERT_EQ(out[i], i == 17 + 17 * 38 ? mask[18 + 18 * 38] : 255) << i;
    // Smooth leaves row and column 37 as they were.
    std::memset(out, 42, sizeof out);
    ScaleRotate(mask.data(), 10, 1, 1, out, fine);
    for (int i = 0; i < 38; ++i) {
        EXPECT_EQ(out[37 + 38 * i], 42);
        EXPECT_EQ(out[i + 38 * 37], 42);
    }
}

namespace {
void ReferenceFast(Pic& p, const uint8_t* mask, const DabBox& box, int R, int G, int B, int opacity) {
    float t = std::max(opacity, 0) / 255.0f;
    for (int j = 0; box.row0 + j <= box.row1; ++j)
        for (int i = 0; box.col0 + i <= box.col1; ++i) {
            int x = box.col0 + i, y = box.row0 + j;
            if (x < 0 || y < 0 || x > p.W || y > p.H) continue;
            int m = mask[box.maskStart + i + 38 * (box.maskStart + j)];
            if (m >= 255) continue;
            float k = 1.0f - (1.0f - (1.0f - m / 255.0f) * t);
            size_t at = static_cast<size_t>(y) * p.stride + static_cast<size_t>(x);
            auto mix = [&](uint8_t& c, int colour) {
                c = static_cast<uint8_t>(std::clamp(RoundEven(c * (1.0f - k) + colour * k), 0, 255));
            };
            mix(p.r[at], R);
            mix(p.g[at], G);
            mix(p.b[at], B);
        }
}
}  // namespace

TEST(DabFast, ScalarVectorAndFormulaAgreeAtEveryClip) {
    std::vector<uint8_t> mask = TestMask(5);
    int n = 0;
    for (int r : {0, 1, 7, 16, 17})
        for (int cx : {-20, 0, 3, 30, 60, 64, 80})
            for (int cy : {-3, 0, 20, 47, 60})
                for (int opacity : {-4, 0, 1, 128, 255}) {
                    DabBox box{cx - r, cx + r, cy - r, cy + r, 17 - r};
                    Pic a(64, 48, 10 + n), b(64, 48, 10 + n), c(64, 48, 10 + n);
                    DabFastScalar(a.target(), mask.data(), box, 200, 17, 90, opacity);
                    DabFastVector(b.target(), mask.data(), box, 200, 17, 90, opacity);
                    ReferenceFast(c, mask.data(), box, 200, 17, 90, opacity);
                    ASSERT_TRUE(a == c) << "scalar r " << r << " at " << cx << "," << cy << " op " << opacity;
                    ASSERT_TRUE(b == c) << "vector r " << r << " at " << cx << "," << cy << " op " << opacity;
                    ++n;
                }
    // The extra column and row are part of the clip: a dab at (W, H) lands there.
    Pic p(64, 48, 1), q(64, 48, 1);
    std::vector<uint8_t> full(MaskCells, 0);
    DabFast(p.target(), full.data(), DabBox{64, 64, 48, 48, 17}, 1, 2, 3, 255);
    EXPECT_EQ(p.r[48 * p.stride + 64], 1);
    p.r[48 * p.stride + 64] = q.r[48 * q.stride + 64];
    p.g[48 * p.stride + 64] = q.g[48 * q.stride + 64];
    p.b[48 * p.stride + 64] = q.b[48 * q.stride + 64];
    EXPECT_TRUE(p == q);  // and nowhere else
}

namespace {
// The general case, one pixel at a time, straight from the table of modes.
struct Ref {
    DabSettings s;
    void run(Pic& p, const uint8_t* mask, const DabBox& box) {
        int rows = box.row1 - box.row0, cols = box.col1 - box.col0;
        int n = s.negative ? 255 : 0;
        for (int j = 0; j <= rows; ++j) {
            int y = s.reverseRows ? box.row1 - j : box.row0 + j;
            for (int i = 0; i <= cols; ++i) {
                int x = s.reverseCols ? box.col1 - i : box.col0 + i;
                if (x < 0 || y < 0 || x > p.W || y > p.H) continue;
                int m = mask[box.maskStart + i + 38 * (box.maskStart + j)];
                if (m > 254) continue;
                size_t at = static_cast<size_t>(y) * p.stride + static_cast<size_t>(x);
                int old[3] = {p.r[at], p.g[at], p.b[at]};
                int a = 255 - m;
                float w = m / 255.0f;
                float c[3] = {s.cR, s.cG, s.cB};
                if (s.bump && s.paperW) {
                    float q = s.paperF[static_cast<size_t>(x % s.paperW) + (y - (y / s.paperH) * s.paperH) * s.paperStride];
                    for (float& f : c) f = std::min(1.0f, std::max(0.0f, f + q));
                }
                if (s.dry && s.paperW) {
                    int h = s.paperB[static_cast<size_t>(x % s.paperW) + (y % s.paperH) * s.paperStride];
                    int o = RoundEven(s.baseOpacity - std::abs(n - h) * s.strength);
                    s.opacity = o < 0 ? 0 : o;
                }
                int nw[3];
                for (int k = 0; k < 3; ++k) {
                    const std::vector<uint8_t>* plane[3] = {&p.r, &p.g, &p.b};
                    const std::vector<uint8_t>* swap[3] = {&p.sr, &p.sg, &p.sb};
                    auto blendFrom = [&](int src) { return RoundEven(old[k] * w + (1 - w) * src); };
                    switch (s.mode) {
                        case 0: nw[k] = RoundEven(old[k] * w + a * c[k]); break;
                        case 1: case 2: case 9: case 10: case 11:
                            nw[k] = s.table[old[k] + 256 * RoundEven(a * c[k])];
                            break;
                        case 3: nw[k] = std::max(0, RoundEven(old[k] * w + (old[k] * c[k]) * (1 - w))); break;
                        case 4: nw[k] = blendFrom((*swap[k])[at]); break;
                        case 5: case 6: {
                            int sx = s.mode == 5 ? x - s.pantoX : RoundEven(x - s.smearDX);
                            int sy = s.mode == 5 ? y - s.pantoY : RoundEven(y - s.smearDY);
                            bool in = sx >= 0 && sy >= 0 && sx <= p.W - 1 && sy <= p.H - 1;
                            nw[k] = in ? blendFrom((*plane[k])[static_cast<size_t>(sy) * p.stride + sx]) : old[k];
                            break;
                        }
                        default: {
                            const uint8_t* bp[3] = {s.br, s.bg, s.bb};
                            int u = (x + (s.mode == 8 ? s.patX : 0)) % s.brushW, v = (y + (s.mode == 8 ? s.patY : 0)) % s.brushH;
                            nw[k] = blendFrom(bp[k][static_cast<size_t>(v) * s.brushStride + u]);
                        }
                    }
                }
                int o = s.opacity, e = p.a[at] | s.alphaOff;
                uint8_t* dst[3] = {&p.r[at], &p.g[at], &p.b[at]};
                for (int k = 0; k < 3; ++k) {
                    int v = (nw[k] * o + old[k] * (255 - o)) / 255;
                    if (e < 255) v = (old[k] * (255 - e) + v * e) / 255;
                    *dst[k] = static_cast<uint8_t>(v);
                }
            }
        }
    }
};

struct Paper {
    int w = 7, h = 5;
    std::vector<uint8_t> b = RandomBytes(static_cast<size_t>((7 + 1) * (5 + 1)), 99);
    std::vector<float> f;
    Paper() {
        std::mt19937 g(7);
        std::uniform_real_distribution<float> d(-0.4f, 0.4f);
        for (size_t i = 0; i < b.size(); ++i) f.push_back(d(g));
    }
    void attach(DabSettings& s) {
        s.paperF = f.data();
        s.paperB = b.data();
        s.paperStride = 8;
        s.paperW = w;
        s.paperH = h;
    }
};
}  // namespace

TEST(DabGeneral, EveryModeMatchesItsFormulaWithPaperAndAlpha) {
    std::vector<uint8_t> mask = TestMask(6);
    std::vector<uint8_t> br = RandomBytes(6 * 5, 50), bg = RandomBytes(6 * 5, 51), bb = RandomBytes(6 * 5, 52);
    Paper paper;
    const uint8_t* tables[12] = {};
    tables[1] = MixAdd;
    tables[2] = MixSub;
    tables[9] = MixDiv;
    tables[10] = MixScreen;
    tables[11] = MixAroundGrey;
    int n = 0;
    for (int mode = 0; mode < 12; ++mode)
        for (int flags = 0; flags < 8; ++flags)
            for (int cx : {-5, 20, 58}) {
                DabSettings s;
                s.mode = mode;
                s.table = tables[mode];
                s.cR = 230 / 256.0f, s.cG = 12 / 256.0f, s.cB = 128 / 256.0f;
                s.baseOpacity = s.opacity = (n % 2) ? 255 : 200;  // full opacity has a path of its own
                s.bump = flags & 1;
                s.dry = flags & 2;
                s.negative = flags & 4;
                s.strength = 0.7f;
                paper.attach(s);
                s.alphaOff = (n % 3 == 0) ? 255 : 0;
                s.pantoX = 9;
                s.pantoY = -4;
                s.smearDX = 1.5f;
                s.smearDY = -2.5f;
                s.br = br.data(), s.bg = bg.data(), s.bb = bb.data();
                s.brushStride = 6, s.brushW = 5, s.brushH = 4;
                s.patX = 3, s.patY = 2;
                DabBox box{cx - 17, cx + 17, 30 - 17, 30 + 17, 0};
                Pic got(60, 40, 300 + n), want(60, 40, 300 + n);
                got.sr = want.sr;  // the swap planes are read through the settings
                DabSettings sg = s, sw = s;
                sg.sr = got.sr.data(), sg.sg = got.sg.data(), sg.sb = got.sb.data();
                DabGeneral(got.target(), mask.data(), box, sg);
                Ref ref{sw};
                ref.run(want, mask.data(), box);
                ASSERT_TRUE(got == want) << "mode " << mode << " flags " << flags << " at " << cx;
                EXPECT_EQ(sg.opacity, ref.s.opacity) << "the last drybrush opacity is kept";
                ++n;
            }
}

TEST(DabGeneral, EdgeCasesOfPaperPantoSmearAndAlpha) {
    std::vector<uint8_t> full(MaskCells, 0);
    // Drybrush: a paper height of 255 at strength 1 takes all of B = 255 away...
    std::vector<uint8_t> height(4, 255);
    std::vector<float> slope(4, 0.0f);
    DabSettings s;
    s.cR = s.cG = s.cB = 0;
    s.dry = true;
    s.strength = 1;
    s.paperB = height.data(), s.paperF = slope.data(), s.paperStride = 2, s.paperW = 1, s.paperH = 1;
    Pic p(8, 8, 1), before(8, 8, 1);
    DabGeneral(p.target(), full.data(), DabBox{3, 3, 3, 3, 17}, s);
    EXPECT_TRUE(p == before);
    EXPECT_EQ(s.opacity, 0);
    // ...and with Negative the same pixel paints fully.
    s.negative = true;
    DabGeneral(p.target(), full.data(), DabBox{3, 3, 3, 3, 17}, s);
    EXPECT_EQ(p.r[3 * p.stride + 3], 0);
    EXPECT_EQ(s.opacity, 255);

    // Panto whose source leaves the canvas keeps the old pixel.
    DabSettings panto;
    panto.mode = ModePanto;
    panto.pantoX = 100;
    Pic q(8, 8, 2), q0(8, 8, 2);
    DabGeneral(q.target(), full.data(), DabBox{0, 7, 0, 7, 0}, panto);
    EXPECT_TRUE(q == q0);

    // Smear scanning against a stroke that moves right and down differs from a forward scan:
    // the order is what keeps a pixel from being read after it was overwritten.
    DabSettings smear;
    smear.mode = ModeSmear;
    smear.smearDX = 1, smear.smearDY = 1;
    Pic back(12, 12, 3), fwd(12, 12, 3);
    smear.reverseRows = smear.reverseCols = true;
    DabGeneral(back.target(), full.data(), DabBox{2, 9, 2, 9, 0}, smear);
    smear.reverseRows = smear.reverseCols = false;
    DabGeneral(fwd.target(), full.data(), DabBox{2, 9, 2, 9, 0}, smear);
    EXPECT_FALSE(back == fwd);
    // Full paint backwards is a plain copy of the picture one pixel up and left.
    Pic orig(12, 12, 3);
    EXPECT_EQ(back.r[5 * back.stride + 5], orig.r[4 * orig.stride + 4]);

    // Alpha 0 with AlphaOff 0 leaves the pixel; with AlphaOff 255 it paints.
    DabSettings plain;
    Pic m(4, 4, 4);
    std::fill(m.a.begin(), m.a.end(), 0);
    Pic m0 = m;
    plain.alphaOff = 0;
    DabGeneral(m.target(), full.data(), DabBox{0, 3, 0, 3, 0}, plain);
    EXPECT_TRUE(m == m0);
    plain.alphaOff = 255;
    DabGeneral(m.target(), full.data(), DabBox{0, 3, 0, 3, 0}, plain);
    EXPECT_EQ(m.r[0], 0);
}
