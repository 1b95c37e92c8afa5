// The brush kernels: mask building against slow references written from the
// formulas, ScaleRotate by what turns and scales must do, the fast blend (scalar
// and vector) and every mode of the general blend with paper, alpha, scan order
// and clipping at every edge.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <random>
#include <vector>

#include "native/BrushKernels.h"

using namespace kwbrush;
using kwmode::PaintMode;
using Bytes = std::vector<uint8_t>;

namespace {
int RoundEven(double v) { return static_cast<int>(std::nearbyint(v)); }

Bytes RandomBytes(size_t n, uint32_t seed) {
    std::mt19937 g(seed);
    Bytes v(n);
    for (auto& b : v) b = static_cast<uint8_t>(g() & 255);
    return v;
}

// A small picture with its planes, alpha and swap, stride W + 1.
struct Pic {
    int W, H;
    size_t stride;
    Bytes r, g, b, a, sr, sg, sb;
    Pic(int w, int h, uint32_t seed) : W(w), H(h), stride(static_cast<size_t>(w) + 1) {
        for (Bytes* p : {&r, &g, &b, &a, &sr, &sg, &sb}) *p = RandomBytes(stride * static_cast<size_t>(h + 1), seed++);
    }
    DabTarget target() { return {r.data(), g.data(), b.data(), a.data(), stride, W, H}; }
    bool operator==(const Pic& o) const { return r == o.r && g == o.g && b == o.b; }
};

// A mask with every kind of value: 0, 255, 254 and the rest.
Bytes TestMask(uint32_t seed) {
    Bytes m = RandomBytes(MaskCells, seed);
    for (int i = 0; i < MaskCells; ++i)
        if (i % 7 == 0 || i % 11 == 3 || i % 13 == 5) m[static_cast<size_t>(i)] = i % 13 == 5 ? 254 : i % 11 == 3 ? 0 : 255;
    return m;
}
}  // namespace

TEST(BrushMask, PlotAndTapAveragesFollowTheirFormulas) {
    Bytes pic = RandomBytes(MaskCells, 1);
    uint8_t mask[MaskCells];
    // Picture pixel (u, v) lands at (CInt(o + u s), CInt(o + v s)); a later pixel wins.
    // The sizes of BuildMask, then positions that run off the display at both
    // ends, backwards, and nowhere near it.
    std::vector<std::pair<float, float>> plots;
    for (int size : {1, 4, 17, 33, 50, 68}) plots.emplace_back((68 - size) / 4.0f, size / 68.0f);
    plots.insert(plots.end(), {{-3.0f, 1.3f}, {40.0f, -1.2f}, {-50.0f, 0.5f}, {10.0f, 0.0f}});
    for (auto [o, s] : plots) {
        PlotMask(pic.data(), o, s, mask);
        Bytes want(MaskCells, 255);
        for (int u = 0; u < 38; ++u)
            for (int v = 0; v < 38; ++v) {
                int x = RoundEven(o + u * s), y = RoundEven(o + v * s);
                if (x >= 0 && y >= 0 && x < 38 && y < 38)
                    want[static_cast<size_t>(x + 38 * y)] = pic[static_cast<size_t>(u + 38 * v)];
            }
        EXPECT_EQ(Bytes(mask, mask + MaskCells), want) << "o " << o << " s " << s;
    }
    // Five taps are the uneven pattern, nine the 3 x 3 block; row and column 37 stay white.
    Bytes work = RandomBytes(WorkSide * WorkSide, 9);
    const int five[][2] = {{0, 0}, {0, 1}, {1, 0}, {1, 1}, {1, 2}};
    for (int taps : {5, 9}) {
        AverageTaps(work.data(), taps, mask);
        Bytes want(MaskCells, 255);
        for (int b = 0; b <= 36; ++b)
            for (int a = 0; a <= 36; ++a) {
                int sum = 0;
                for (int k = 0; k < taps; ++k) {
                    int dx = taps == 5 ? five[k][0] : k % 3, dy = taps == 5 ? five[k][1] : k / 3;
                    sum += work[static_cast<size_t>(3 * a + dx + (3 * b + dy) * WorkSide)];
                }
                want[static_cast<size_t>(a + 38 * b)] = static_cast<uint8_t>(RoundEven(sum / double(taps)));
            }
        EXPECT_EQ(Bytes(mask, mask + MaskCells), want) << taps << " taps";
    }
}

