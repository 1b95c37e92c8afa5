// Display kernels against slow, obvious references. Pictures are small and
// random per channel, so a transposed, flipped or channel-swapped result
// cannot match; every dest starts filled with a sentinel, so a write outside
// what the call should draw shows up as a mismatch.
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstdint>
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

// Runs kernel(dest, stride) on a sentinel-filled dest of the view and compares
// the whole dest with the reference.
template <typename T, typename Kernel, typename Put>
void ExpectReference(Kernel kernel, const View& v, int elemsPerPixel, int W, int H, int zoom, T sentinel, Put put) {
    std::vector<T> d(size_t(v.Stride(elemsPerPixel)) * v.destHeight, sentinel);
    kernel(d.data(), v.Stride(elemsPerPixel));
    EXPECT_EQ(d, Reference(std::vector<T>(d.size(), sentinel), v, elemsPerPixel, W, H, zoom, put));
}

// The expected pixel of picture p in a packed format.
template <typename Encode>
auto Packed(const Picture& p, Encode encode) {
    return [&p, encode](auto* e, int x, int y) { *e = encode(p.r[p.At(x, y)], p.g[p.At(x, y)], p.b[p.At(x, y)]); };
}

const int kZooms[] = {25, 33, 50, 67, 99, 100, 101, 150, 200, 250, 300, 333, 600};

TEST(Kernels, EveryRouteMatchesReferenceAcrossZoomsAndViews) {
    const Picture p(7, 5, 11), swap(7, 5, 6);
    std::mt19937 rng(7);
    std::vector<uint8_t> table(256 * 256), marquee(p.r.size(), 0xFF);  // the marquee's spare column/row must never show
    for (auto& t : table) t = uint8_t(rng());
    for (int y = 0; y < p.H; ++y)
        for (int x = 0; x < p.W; ++x) marquee[p.At(x, y)] = rng() % 3 ? 0 : uint8_t(1 + rng() % 255);
    auto mixed = [&](auto encode) {  // each channel is table[main + 256 * swap]
        return [&, encode](auto* e, int x, int y) {
            const size_t a = p.At(x, y);
            auto t = [&](const std::vector<uint8_t>& m, const std::vector<uint8_t>& s) { return unsigned(table[m[a] + 256 * s[a]]); };
            *e = encode(t(p.r, swap.r), t(p.g, swap.g), t(p.b, swap.b));
        };
    };
    for (int zoom : kZooms) {
        for (const View& v : ViewsFor(int(int64_t(p.W) * zoom / 100), int(int64_t(p.H) * zoom / 100))) {
            SCOPED_TRACE(v.name + " at zoom " + std::to_string(zoom));
            auto zoomed = [&](auto route) {
                return [&, route](auto* d, int stride) {
                    route(d, v.left, v.top, v.right, v.bottom, p.r.data(), p.g.data(), p.b.data(), stride,
                          v.destHeight, p.W, p.H, zoom, v.orgX, v.orgY);
                };
            };
            ExpectReference(zoomed(kwpaint::RefreshFromBuffs), v, 1, p.W, p.H, zoom, kSentinel32, Packed(p, Ref32));
            ExpectReference(zoomed(kwpaint::RefreshFromBuffs16), v, 1, p.W, p.H, zoom, kSentinel16, Packed(p, Ref565));
            ExpectReference(zoomed(kwpaint::RefreshFromBuffs15), v, 1, p.W, p.H, zoom, kSentinel16, Packed(p, Ref555));
            // 24-bit: stride in bytes, the view's pad leaving part of a pixel at the end of each row.
            ExpectReference(zoomed(kwpaint::RefreshFromBuffs24), v, 3, p.W, p.H, zoom, kSentinel8,
                            [&](uint8_t* e, int x, int y) {
                                e[0] = p.b[p.At(x, y)], e[1] = p.g[p.At(x, y)], e[2] = p.r[p.At(x, y)];
                            });
            // The marquee draws wherever the dest shows a marked pixel, whatever
            // the rect; its grey is the low byte of the phase.
            View whole = v;
            whole.left = whole.top = INT_MIN;
            whole.right = whole.bottom = INT_MAX;
            const int phase = 0x140 + zoom % 100;
            ExpectReference(
                [&](uint32_t* d, int stride) {
                    kwpaint::DispMarquee(d, stride, v.destHeight, marquee.data(), p.W, p.H, zoom, phase, v.orgX, v.orgY);
                },
                whole, 1, p.W, p.H, zoom, kSentinel32,
                [&](uint32_t* e, int x, int y) { if (marquee[p.At(x, y)]) *e = uint32_t(phase & 0xFF) * 0x010101u; });
            if (zoom != 100) continue;
            // The 1:1 routes, plain and mixing, are the 100 % case.
            auto plain = [&](auto route) {
                return [&, route](auto* d, int stride) {
                    route(d, v.left, v.top, v.right, v.bottom, p.r.data(), p.g.data(), p.b.data(), stride,
                          v.destHeight, p.W, p.H, v.orgX, v.orgY);
                };
            };
            auto mixing = [&](auto route) {
                return [&, route](auto* d, int stride) {
                    route(d, v.left, v.top, v.right, v.bottom, p.r.data(), p.g.data(), p.b.data(), swap.r.data(),
                          swap.g.data(), swap.b.data(), table.data(), stride, v.destHeight, p.W, p.H, v.orgX, v.orgY);
                };
            };
            ExpectReference(plain(kwpaint::FastRefresh32), v, 1, p.W, p.H, 100, kSentinel32, Packed(p, Ref32));
            ExpectReference(plain(kwpaint::FastRefresh16), v, 1, p.W, p.H, 100, kSentinel16, Packed(p, Ref565));
            ExpectReference(mixing(kwpaint::FastRefresh_Mix32), v, 1, p.W, p.H, 100, kSentinel32, mixed(Ref32));
            ExpectReference(mixing(kwpaint::FastRefresh_Mix16), v, 1, p.W, p.H, 100, kSentinel16, mixed(Ref565));
        }
    }
}

