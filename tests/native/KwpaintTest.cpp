// Display kernels against slow, obvious references. Pictures are small and
// random per channel, so a transposed, flipped or channel-swapped result
// cannot match; every dest starts filled with a sentinel, so a write outside
// what the call should draw shows up as a mismatch.
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "native/kwpaint.h"

namespace {

// A W x H picture in planes of (W + 1) x (H + 1). The extra column and row
// hold 0xEE, a value the random content below never takes.
struct Picture {
    int W, H;
    std::vector<uint8_t> r, g, b;

    Picture(int w, int h, uint32_t seed) : W(w), H(h) {
        std::mt19937 rng(seed);
        for (auto* plane : {&r, &g, &b}) {
            plane->assign(size_t(W + 1) * (H + 1), 0xEE);
            for (int y = 0; y < H; ++y)
                for (int x = 0; x < W; ++x) (*plane)[At(x, y)] = uint8_t(rng() % 0xEE);
        }
    }
    size_t At(int x, int y) const { return size_t(x) + size_t(y) * (W + 1); }
};

// What a call is asked to draw. destWidth is in pixels; the dest stride is
// destWidth * (elements per pixel) + pad elements.
struct View {
    int left, top, right, bottom;
    int destWidth, destHeight;
    int orgX, orgY;
    int pad;
    std::string name;
    int Stride(int elemsPerPixel) const { return destWidth * elemsPerPixel + pad; }
};

// Views over a window of winW x winH (the picture itself at 100 %).
std::vector<View> ViewsFor(int winW, int winH) {
    const int half = std::max(1, winW / 2), halfH = std::max(1, winH / 2);
    return {
        {0, 0, winW, winH, winW, winH, 0, 0, 0, "whole"},
        {1, 2, winW - 2, winH - 1, winW, winH, 0, 0, 3, "inner rect, padded stride"},
        {INT_MIN, INT_MIN, INT_MAX, INT_MAX, half, halfH, winW / 3, winH / 4, 2, "viewport, stride ends mid-pixel"},
        {-3, -2, winW + 4, winH + 4, winW + 5, winH + 3, -2, -1, 1, "rect and dest overhang the window"},
        {0, 0, 3, 3, 4, 4, 1, 1, 0, "rect crosses the dest corner"},
        {2, 1, 2, winH, winW, winH, 0, 0, 0, "empty rect"},
        {winW, winH, 0, 0, winW, winH, 0, 0, 0, "inverted rect"},
        {INT_MIN, INT_MIN, INT_MAX, INT_MAX, 4, 3, INT_MAX - 2, INT_MIN, 0, "origins at the int limits"},
    };
}

// The contract, one dest element at a time: window pixel (u, v) lands on
// dest(u - orgX, v - orgY) when it lies in the rect and in the window, and
// shows source (u * 100 / zoom, v * 100 / zoom). put(element, sx, sy) writes
// the expected pixel; everything else keeps its initial value.
template <typename T, typename Put>
std::vector<T> Reference(std::vector<T> dest, const View& view, int elemsPerPixel, int W, int H, int zoom,
                         Put put) {
    const int stride = view.Stride(elemsPerPixel);
    const int64_t winW = int64_t(W) * zoom / 100, winH = int64_t(H) * zoom / 100;
    for (int dy = 0; dy < view.destHeight; ++dy) {
        for (int dx = 0; dx < stride / elemsPerPixel; ++dx) {
            const int64_t u = int64_t(dx) + view.orgX, v = int64_t(dy) + view.orgY;
            const bool inRect = u >= view.left && u < view.right && v >= view.top && v < view.bottom;
            const bool inWindow = u >= 0 && u < winW && v >= 0 && v < winH;
            if (!inRect || !inWindow) continue;
            const int64_t sx = u * 100 / zoom, sy = v * 100 / zoom;
            if (sx >= W || sy >= H) continue;
            put(&dest[size_t(dy) * stride + size_t(dx) * elemsPerPixel], int(sx), int(sy));
        }
    }
    return dest;
}

uint32_t Ref32(unsigned r, unsigned g, unsigned b) { return r << 16 | g << 8 | b; }
uint16_t Ref565(unsigned r, unsigned g, unsigned b) { return uint16_t((r >> 3) << 11 | (g >> 2) << 5 | b >> 3); }
uint16_t Ref555(unsigned r, unsigned g, unsigned b) { return uint16_t((r >> 3) << 10 | (g >> 3) << 5 | b >> 3); }

constexpr uint32_t kSentinel32 = 0xDEADBEEFu;
constexpr uint16_t kSentinel16 = 0xBEEF;
constexpr uint8_t kSentinel8 = 0xA5;

std::string Trace(const View& v, int zoom) { return v.name + " at zoom " + std::to_string(zoom); }

const int kZooms[] = {25, 33, 50, 67, 99, 100, 101, 150, 200, 250, 300, 333, 600};

// ---------------------------------------------------------------- 1:1 routes

TEST(FastRefresh, PacksKnownPixelsAtTheirPlaces) {
    // 3 x 2 picture; the planes' spare column/row are 0xEE.
    Picture p(3, 2, 1);
    const uint8_t R[] = {0x10, 0x11, 0x12, 0x13, 0x14, 0x15};
    const uint8_t G[] = {0x20, 0x21, 0x22, 0x23, 0x24, 0x25};
    const uint8_t B[] = {0x30, 0x31, 0x32, 0x33, 0x34, 0x35};
    for (int i = 0; i < 6; ++i) {
        const size_t at = p.At(i % 3, i / 3);
        p.r[at] = R[i], p.g[at] = G[i], p.b[at] = B[i];
    }
    std::vector<uint32_t> d32(6, kSentinel32);
    kwpaint::FastRefresh32(d32.data(), 0, 0, 3, 2, p.r.data(), p.g.data(), p.b.data(), 3, 2, 3, 2);
    EXPECT_EQ(d32, (std::vector<uint32_t>{0x102030, 0x112131, 0x122232, 0x132333, 0x142434, 0x152535}));

    // Origin (1, 1): dest(0, 0) shows pixel (1, 1); the rest of the 2 x 2 dest
    // lies outside the picture.
    std::vector<uint32_t> shifted(4, kSentinel32);
    kwpaint::FastRefresh32(shifted.data(), 0, 0, 3, 2, p.r.data(), p.g.data(), p.b.data(), 2, 2, 3, 2, 1, 1);
    EXPECT_EQ(shifted, (std::vector<uint32_t>{0x142434, 0x152535, kSentinel32, kSentinel32}));

    // Pure primaries and white through 5-6-5.
    p.r[p.At(0, 0)] = 0xFF, p.g[p.At(0, 0)] = 0x00, p.b[p.At(0, 0)] = 0x00;
    p.r[p.At(1, 0)] = 0x00, p.g[p.At(1, 0)] = 0xFF, p.b[p.At(1, 0)] = 0x00;
    p.r[p.At(2, 0)] = 0x00, p.g[p.At(2, 0)] = 0x00, p.b[p.At(2, 0)] = 0xFF;
    p.r[p.At(0, 1)] = 0xFF, p.g[p.At(0, 1)] = 0xFF, p.b[p.At(0, 1)] = 0xFF;
    std::vector<uint16_t> d16(6, kSentinel16);
    kwpaint::FastRefresh16(d16.data(), 0, 0, 3, 2, p.r.data(), p.g.data(), p.b.data(), 3, 2, 3, 2);
    EXPECT_EQ(d16[0], 0xF800);
    EXPECT_EQ(d16[1], 0x07E0);
    EXPECT_EQ(d16[2], 0x001F);
    EXPECT_EQ(d16[3], 0xFFFF);
}

TEST(FastRefresh, MatchesReferenceForEveryView) {
    const Picture p(7, 5, 2);
    for (const View& view : ViewsFor(p.W, p.H)) {
        SCOPED_TRACE(view.name);
        const size_t n = size_t(view.Stride(1)) * view.destHeight;

        std::vector<uint32_t> d32(n, kSentinel32);
        kwpaint::FastRefresh32(d32.data(), view.left, view.top, view.right, view.bottom, p.r.data(), p.g.data(),
                               p.b.data(), view.Stride(1), view.destHeight, p.W, p.H, view.orgX, view.orgY);
        EXPECT_EQ(d32, Reference(std::vector<uint32_t>(n, kSentinel32), view, 1, p.W, p.H, 100,
                                 [&](uint32_t* e, int x, int y) {
                                     *e = Ref32(p.r[p.At(x, y)], p.g[p.At(x, y)], p.b[p.At(x, y)]);
                                 }));

        std::vector<uint16_t> d16(n, kSentinel16);
        kwpaint::FastRefresh16(d16.data(), view.left, view.top, view.right, view.bottom, p.r.data(), p.g.data(),
                               p.b.data(), view.Stride(1), view.destHeight, p.W, p.H, view.orgX, view.orgY);
        EXPECT_EQ(d16, Reference(std::vector<uint16_t>(n, kSentinel16), view, 1, p.W, p.H, 100,
                                 [&](uint16_t* e, int x, int y) {
                                     *e = Ref565(p.r[p.At(x, y)], p.g[p.At(x, y)], p.b[p.At(x, y)]);
                                 }));
    }
}

TEST(FastRefresh, LargeRefreshIntoMisalignedDestMatchesReference) {
    // Big enough (about 27 MB of dest) to take the streaming path; the dest
    // starts one element past an aligned address and the stride is odd, so
    // every row starts at a different alignment.
    const Picture p(2603, 2601, 3);
    const int stride = p.W + 1;
    std::vector<uint32_t> storage(size_t(stride) * p.H + 2, kSentinel32);
    uint32_t* dest = storage.data() + 1;
    kwpaint::FastRefresh32(dest, 0, 0, p.W, p.H, p.r.data(), p.g.data(), p.b.data(), stride, p.H, p.W, p.H);
    size_t mismatches = 0;
    for (int y = 0; y < p.H; ++y) {
        for (int x = 0; x < p.W; ++x)
            mismatches += dest[size_t(y) * stride + x] != Ref32(p.r[p.At(x, y)], p.g[p.At(x, y)], p.b[p.At(x, y)]);
        mismatches += dest[size_t(y) * stride + p.W] != kSentinel32;
    }
    EXPECT_EQ(mismatches, 0u);
    EXPECT_EQ(storage.front(), kSentinel32);
    EXPECT_EQ(storage.back(), kSentinel32);
}

TEST(PackRow32, VectorFormMatchesPlainFormAtEveryAlignmentAndLength) {
    std::mt19937 rng(4);
    std::vector<uint8_t> r(96), g(96), b(96);
    for (size_t i = 0; i < r.size(); ++i) r[i] = uint8_t(rng()), g[i] = uint8_t(rng()), b[i] = uint8_t(rng());
    for (bool streaming : {false, true}) {
        for (int destOffset = 0; destOffset < 4; ++destOffset) {
            for (int srcOffset = 0; srcOffset < 3; ++srcOffset) {
                for (int count = 0; count <= 70; ++count) {
                    SCOPED_TRACE("streaming " + std::to_string(streaming) + " dest offset " +
                                 std::to_string(destOffset) + " src offset " + std::to_string(srcOffset) +
                                 " count " + std::to_string(count));
                    alignas(16) uint32_t vec[80], plain[80];
                    std::fill(std::begin(vec), std::end(vec), kSentinel32);
                    std::fill(std::begin(plain), std::end(plain), kSentinel32);
                    const uint8_t *sr = r.data() + srcOffset, *sg = g.data() + srcOffset,
                                  *sb = b.data() + srcOffset;
                    kwpaint::detail::PackRow32Vector(vec + destOffset, sr, sg, sb, count, streaming);
                    kwpaint::detail::PackRow32Scalar(plain + destOffset, sr, sg, sb, count);
                    ASSERT_TRUE(std::equal(std::begin(vec), std::end(vec), std::begin(plain)));
                    for (int i = 0; i < count; ++i) ASSERT_EQ(plain[destOffset + i], Ref32(sr[i], sg[i], sb[i]));
                    ASSERT_EQ(plain[destOffset + count], kSentinel32);
                }
            }
        }
    }
}

// ---------------------------------------------------------------- layer mixing

TEST(FastRefreshMix, MatchesReferenceForEveryView) {
    const Picture p(7, 5, 5), swap(7, 5, 6);
    std::vector<uint8_t> table(256 * 256);
    std::mt19937 rng(7);
    for (auto& t : table) t = uint8_t(rng());
    auto mixed = [&](const std::vector<uint8_t>& main, const std::vector<uint8_t>& sw, size_t at) {
        return unsigned(table[main[at] + 256 * sw[at]]);
    };
    for (const View& view : ViewsFor(p.W, p.H)) {
        SCOPED_TRACE(view.name);
        const size_t n = size_t(view.Stride(1)) * view.destHeight;

        std::vector<uint32_t> d32(n, kSentinel32);
        kwpaint::FastRefresh_Mix32(d32.data(), view.left, view.top, view.right, view.bottom, p.r.data(),
                                   p.g.data(), p.b.data(), swap.r.data(), swap.g.data(), swap.b.data(),
                                   table.data(), view.Stride(1), view.destHeight, p.W, p.H, view.orgX, view.orgY);
        EXPECT_EQ(d32, Reference(std::vector<uint32_t>(n, kSentinel32), view, 1, p.W, p.H, 100,
                                 [&](uint32_t* e, int x, int y) {
                                     const size_t at = p.At(x, y);
                                     *e = Ref32(mixed(p.r, swap.r, at), mixed(p.g, swap.g, at),
                                                mixed(p.b, swap.b, at));
                                 }));

        std::vector<uint16_t> d16(n, kSentinel16);
        kwpaint::FastRefresh_Mix16(d16.data(), view.left, view.top, view.right, view.bottom, p.r.data(),
                                   p.g.data(), p.b.data(), swap.r.data(), swap.g.data(), swap.b.data(),
                                   table.data(), view.Stride(1), view.destHeight, p.W, p.H, view.orgX, view.orgY);
        EXPECT_EQ(d16, Reference(std::vector<uint16_t>(n, kSentinel16), view, 1, p.W, p.H, 100,
                                 [&](uint16_t* e, int x, int y) {
                                     const size_t at = p.At(x, y);
                                     *e = Ref565(mixed(p.r, swap.r, at), mixed(p.g, swap.g, at),
                                                 mixed(p.b, swap.b, at));
                                 }));
    }
}

TEST(FastRefreshMix, IndexesTheTableMainFirst) {
    // One pixel, main (R, G, B) = (1, 2, 3), swap = (4, 5, 6); the table holds
    // distinct values at [main + 256 * swap] and at the transposed entries.
    Picture p(1, 1, 8), swap(1, 1, 9);
    p.r[0] = 1, p.g[0] = 2, p.b[0] = 3;
    swap.r[0] = 4, swap.g[0] = 5, swap.b[0] = 6;
    std::vector<uint8_t> table(256 * 256, 0);
    table[1 + 256 * 4] = 0xA1, table[4 + 256 * 1] = 0x1A;
    table[2 + 256 * 5] = 0xB2, table[5 + 256 * 2] = 0x2B;
    table[3 + 256 * 6] = 0xC3, table[6 + 256 * 3] = 0x3C;
    uint32_t d = kSentinel32;
    kwpaint::FastRefresh_Mix32(&d, 0, 0, 1, 1, p.r.data(), p.g.data(), p.b.data(), swap.r.data(), swap.g.data(),
                               swap.b.data(), table.data(), 1, 1, 1, 1);
    EXPECT_EQ(d, 0x00A1B2C3u);
}

// ---------------------------------------------------------------- zoomed routes

TEST(RefreshFromBuffs, KnownZoomsSampleTheRightPixels) {
    Picture p(4, 2, 10);
    auto px = [&](int x, int y) { return Ref32(p.r[p.At(x, y)], p.g[p.At(x, y)], p.b[p.At(x, y)]); };

    // 200 %: 8 x 4 window, each pixel a 2 x 2 block.
    std::vector<uint32_t> d(8 * 4, kSentinel32);
    kwpaint::RefreshFromBuffs(d.data(), 0, 0, 8, 4, p.r.data(), p.g.data(), p.b.data(), 8, 4, 4, 2, 200);
    EXPECT_EQ(d[0], px(0, 0));
    EXPECT_EQ(d[1 + 8 * 1], px(0, 0));
    EXPECT_EQ(d[2 + 8 * 0], px(1, 0));
    EXPECT_EQ(d[7 + 8 * 3], px(3, 1));
    EXPECT_EQ(d[5 + 8 * 2], px(2, 1));

    // 50 %: 2 x 1 window showing pixels (0, 0) and (2, 0).
    std::vector<uint32_t> half(2 * 2, kSentinel32);
    kwpaint::RefreshFromBuffs(half.data(), 0, 0, 100, 100, p.r.data(), p.g.data(), p.b.data(), 2, 2, 4, 2, 50);
    EXPECT_EQ(half, (std::vector<uint32_t>{px(0, 0), px(2, 0), kSentinel32, kSentinel32}));

    // 33 % of a 4 x 2 picture is a 1 x 0 window: nothing to show.
    std::vector<uint32_t> none(4, kSentinel32);
    kwpaint::RefreshFromBuffs(none.data(), 0, 0, 100, 100, p.r.data(), p.g.data(), p.b.data(), 2, 2, 4, 2, 33);
    EXPECT_EQ(none, std::vector<uint32_t>(4, kSentinel32));

    // 24-bit stores B, G, R; 5-5-5 of pure channels.
    p.r[0] = 0x11, p.g[0] = 0x22, p.b[0] = 0x33;
    uint8_t bgr[4] = {kSentinel8, kSentinel8, kSentinel8, kSentinel8};
    kwpaint::RefreshFromBuffs24(bgr, 0, 0, 1, 1, p.r.data(), p.g.data(), p.b.data(), 4, 1, 4, 2, 100);
    EXPECT_EQ(std::vector<uint8_t>(bgr, bgr + 4), (std::vector<uint8_t>{0x33, 0x22, 0x11, kSentinel8}));
    p.r[p.At(1, 0)] = 0xFF, p.g[p.At(1, 0)] = 0, p.b[p.At(1, 0)] = 0;
    p.r[p.At(2, 0)] = 0, p.g[p.At(2, 0)] = 0xFF, p.b[p.At(2, 0)] = 0;
    p.r[p.At(3, 0)] = 0, p.g[p.At(3, 0)] = 0, p.b[p.At(3, 0)] = 0xFF;
    uint16_t d15[3] = {};
    kwpaint::RefreshFromBuffs15(d15, 1, 0, 4, 1, p.r.data(), p.g.data(), p.b.data(), 3, 1, 4, 2, 100, 1, 0);
    EXPECT_EQ(d15[0], 0x7C00);
    EXPECT_EQ(d15[1], 0x03E0);
    EXPECT_EQ(d15[2], 0x001F);
}

TEST(RefreshFromBuffs, AllFormatsMatchReferenceAcrossZoomsAndViews) {
    const Picture p(7, 5, 11);
    auto at = [&](int x, int y) { return p.At(x, y); };
    for (int zoom : kZooms) {
        const int winW = int(int64_t(p.W) * zoom / 100), winH = int(int64_t(p.H) * zoom / 100);
        for (const View& view : ViewsFor(winW, winH)) {
            SCOPED_TRACE(Trace(view, zoom));
            const size_t n = size_t(view.Stride(1)) * view.destHeight;

            std::vector<uint32_t> d32(n, kSentinel32);
            kwpaint::RefreshFromBuffs(d32.data(), view.left, view.top, view.right, view.bottom, p.r.data(),
                                      p.g.data(), p.b.data(), view.Stride(1), view.destHeight, p.W, p.H, zoom,
                                      view.orgX, view.orgY);
            EXPECT_EQ(d32, Reference(std::vector<uint32_t>(n, kSentinel32), view, 1, p.W, p.H, zoom,
                                     [&](uint32_t* e, int x, int y) {
                                         *e = Ref32(p.r[at(x, y)], p.g[at(x, y)], p.b[at(x, y)]);
                                     }));

            std::vector<uint16_t> d16(n, kSentinel16);
            kwpaint::RefreshFromBuffs16(d16.data(), view.left, view.top, view.right, view.bottom, p.r.data(),
                                        p.g.data(), p.b.data(), view.Stride(1), view.destHeight, p.W, p.H, zoom,
                                        view.orgX, view.orgY);
            EXPECT_EQ(d16, Reference(std::vector<uint16_t>(n, kSentinel16), view, 1, p.W, p.H, zoom,
                                     [&](uint16_t* e, int x, int y) {
                                         *e = Ref565(p.r[at(x, y)], p.g[at(x, y)], p.b[at(x, y)]);
                                     }));

            std::vector<uint16_t> d15(n, kSentinel16);
            kwpaint::RefreshFromBuffs15(d15.data(), view.left, view.top, view.right, view.bottom, p.r.data(),
                                        p.g.data(), p.b.data(), view.Stride(1), view.destHeight, p.W, p.H, zoom,
                                        view.orgX, view.orgY);
            EXPECT_EQ(d15, Reference(std::vector<uint16_t>(n, kSentinel16), view, 1, p.W, p.H, zoom,
                                     [&](uint16_t* e, int x, int y) {
                                         *e = Ref555(p.r[at(x, y)], p.g[at(x, y)], p.b[at(x, y)]);
                                     }));

            // 24-bit: stride in bytes, with the view's pad leaving a partial
            // pixel's worth of bytes at the end of each row.
            const size_t n24 = size_t(view.Stride(3)) * view.destHeight;
            std::vector<uint8_t> d24(n24, kSentinel8);
            kwpaint::RefreshFromBuffs24(d24.data(), view.left, view.top, view.right, view.bottom, p.r.data(),
                                        p.g.data(), p.b.data(), view.Stride(3), view.destHeight, p.W, p.H, zoom,
                                        view.orgX, view.orgY);
            EXPECT_EQ(d24, Reference(std::vector<uint8_t>(n24, kSentinel8), view, 3, p.W, p.H, zoom,
                                     [&](uint8_t* e, int x, int y) {
                                         e[0] = p.b[at(x, y)], e[1] = p.g[at(x, y)], e[2] = p.r[at(x, y)];
                                     }));
        }
    }
}

TEST(RefreshFromBuffs, DestWiderThanOneColumnStripMatchesReference) {
    // A 2400-pixel-wide window at 600 %, drawn with a rect that starts and
    // ends mid-block in both directions.
    const Picture p(400, 3, 12);
    const View view{5, 1, 2395, 17, 2400, 18, 0, 0, 0, "wide"};
    const size_t n = size_t(view.Stride(1)) * view.destHeight;
    std::vector<uint32_t> d(n, kSentinel32);
    kwpaint::RefreshFromBuffs(d.data(), view.left, view.top, view.right, view.bottom, p.r.data(), p.g.data(),
                              p.b.data(), view.Stride(1), view.destHeight, p.W, p.H, 600);
    EXPECT_EQ(d, Reference(std::vector<uint32_t>(n, kSentinel32), view, 1, p.W, p.H, 600,
                           [&](uint32_t* e, int x, int y) {
                               *e = Ref32(p.r[p.At(x, y)], p.g[p.At(x, y)], p.b[p.At(x, y)]);
                           }));
}

TEST(RefreshFromBuffs, WideWindowCoordinatesDoNotOverflow) {
    // 4,000,000 x 2 at 600 %: the window is 24,000,000 wide, so u * 100 and
    // W * zoom are both past the int range. The viewport sits at its right edge
    // and hangs over it by two columns.
    const Picture p(4000000, 2, 14);
    const View view{INT_MIN, INT_MIN, INT_MAX, INT_MAX, 8, 13, 23999994, 0, 0, "right edge"};
    const size_t n = size_t(view.Stride(1)) * view.destHeight;
    std::vector<uint32_t> d(n, kSentinel32);
    kwpaint::RefreshFromBuffs(d.data(), view.left, view.top, view.right, view.bottom, p.r.data(), p.g.data(),
                              p.b.data(), view.Stride(1), view.destHeight, p.W, p.H, 600, view.orgX, view.orgY);
    const std::vector<uint32_t> expected = Reference(std::vector<uint32_t>(n, kSentinel32), view, 1, p.W, p.H, 600,
                                                     [&](uint32_t* e, int x, int y) {
                                                         *e = Ref32(p.r[p.At(x, y)], p.g[p.At(x, y)],
                                                                    p.b[p.At(x, y)]);
                                                     });
    EXPECT_EQ(d, expected);
    EXPECT_EQ(expected[5], Ref32(p.r[p.At(p.W - 1, 0)], p.g[p.At(p.W - 1, 0)], p.b[p.At(p.W - 1, 0)]));
    EXPECT_EQ(expected[6], kSentinel32);

    std::vector<uint8_t> marquee(size_t(p.W + 1) * (p.H + 1), 0);
    marquee[p.At(p.W - 1, 1)] = 1;
    std::vector<uint32_t> m(n, kSentinel32);
    kwpaint::DispMarquee(m.data(), view.Stride(1), view.destHeight, marquee.data(), p.W, p.H, 600, 0x33,
                         view.orgX, view.orgY);
    for (int y = 0; y < view.destHeight; ++y)
        for (int x = 0; x < view.destWidth; ++x)
            EXPECT_EQ(m[x + y * view.Stride(1)], x < 6 && y >= 6 && y < 12 ? 0x00333333u : kSentinel32)
                << x << "," << y;
}

// ---------------------------------------------------------------- marquee

std::vector<uint8_t> RandomMarquee(int W, int H, uint32_t seed) {
    std::vector<uint8_t> m(size_t(W + 1) * (H + 1), 0xFF);  // spare column/row set: must never show
    std::mt19937 rng(seed);
    for (int y = 0; y < H; ++y)
        for (int x = 0; x < W; ++x) m[size_t(x) + size_t(y) * (W + 1)] = (rng() % 3 == 0) ? uint8_t(1 + rng() % 255) : 0;
    return m;
}

TEST(DispMarquee, PaintsTheBlockOfEachMarkedPixel) {
    // 3 x 2 picture, only pixel (1, 0) marked, 200 %: window pixels 2..3 x 0..1.
    std::vector<uint8_t> m(4 * 3, 0);
    m[1] = 7;
    std::vector<uint32_t> d(6 * 4, kSentinel32);
    kwpaint::DispMarquee(d.data(), 6, 4, m.data(), 3, 2, 200, 0x80);
    for (int y = 0; y < 4; ++y)
        for (int x = 0; x < 6; ++x) {
            const bool marked = x >= 2 && x < 4 && y < 2;
            EXPECT_EQ(d[x + 6 * y], marked ? 0x00808080u : kSentinel32) << x << "," << y;
        }

    // The grey comes from the low byte of the phase only.
    std::vector<uint32_t> one(1, kSentinel32);
    kwpaint::DispMarquee(one.data(), 1, 1, m.data(), 3, 2, 100, 0x1FF, 1, 0);
    EXPECT_EQ(one[0], 0x00FFFFFFu);
}

TEST(DispMarquee, MatchesReferenceAcrossZoomsAndOrigins) {
    const int W = 9, H = 6;
    const std::vector<uint8_t> m = RandomMarquee(W, H, 13);
    for (int zoom : kZooms) {
        const int winW = int(int64_t(W) * zoom / 100), winH = int(int64_t(H) * zoom / 100);
        for (const View& view : ViewsFor(winW, winH)) {
            SCOPED_TRACE(Trace(view, zoom));
            // The marquee draws everything the dest shows; the view's rect is
            // replaced by the whole plane of window coordinates.
            View whole = view;
            whole.left = whole.top = INT_MIN;
            whole.right = whole.bottom = INT_MAX;
            const size_t n = size_t(view.Stride(1)) * view.destHeight;
            const int phase = 0x40 + zoom % 100;
            std::vector<uint32_t> d(n, kSentinel32);
            kwpaint::DispMarquee(d.data(), view.Stride(1), view.destHeight, m.data(), W, H, zoom, phase, view.orgX,
                                 view.orgY);
            EXPECT_EQ(d, Reference(std::vector<uint32_t>(n, kSentinel32), whole, 1, W, H, zoom,
                                   [&](uint32_t* e, int x, int y) {
                                       if (m[size_t(x) + size_t(y) * (W + 1)] != 0) *e = uint32_t(phase) * 0x010101u;
                                   }));
        }
    }
}

// ---------------------------------------------------------------- copy

TEST(KelCopyMem, CopiesExactlyTheCountAndNothingElse) {
    std::vector<uint8_t> src(37), dst(40, kSentinel8);
    for (size_t i = 0; i < src.size(); ++i) src[i] = uint8_t(i * 7 + 1);
    kwpaint::Kel_CopyMem(src.data() + 2, dst.data() + 1, 33);
    EXPECT_EQ(dst[0], kSentinel8);
    EXPECT_TRUE(std::equal(src.begin() + 2, src.begin() + 35, dst.begin() + 1));
    EXPECT_EQ(dst[34], kSentinel8);
    kwpaint::Kel_CopyMem(nullptr, nullptr, 0);  // a zero count must not touch either pointer
}

}  // namespace