TEST(BrushMask, AntiAliasedFullSizeKeepsThePictureAndASmallSizeKeepsADot) {
    // At size 68 the picture is enlarged exactly three times, so every tap of a cell
    // reads the same picture pixel and both averages give it back.
    Bytes pic = RandomBytes(MaskCells, 2), work(WorkSide * WorkSide);
    uint8_t mask[MaskCells];
    for (AntiAlias aa : {AntiAlias::FiveTap, AntiAlias::NineTap}) {
        BuildMask(pic.data(), 68, aa, mask, work.data());
        for (int b = 0; b < 36; ++b)
            for (int a = 0; a < 36; ++a) ASSERT_EQ(mask[a + 38 * b], pic[static_cast<size_t>(a + 38 * b)]) << a << "," << b;
    }
    // A small size shrinks: a dark dot survives as the darkest pixel of its block.
    Bytes dot(MaskCells, 255);
    dot[17 + 17 * 38] = 0;
    BuildMask(dot.data(), 8, AntiAlias::NineTap, mask, work.data());
    EXPECT_LT(*std::min_element(mask, mask + MaskCells), 255);
}

TEST(BrushMask, StretchKeepsTheDarkestPixelAndClipsToTheWorkGrid) {
    // Each work pixel keeps the darkest picture pixel of its share of the source;
    // a stretch that starts off the grid or runs past it keeps only what lands.
    Bytes pic = RandomBytes(MaskCells, 4), got(WorkSide * WorkSide);
    const int stretches[][3] = {{36, 0, 108}, {36, 5, 20}, {36, -7, 60}, {30, 90, 40}, {36, -200, 50}, {38, 0, 0}};
    for (const auto& [srcSide, at, side] : stretches) {
        StretchPicture(pic.data(), srcSide, at, side, got.data());
        Bytes want(WorkSide * WorkSide, 255);
        for (int j = 0; j < side; ++j)
            for (int i = 0; i < side; ++i) {
                const int x = at + i, y = at + j;
                if (x < 0 || y < 0 || x >= WorkSide || y >= WorkSide) continue;
                int darkest = 255;
                for (int v = j * srcSide / side; v < std::max((j + 1) * srcSide / side, j * srcSide / side + 1); ++v)
                    for (int u = i * srcSide / side; u < std::max((i + 1) * srcSide / side, i * srcSide / side + 1); ++u)
                        darkest = std::min<int>(darkest, pic[static_cast<size_t>(u + 38 * v)]);
                want[static_cast<size_t>(x + y * WorkSide)] = static_cast<uint8_t>(darkest);
            }
        ASSERT_EQ(got, want) << srcSide << " at " << at << " side " << side;
    }
}