TEST(Kernels, KnownPixelsLandWhereAndHowTheFormatsSay) {
    // 4 x 2 picture, pixel i = (0x10 + i, 0x20 + i, 0x30 + i).
    Picture p(4, 2, 1);
    for (int i = 0; i < 8; ++i) {
        const size_t at = p.At(i % 4, i / 4);
        p.r[at] = uint8_t(0x10 + i), p.g[at] = uint8_t(0x20 + i), p.b[at] = uint8_t(0x30 + i);
    }
    auto px = [](int i) { return 0x102030u + 0x010101u * unsigned(i); };
    std::vector<uint32_t> d(8, kSentinel32);
    kwpaint::FastRefresh32(d.data(), 0, 0, 4, 2, p.r.data(), p.g.data(), p.b.data(), 4, 2, 4, 2);
    for (int i = 0; i < 8; ++i) EXPECT_EQ(d[size_t(i)], px(i)) << i;
    // Origin (1, 1): dest (0, 0) shows pixel (1, 1); its second row lies below the picture.
    std::vector<uint32_t> shifted(4, kSentinel32);
    kwpaint::FastRefresh32(shifted.data(), 0, 0, 4, 2, p.r.data(), p.g.data(), p.b.data(), 2, 2, 4, 2, 1, 1);
    EXPECT_EQ(shifted, (std::vector<uint32_t>{px(5), px(6), kSentinel32, kSentinel32}));
    // 200 %: each pixel a 2 x 2 block; 50 %: pixels (0, 0) and (2, 0); 33 % of two rows is no window at all.
    std::vector<uint32_t> big(8 * 4, kSentinel32), half(4, kSentinel32), none(4, kSentinel32);
    kwpaint::RefreshFromBuffs(big.data(), 0, 0, 8, 4, p.r.data(), p.g.data(), p.b.data(), 8, 4, 4, 2, 200);
    EXPECT_EQ(big[1 + 8 * 1], px(0));
    EXPECT_EQ(big[2], px(1));
    EXPECT_EQ(big[5 + 8 * 2], px(6));
    kwpaint::RefreshFromBuffs(half.data(), 0, 0, 100, 100, p.r.data(), p.g.data(), p.b.data(), 2, 2, 4, 2, 50);
    EXPECT_EQ(half, (std::vector<uint32_t>{px(0), px(2), kSentinel32, kSentinel32}));
    kwpaint::RefreshFromBuffs(none.data(), 0, 0, 100, 100, p.r.data(), p.g.data(), p.b.data(), 2, 2, 4, 2, 33);
    EXPECT_EQ(none, std::vector<uint32_t>(4, kSentinel32));
    // 24-bit stores B, G, R; 5-6-5 and 5-5-5 of pure red, green and blue.
    uint8_t bgr[4] = {kSentinel8, kSentinel8, kSentinel8, kSentinel8};
    kwpaint::RefreshFromBuffs24(bgr, 3, 0, 4, 1, p.r.data(), p.g.data(), p.b.data(), 4, 1, 4, 2, 100, 3, 0);
    EXPECT_EQ(std::vector<uint8_t>(bgr, bgr + 4), (std::vector<uint8_t>{0x33, 0x23, 0x13, kSentinel8}));
    for (size_t i = 0; i < 3; ++i) p.r[i] = i == 0 ? 0xFF : 0, p.g[i] = i == 1 ? 0xFF : 0, p.b[i] = i == 2 ? 0xFF : 0;
    std::vector<uint16_t> d16(3), d15(3);
    kwpaint::FastRefresh16(d16.data(), 0, 0, 3, 1, p.r.data(), p.g.data(), p.b.data(), 3, 1, 4, 2);
    kwpaint::RefreshFromBuffs15(d15.data(), 0, 0, 3, 1, p.r.data(), p.g.data(), p.b.data(), 3, 1, 4, 2, 100);
    EXPECT_EQ(d16, (std::vector<uint16_t>{0xF800, 0x07E0, 0x001F}));
    EXPECT_EQ(d15, (std::vector<uint16_t>{0x7C00, 0x03E0, 0x001F}));
}