namespace {
// A brush mask for turning: random greys in a disc about the dab's centre,
// white around it, so nothing is lost off the edge of the grid.
Bytes DiscMask(uint32_t seed) {
    Bytes m = RandomBytes(MaskCells, seed);
    for (int y = 0; y < MaskSide; ++y)
        for (int x = 0; x < MaskSide; ++x) {
            uint8_t& v = m[static_cast<size_t>(x + y * MaskSide)];
            const int dx = x - MaskCentre, dy = y - MaskCentre;
            v = dx * dx + dy * dy <= 12 * 12 ? std::min<uint8_t>(v, 254) : 255;
        }
    return m;
}

Bytes Turned(const Bytes& mask, int angle, float scale, int smooth = 0) {
    Bytes out(MaskCells, 255);  // smooth turns leave the last row and column as they were
    uint8_t fine[FineSide * FineSide];
    ScaleRotate(mask.data(), angle, scale, smooth, out.data(), fine);
    return out;
}

int PaintedCells(const Bytes& mask) {
    return static_cast<int>(std::count_if(mask.begin(), mask.end(), [](uint8_t v) { return v < 255; }));
}

// The painted part of a mask cut to its bounding box, row after row with the
// box's width first: two masks that differ only by where they sit compare equal.
Bytes Painted(const Bytes& mask) {
    int x0 = MaskSide, y0 = MaskSide, x1 = -1, y1 = -1;
    for (int y = 0; y < MaskSide; ++y)
        for (int x = 0; x < MaskSide; ++x)
            if (mask[static_cast<size_t>(x + y * MaskSide)] < 255) {
                x0 = std::min(x0, x), x1 = std::max(x1, x);
                y0 = std::min(y0, y), y1 = std::max(y1, y);
            }
    Bytes box{static_cast<uint8_t>(x1 - x0 + 1)};
    for (int y = y0; y <= y1; ++y)
        for (int x = x0; x <= x1; ++x) box.push_back(mask[static_cast<size_t>(x + y * MaskSide)]);
    return box;
}
}  // namespace

TEST(ScaleRotate, TurnsComposeAsTurnsDo) {
    for (uint32_t seed : {3u, 4u}) {
        const Bytes mask = DiscMask(seed);
        // Unturned at full size the mask comes back as it was. (The walk starts
        // a cell in, so it sits one cell nearer the origin.)
        EXPECT_EQ(Painted(Turned(mask, 0, 1)), Painted(mask));
        EXPECT_EQ(Turned(mask, 360, 1), Turned(mask, 0, 1));
        // A quarter turn moves the picture, four of them bring it back to the cell.
        const Bytes quarter = Turned(mask, 90, 1);
        EXPECT_NE(Painted(quarter), Painted(mask));
        EXPECT_EQ(PaintedCells(quarter), PaintedCells(mask));
        EXPECT_EQ(Turned(Turned(Turned(quarter, 90, 1), 90, 1), 90, 1), mask);
        // A half turn is two quarter turns, and a quarter turn back undoes one forward.
        EXPECT_EQ(Painted(Turned(quarter, 90, 1)), Painted(Turned(mask, 180, 1)));
        EXPECT_EQ(Painted(Turned(quarter, -90, 1)), Painted(mask));
        EXPECT_EQ(Painted(Turned(mask, -90, 1)), Painted(Turned(mask, 270, 1)));
    }
}

TEST(ScaleRotate, ScaleBelowOneShrinksThePaintedArea) {
    const Bytes mask = DiscMask(5);
    for (int smooth : {0, 1})
        for (int angle : {0, 30, 90}) {
            const int full = PaintedCells(Turned(mask, angle, 1, smooth));
            const int half = PaintedCells(Turned(mask, angle, 0.5f, smooth));
            const int small = PaintedCells(Turned(mask, angle, 0.2f, smooth));
            EXPECT_GT(full, 0) << smooth << " " << angle;
            EXPECT_LT(half, full * 2 / 5) << smooth << " " << angle;  // about a quarter
            EXPECT_LT(small, half) << smooth << " " << angle;
            // Scale 0 (by speed with the mouse still) leaves at most a dot.
            EXPECT_LE(PaintedCells(Turned(mask, angle, 0, smooth)), 4) << smooth << " " << angle;
        }
    // Above one the dab grows.
    EXPECT_GT(PaintedCells(Turned(mask, 0, 1.4f)), PaintedCells(mask));
}