TEST(Kernels, LargeRefreshIntoMisalignedDestMatchesReference) {
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

TEST(Kernels, PackRowVectorFormsMatchPlainFormAtEveryAlignmentAndLength) {
    std::mt19937 rng(4);
    std::vector<uint8_t> c(3 * 96);
    for (auto& v : c) v = uint8_t(rng());
    // SSE2 always; AVX2 where this processor has it (the refresh then chooses it).
    std::vector<kwpaint::detail::PackRowFn> forms = {kwpaint::detail::PackRow32Vector};
    if (kwpaint::detail::HaveAvx2()) forms.push_back(kwpaint::detail::PackRow32Avx2);
    EXPECT_EQ(kwpaint::detail::ChosenPackRow32(), forms.back());
    for (auto form : forms)
    for (bool streaming : {false, true})
        for (int destOffset = 0; destOffset < 8; ++destOffset)
            for (int srcOffset = 0; srcOffset < 3; ++srcOffset)
                for (int count = 0; count <= 70; ++count) {
                    SCOPED_TRACE(std::to_string(streaming) + " " + std::to_string(destOffset) + " " +
                                 std::to_string(srcOffset) + " " + std::to_string(count));
                    alignas(32) uint32_t vec[80], plain[80];
                    std::fill(std::begin(vec), std::end(vec), kSentinel32);
                    std::fill(std::begin(plain), std::end(plain), kSentinel32);
                    const uint8_t *r = c.data() + srcOffset, *g = r + 96, *b = g + 96;
                    form(vec + destOffset, r, g, b, count, streaming);
                    kwpaint::detail::PackRow32Scalar(plain + destOffset, r, g, b, count);
                    ASSERT_TRUE(std::equal(std::begin(vec), std::end(vec), std::begin(plain)));
                    for (int i = 0; i < count; ++i) ASSERT_EQ(plain[destOffset + i], Ref32(r[i], g[i], b[i]));
                    ASSERT_EQ(plain[destOffset + count], kSentinel32);
                }
}

TEST(Kernels, WideDestsAndWindowsMatchReference) {
    // A 2400-pixel-wide window at 600 %, drawn with a rect that starts and
    // ends mid-block in both directions.
    const Picture p(400, 3, 12);
    const View view{5, 1, 2395, 17, 2400, 18, 0, 0, 0, "wide"};
    ExpectReference(
        [&](uint32_t* d, int stride) {
            kwpaint::RefreshFromBuffs(d, view.left, view.top, view.right, view.bottom, p.r.data(), p.g.data(),
                                      p.b.data(), stride, view.destHeight, p.W, p.H, 600);
        },
        view, 1, p.W, p.H, 600, kSentinel32, Packed(p, Ref32));

    // 4,000,000 x 2 at 600 %: the window is 24,000,000 wide, so u * 100 and
    // W * zoom are both past the int range. The viewport sits at its right edge
    // and hangs over it by two columns.
    const Picture q(4000000, 2, 14);
    const View edge{INT_MIN, INT_MIN, INT_MAX, INT_MAX, 8, 13, 23999994, 0, 0, "right edge"};
    std::vector<uint32_t> d(8 * 13, kSentinel32), m(d);
    kwpaint::RefreshFromBuffs(d.data(), edge.left, edge.top, edge.right, edge.bottom, q.r.data(), q.g.data(),
                              q.b.data(), 8, 13, q.W, q.H, 600, edge.orgX, edge.orgY);
    const std::vector<uint32_t> expected = Reference(std::vector<uint32_t>(d.size(), kSentinel32), edge, 1, q.W,
                                                     q.H, 600, Packed(q, Ref32));
    EXPECT_EQ(d, expected);
    EXPECT_EQ(expected[5], Ref32(q.r[q.At(q.W - 1, 0)], q.g[q.At(q.W - 1, 0)], q.b[q.At(q.W - 1, 0)]));
    EXPECT_EQ(expected[6], kSentinel32);
    // The marquee there: the last pixel of the second row paints its 6 x 6 block.
    std::vector<uint8_t> marquee(q.r.size(), 0);
    marquee[q.At(q.W - 1, 1)] = 1;
    kwpaint::DispMarquee(m.data(), 8, 13, marquee.data(), q.W, q.H, 600, 0x33, edge.orgX, edge.orgY);
    for (int y = 0; y < 13; ++y)
        for (int x = 0; x < 8; ++x)
            EXPECT_EQ(m[size_t(x + y * 8)], x < 6 && y >= 6 && y < 12 ? 0x00333333u : kSentinel32) << x << "," << y;
}

TEST(Kernels, CopyMemCopiesExactlyTheCountAndNothingElse) {
    std::vector<uint8_t> src(37), dst(40, kSentinel8);
    for (size_t i = 0; i < src.size(); ++i) src[i] = uint8_t(i * 7 + 1);
    kwpaint::Kel_CopyMem(src.data() + 2, dst.data() + 1, 33);
    EXPECT_EQ(dst[0], kSentinel8);
    EXPECT_TRUE(std::equal(src.begin() + 2, src.begin() + 35, dst.begin() + 1));
    EXPECT_EQ(dst[34], kSentinel8);
    kwpaint::Kel_CopyMem(nullptr, nullptr, 0);  // a zero count must not touch either pointer
}

TEST(Kernels, CopyMemOfAWholePlaneStreamsTheSameBytesAtEveryAlignment) {
    // Past the size where the copy streams: heads and tails of every length.
    const size_t big = (size_t{1} << 20) + 77;
    std::vector<uint8_t> src(big + 32), dst(big + 48);
    for (size_t i = 0; i < src.size(); ++i) src[i] = uint8_t(i * 13 + (i >> 9));
    for (size_t srcOffset : {0, 3}) {
        for (size_t dstOffset = 0; dstOffset < 17; dstOffset += 5) {
            for (size_t count : {big, big - 63, big - 1}) {
                std::fill(dst.begin(), dst.end(), kSentinel8);
                kwpaint::Kel_CopyMem(src.data() + srcOffset, dst.data() + dstOffset, count);
                ASSERT_TRUE(std::equal(dst.begin() + dstOffset, dst.begin() + dstOffset + count,
                                       src.begin() + srcOffset))
                    << srcOffset << " " << dstOffset << " " << count;
                ASSERT_EQ(dst[dstOffset + count], kSentinel8);
                if (dstOffset > 0) {
                    ASSERT_EQ(dst[dstOffset - 1], kSentinel8);
                }
            }
        }
    }
}

}  // namespace