TEST(DabFast, ScalarVectorAndFormulaAgreeAtEveryClip) {
    // With t = opacity / 255 (negative as 0), k = 1 - (1 - (1 - m / 255) t); the clip
    // includes the extra column W and row H.
    Bytes mask = TestMask(5);
    int n = 0;
    for (int r : {0, 1, 7, 16, 17})
        for (int cx : {-20, 0, 3, 30, 60, 64, 80})
            for (int cy : {-3, 0, 20, 47, 60})
                for (int opacity : {-4, 0, 1, 128, 255}) {
                    DabBox box{cx - r, cx + r, cy - r, cy + r, 17 - r};
                    Pic a(64, 48, 10 + n), b(64, 48, 10 + n), c(64, 48, 10 + n);
                    DabFastScalar(a.target(), mask.data(), box, 200, 17, 90, opacity);
                    DabFastVector(b.target(), mask.data(), box, 200, 17, 90, opacity);
                    float t = std::max(opacity, 0) / 255.0f;
                    for (int y = std::max(box.row0, 0); y <= std::min(box.row1, c.H); ++y)
                        for (int x = std::max(box.col0, 0); x <= std::min(box.col1, c.W); ++x) {
                            int m = mask[box.maskStart + x - box.col0 + 38 * (box.maskStart + y - box.row0)];
                            if (m == 255) continue;
                            float k = 1.0f - (1.0f - (1.0f - m / 255.0f) * t);
                            size_t at = static_cast<size_t>(y) * c.stride + static_cast<size_t>(x);
                            int colour[3] = {200, 17, 90}, i = 0;
                            for (Bytes* p : {&c.r, &c.g, &c.b})
                                (*p)[at] = static_cast<uint8_t>(RoundEven((*p)[at] * (1.0f - k) + colour[i++] * k));
                        }
                    ASSERT_TRUE(a == c) << "scalar r " << r << " at " << cx << "," << cy << " op " << opacity;
                    ASSERT_TRUE(b == c) << "vector r " << r << " at " << cx << "," << cy << " op " << opacity;
                    ++n;
                }
}

namespace {
// The general case, one pixel at a time, straight from the table of modes.
int ReferenceGeneral(Pic& p, const uint8_t* mask, const DabBox& box, const DabSettings& s) {
    int n = s.negative ? 255 : 0, opacity = s.opacity;
    for (int j = 0; j <= box.row1 - box.row0; ++j) {
        int y = s.reverseRows ? box.row1 - j : box.row0 + j;
        for (int i = 0; i <= box.col1 - box.col0; ++i) {
            int x = s.reverseCols ? box.col1 - i : box.col0 + i;
            if (x < 0 || y < 0 || x > p.W || y > p.H || box.maskStart + i > 37 || box.maskStart + j > 37) continue;
            int m = mask[box.maskStart + i + 38 * (box.maskStart + j)];
            if (m > 254) continue;
            size_t at = static_cast<size_t>(y) * p.stride + static_cast<size_t>(x);
            int old[3] = {p.r[at], p.g[at], p.b[at]}, a = 255 - m, nw[3];
            float w = m / 255.0f, c[3] = {s.cR, s.cG, s.cB};
            if (s.bump && s.paperW) {
                float q = s.paperF[static_cast<size_t>(x % s.paperW) + (y - (y / s.paperH) * s.paperH) * s.paperStride];
                for (float& f : c) f = std::min(1.0f, std::max(0.0f, f + q));
            }
            if (s.dry && s.paperW) {
                int h = s.paperB[static_cast<size_t>(x % s.paperW) + (y % s.paperH) * s.paperStride];
                opacity = std::max(0, RoundEven(s.baseOpacity - std::abs(n - h) * s.strength));
            }
            const Bytes* plane[3] = {&p.r, &p.g, &p.b};
            const uint8_t* swap[3] = {s.sr, s.sg, s.sb};
            const uint8_t* brush[3] = {s.br, s.bg, s.bb};
            for (int k = 0; k < 3; ++k) {
                auto blendFrom = [&](int src) { return RoundEven(old[k] * w + (1 - w) * src); };
                switch (s.mode) {
                    case PaintMode::Default: nw[k] = RoundEven(old[k] * w + a * c[k]); break;
                    case PaintMode::Additive:
                    case PaintMode::Subtract:
                    case PaintMode::Divide:
                    case PaintMode::Screen:
                    case PaintMode::AroundGrey: nw[k] = s.table[old[k] + 256 * RoundEven(a * c[k])]; break;
                    case PaintMode::Multiply:
                        nw[k] = std::max(0, RoundEven(old[k] * w + (old[k] * c[k]) * (1 - w)));
                        break;
                    case PaintMode::Rubthrough: nw[k] = blendFrom(swap[k][at]); break;
                    case PaintMode::Panto:
                    case PaintMode::Smear: {
                        const bool panto = s.mode == PaintMode::Panto;
                        int sx = panto ? x - s.pantoX : RoundEven(x - s.smearDX);
                        int sy = panto ? y - s.pantoY : RoundEven(y - s.smearDY);
                        bool in = sx >= 0 && sy >= 0 && sx <= p.W - 1 && sy <= p.H - 1;
                        nw[k] = in ? blendFrom((*plane[k])[static_cast<size_t>(sy) * p.stride + sx]) : old[k];
                        break;
                    }
                    default: {  // the patterns
                        const bool offset = s.mode == PaintMode::OffsetPattern;
                        int u = (x + (offset ? s.patX : 0)) % s.brushW, v = (y + (offset ? s.patY : 0)) % s.brushH;
                        nw[k] = blendFrom(brush[k][static_cast<size_t>(v) * s.brushStride + u]);
                    }
                }
            }
            int o = opacity, e = p.a[at] | s.alphaOff;
            uint8_t* dst[3] = {&p.r[at], &p.g[at], &p.b[at]};
            for (int k = 0; k < 3; ++k) {
                int v = (nw[k] * o + old[k] * (255 - o)) / 255;
                *dst[k] = static_cast<uint8_t>(e < 255 ? (old[k] * (255 - e) + v * e) / 255 : v);
            }
        }
    }
    return opacity;
}

// A table whose every entry differs from its mirror, so that swapped indices show.
Bytes SkewTable(uint32_t seed) {
    Bytes t = RandomBytes(65536, seed);
    for (size_t i = 0; i < 256; ++i)
        for (size_t j = 0; j < i; ++j)
            if (t[i + 256 * j] == t[j + 256 * i]) t[i + 256 * j] ^= 1;
    return t;
}
}  // namespace