namespace {
// The thumbnail's contract, one pixel at a time: (u, v) shows pixel
// (u * W / tw, v * H / th) as r | g << 8 | b << 16.
std::vector<uint32_t> ThumbnailReference(const Picture& p, int W, int H, int tw, int th) {
    std::vector<uint32_t> t(size_t(tw) * th);
    for (int v = 0; v < th; ++v)
        for (int u = 0; u < tw; ++u) {
            const size_t at = size_t(int64_t(u) * W / tw) + size_t(int64_t(v) * H / th) * (p.W + 1);
            t[size_t(v) * tw + u] = uint32_t(p.r[at]) | uint32_t(p.g[at]) << 8 | uint32_t(p.b[at]) << 16;
        }
    return t;
}
}  // namespace

TEST(Kernels, ThumbnailSamplesTheNearestPixelAtEverySize) {
    // Thumbnails smaller and larger than the picture, sizes that divide it and
    // sizes that do not, one pixel on either side, wider than the column block
    // the kernel steps in; and a picture narrower than its planes (the size
    // text behind the planes), whose samples must stay within the picture.
    struct Case {
        int planeW, planeH, W, H, tw, th;
    };
    const Case cases[] = {{400, 300, 400, 300, 96, 72},  {97, 41, 97, 41, 96, 72},  {1, 1, 1, 1, 5, 3},
                          {7, 5, 7, 5, 1, 1},            {96, 72, 96, 72, 96, 72},  {1000, 3, 1000, 3, 257, 2},
                          {600, 9, 600, 9, 513, 9},      {50, 40, 31, 17, 96, 72},  {3, 700, 3, 700, 2, 699}};
    for (const Case& c : cases) {
        SCOPED_TRACE(std::to_string(c.W) + " x " + std::to_string(c.H) + " -> " + std::to_string(c.tw) + " x " +
                     std::to_string(c.th));
        const Picture p(c.planeW, c.planeH, uint32_t(c.tw * 31 + c.th));
        std::vector<uint32_t> thumb(size_t(c.tw) * c.th, kSentinel32);
        EXPECT_TRUE(kwpaint::NearestThumbnail(thumb.data(), c.tw, c.th, p.r.data(), p.g.data(), p.b.data(), c.W,
                                              c.H, c.planeW + 1));
        EXPECT_EQ(thumb, ThumbnailReference(p, c.W, c.H, c.tw, c.th));
    }
}