TEST(DabGeneral, EveryModeMatchesItsFormulaWithPaperAlphaScanOrderAndClip) {
    Bytes mask = TestMask(6), paperB = RandomBytes(8 * 6, 99);
    Bytes br = RandomBytes(6 * 5, 50), bg = RandomBytes(6 * 5, 51), bb = RandomBytes(6 * 5, 52);
    std::vector<float> paperF;
    std::mt19937 g(7);
    std::uniform_real_distribution<float> d(-0.4f, 0.4f);
    for (size_t i = 0; i < paperB.size(); ++i) paperF.push_back(d(g));
    const Bytes table = SkewTable(8);
    // Dab centres and radii: off the left edge, off the top, over the extra column
    // and row, and a small dab that reads the middle of the mask.
    const int dabs[][3] = {{-5, 30, 17}, {20, 3, 17}, {58, 30, 17}, {30, 38, 6}};
    int n = 0;
    for (int mode = 0; mode < 12; ++mode)
        for (int flags = 0; flags < 16; ++flags)
            for (const auto& [cx, cy, r] : dabs) {
                DabSettings s;
                s.mode = static_cast<PaintMode>(mode);
                s.table = kwmode::BlendOf(s.mode) != kwmode::Blend::Normal ? table.data() : nullptr;
                s.cR = 230 / 256.0f, s.cG = 12 / 256.0f, s.cB = 128 / 256.0f;
                s.baseOpacity = s.opacity = (n % 2) ? 255 : 200;  // full opacity has a path of its own
                s.bump = flags & 1, s.dry = flags & 2, s.negative = flags & 4;
                // Strength above 1 drives some drybrush opacities below 0, held at 0.
                s.strength = 1.3f;
                s.paperF = paperF.data(), s.paperB = paperB.data(), s.paperStride = 8, s.paperW = 7, s.paperH = 5;
                s.alphaOff = (n % 3 == 0) ? 255 : 0;  // random alpha: 0 leaves a pixel, 255 paints it
                s.pantoX = n % 2 ? 9 : -9, s.pantoY = -4;  // sources off the canvas keep the old pixel
                // Smear reads pixels the dab already wrote unless it scans against the stroke;
                // in every mode the scan decides which drybrush opacity is left last.
                s.smearDX = 1.5f, s.smearDY = -2.5f;
                s.reverseRows = flags & 8;
                s.reverseCols = (flags ^ (flags >> 3)) & 1;  // each of the four scans
                s.br = br.data(), s.bg = bg.data(), s.bb = bb.data();
                s.brushStride = 6, s.brushW = 5, s.brushH = 4, s.patX = 3, s.patY = 2;
                DabBox box{cx - r, cx + r, cy - r, cy + r, 17 - r};
                Pic got(60, 40, 300 + n), want(60, 40, 300 + n);
                DabSettings sg = s, sw = s;
                sg.sr = got.sr.data(), sg.sg = got.sg.data(), sg.sb = got.sb.data();
                sw.sr = want.sr.data(), sw.sg = want.sg.data(), sw.sb = want.sb.data();
                const int left = DabGeneral(got.target(), mask.data(), box, sg);
                const int wantLeft = ReferenceGeneral(want, mask.data(), box, sw);
                ASSERT_TRUE(got == want) << "mode " << mode << " flags " << flags << " at " << cx << "," << cy;
                EXPECT_EQ(left, wantLeft) << "the drybrush opacity left: mode " << mode << " flags " << flags;
                ++n;
            }
    // A table mode without its table, and a mode number past the last, leave the picture alone.
    for (PaintMode mode : {PaintMode::Additive, static_cast<PaintMode>(12)}) {
        DabSettings s;
        s.mode = mode;
        s.opacity = 77;
        Pic got(20, 20, 5), same(20, 20, 5);
        EXPECT_EQ(DabGeneral(got.target(), mask.data(), DabBox{0, 34, 0, 34, 0}, s), 77);
        EXPECT_TRUE(got == same) << static_cast<int>(mode);
    }
}

TEST(DabGeneral, ADabWhollyOffThePictureOrTheMaskTouchesNothing) {
    Bytes mask(MaskCells, 0);
    DabSettings s;
    s.cR = s.cG = s.cB = 0.5f;
    const DabBox boxes[] = {
        {-40, -6, 0, 34, 0},       // left of the picture
        {61, 95, 0, 34, 0},        // right of the extra column
        {0, 34, 41, 75, 0},        // below the extra row
        {0, 34, 0, 34, 38},        // a mask start past the mask
        {0, 34, 0, 34, -1},        // a mask start before it
        {10, 5, 0, 34, 0},         // an inverted box
    };
    for (bool reverse : {false, true})
        for (const DabBox& box : boxes) {
            s.reverseRows = s.reverseCols = reverse;
            Pic got(60, 40, 1), same(60, 40, 1);
            (void)DabGeneral(got.target(), mask.data(), box, s);
            DabFast(got.target(), mask.data(), box, 9, 9, 9, 255);
            EXPECT_TRUE(got == same) << box.col0 << "," << box.row0 << " mask " << box.maskStart;
        }
}