TEST(Kernels, ThumbnailSaysWhetherAnyOfItsPixelsChanged) {
    Picture p(400, 300, 9);
    const int tw = 96, th = 72;
    std::vector<uint32_t> thumb(size_t(tw) * th, 0);
    auto paint = [&] {
        return kwpaint::NearestThumbnail(thumb.data(), tw, th, p.r.data(), p.g.data(), p.b.data(), p.W, p.H,
                                         p.W + 1);
    };
    EXPECT_TRUE(paint());
    EXPECT_FALSE(paint());  // nothing moved: nothing to repaint
    // A pixel between the samples (x = 1 is never sampled: 400 / 96 > 4) changes nothing.
    p.r[p.At(1, 0)] ^= 1;
    EXPECT_FALSE(paint());
    // One channel of the last sample, in the last row, is enough.
    const int lastX = int(int64_t(tw - 1) * p.W / tw), lastY = int(int64_t(th - 1) * p.H / th);
    p.b[p.At(lastX, lastY)] ^= 0x40;
    EXPECT_TRUE(paint());
    EXPECT_EQ(thumb.back() >> 16, p.b[p.At(lastX, lastY)]);
    EXPECT_FALSE(paint());
    // Sizes that cannot be drawn leave the thumbnail as it is.
    const std::vector<uint32_t> before = thumb;
    EXPECT_FALSE(kwpaint::NearestThumbnail(thumb.data(), 0, th, p.r.data(), p.g.data(), p.b.data(), p.W, p.H, p.W + 1));
    EXPECT_FALSE(kwpaint::NearestThumbnail(thumb.data(), tw, th, p.r.data(), p.g.data(), p.b.data(), 0, p.H, p.W + 1));
    EXPECT_FALSE(kwpaint::NearestThumbnail(thumb.data(), tw, th, p.r.data(), p.g.data(), p.b.data(), p.W, -1, p.W + 1));
    EXPECT_EQ(thumb, before);
}
