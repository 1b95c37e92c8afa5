// The Targa header and decoder on hand-made bytes: the odd header values the
// reader honours and damaged data. Ordinary files of every type and origin are
// checked against Pillow in ForeignFilesTest.
#include <gtest/gtest.h>

#include "file/TargaFormat.h"

using Bytes = std::vector<uint8_t>;

TEST(TargaHeader, PacksLittleEndianSignedFieldsAndReadsShortHeadersAsZero) {
    const TargaFileHeader h{255, 1, 10, -2, 40000, 24, 3, -4, 4000, 3000, 32, 40};
    auto b = PackTargaHeader(h);
    EXPECT_EQ(Bytes(b.begin(), b.begin() + 8), (Bytes{255, 1, 10, 0xFE, 0xFF, 0x40, 0x9C, 24}));
    EXPECT_EQ(b[12] | b[13] << 8, 4000);
    EXPECT_EQ(b[17], 40);
    EXPECT_EQ(PackTargaHeader(ParseTargaHeader(b.data(), b.size())), b) << "every field reads back";
    b[13] = 0x80;  // a width above 32767 reads as negative: the field is signed
    EXPECT_LT(ParseTargaHeader(b.data(), b.size()).ImageWidth, 0);
    TargaFileHeader cut = ParseTargaHeader(b.data(), 3);
    EXPECT_EQ(cut.ImageType, 10);
    EXPECT_EQ(cut.ImageWidth, 0);
    EXPECT_EQ(ParseTargaHeader(nullptr, 0).ImageType, 0);
    // Bytes per pixel round half to even: 4 bits give 0, 12 and 20 give 2.
    for (auto [depth, bytes] : {std::pair{0, 0}, {4, 0}, {8, 1}, {12, 2}, {15, 2}, {20, 2}, {24, 3}, {32, 4}})
        EXPECT_EQ(TargaBytesPerPixel(static_cast<uint8_t>(depth)), bytes) << depth;
}

TEST(TargaDecode, OddHeadersAndDamagedData) {
    struct Px { int x, y, channel, value; };  // channel 0 red, 1 green, 2 blue, 3 alpha; 77 = untouched
    struct Case {
        const char* what;
        uint8_t type;
        int w, h;
        uint8_t depth;
        int16_t mapFirst;
        uint16_t mapLength;
        Bytes data;
        int ubX, ubY;  // the planes' size
        bool ok;
        std::vector<Px> expect;
        long long size = -1;  // what the file holds after the identification field; -1: all of `data`
    };
    Bytes bigMap(900, 5);
    bigMap.push_back(0);
    const Bytes map = {10, 20, 30, 40, 50, 60};
    auto mapped = [&](std::initializer_list<uint8_t> idx) { Bytes d = map; d.insert(d.end(), idx); return d; };
    const Bytes full(5 * 5 * 4, 1);
    const Case cases[] = {
        {"16 bits read 3 bytes from 2x on, past the end as 0", 2, 3, 1, 16, 0, 0, {10, 11, 12, 13, 14, 15}, 3, 1, true,
         {{1, 0, 2, 12}, {1, 0, 1, 13}, {1, 0, 0, 14}, {2, 0, 2, 14}, {2, 0, 0, 0}}},
        {"depth 0 reads the missing bytes", 2, 2, 1, 0, 0, 0, {10, 11}, 2, 1, true, {{1, 0, 0, 0}}},
        {"24 bits leave alpha and the extra column", 2, 2, 1, 24, 0, 0, {1, 2, 3, 4, 5, 6}, 2, 1, true,
         {{1, 0, 0, 6}, {0, 0, 3, 77}, {2, 0, 0, 77}}},
        {"short data reads as 0", 2, 2, 2, 24, 0, 0, {9, 9, 9, 9}, 2, 2, true,
         {{0, 1, 0, 9}, {1, 1, 2, 9}, {1, 1, 1, 0}, {0, 0, 0, 0}}},
        {"no data at all", 2, 2, 2, 24, 0, 0, {}, 2, 2, true, {{1, 0, 0, 0}}, -40},
        {"a run past the row end: extra column, then nowhere", 10, 3, 2, 24, 0, 0, {0x84, 1, 2, 3, 0x82, 4, 5, 6},
         3, 2, true, {{2, 1, 0, 3}, {3, 1, 0, 3}, {3, 0, 0, 77}, {0, 0, 0, 6}, {2, 0, 0, 6}}},
        {"the spare zero byte behind the data is read", 10, 1, 1, 24, 0, 0, {0x80, 1, 2}, 1, 1, true, {{0, 0, 0, 0}}},
        {"nothing after the header", 10, 4, 1, 24, 0, 0, {}, 4, 1, false, {{0, 0, 0, 77}}},
        {"first entry 1 shifts the map by a byte", 1, 2, 2, 8, 1, 2, mapped({0, 1, 1, 0}), 2, 2, true,
         {{0, 1, 2, 0}, {0, 1, 1, 10}, {0, 1, 0, 20}, {1, 1, 2, 30}, {1, 1, 0, 50}}},
        {"an index beyond a short map is black", 1, 2, 2, 8, 0, 2, mapped({200, 1, 1, 0}), 2, 2, true,
         {{0, 1, 0, 0}, {1, 1, 0, 60}}},
        {"map bytes below entry 0 are dropped", 1, 1, 1, 8, -5, 300, bigMap, 1, 1, true, {{0, 0, 0, 5}}},
        {"map bytes past entry 255 are dropped", 1, 1, 1, 8, 700, 300, bigMap, 1, 1, true, {{0, 0, 0, 0}}},
        {"planes too small, type 1", 1, 5, 5, 32, 0, 0, full, 2, 2, false, {{0, 0, 0, 77}}},
        {"planes too small, type 2", 2, 5, 5, 32, 0, 0, full, 2, 2, false, {{0, 0, 0, 77}}},
        {"planes too small, type 3", 3, 5, 5, 32, 0, 0, full, 2, 2, false, {{0, 0, 0, 77}}},
        {"planes too small, type 10", 10, 5, 5, 32, 0, 0, full, 2, 2, false, {{0, 0, 0, 77}}},
        {"an empty width reads nothing", 2, 0, 5, 24, 0, 0, full, 1, 1, true, {{0, 0, 0, 77}}},
        {"a negative width reads nothing", 2, -3, 5, 24, 0, 0, full, 1, 1, true, {{0, 0, 0, 77}}},
        {"an unknown type reads nothing", 7, 1, 1, 24, 0, 0, full, 1, 1, true, {{0, 0, 0, 77}}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        TargaFileHeader h{0, 0, c.type, c.mapFirst, c.mapLength, 24, 0, 0, static_cast<int16_t>(c.w),
                          static_cast<int16_t>(c.h), c.depth, 0};
        Plane p[4];
        for (Plane& q : p) q.alloc(c.ubX, c.ubY), q.fill(77);
        const long long size = c.size < 0 ? static_cast<long long>(c.data.size()) : c.size;
        const uint8_t* data = c.data.empty() ? nullptr : c.data.data();
        EXPECT_EQ(DecodeTargaPixels(h, data, size, {&p[0], &p[1], &p[2], &p[3]}), c.ok);
        for (Px e : c.expect) EXPECT_EQ(p[e.channel](e.x, e.y), e.value) << e.x << "," << e.y << " in " << e.channel;
    }
}

// A picture whose rows fill the encoder's buffer several times over, with a
// remainder: the bytes handed out piece by piece are the whole file, rows
// bottom first, and a sink that refuses stops the encoding.
TEST(TargaEncode, RowsGoOutInPiecesThatMakeTheWholeFile) {
    const int W = 1001, H = 300;  // 3003 bytes a row
    Plane r, g, b, a;
    for (Plane* p : {&r, &g, &b, &a}) p->alloc(W, H);
    for (int y = 0; y < H; ++y)
        for (int x = 0; x < W; ++x) {
            r(x, y) = static_cast<uint8_t>(x + y);
            g(x, y) = static_cast<uint8_t>(x * 3);
            b(x, y) = static_cast<uint8_t>(y * 5 + 1);
            a(x, y) = static_cast<uint8_t>(x ^ y);
        }
    for (uint8_t flags : {0, 1}) {
        const int p = flags ? 4 : 3;
        TargaImage img{&r, &g, &b, &a, nullptr, nullptr, W, H, flags, 2};
        Bytes whole;
        int pieces = 0;
        ASSERT_TRUE(EncodeTargaTo(img, [&](const uint8_t* bytes, size_t n) {
            whole.insert(whole.end(), bytes, bytes + n);
            ++pieces;
            return true;
        }));
        EXPECT_GT(pieces, 3);
        ASSERT_EQ(whole.size(), TargaHeaderSize + static_cast<size_t>(W) * H * p);
        EXPECT_EQ(ParseTargaHeader(whole.data(), whole.size()).PixelDepth, p * 8);
        const TargaBytes encoded = EncodeTarga(img);
        EXPECT_TRUE(std::equal(whole.begin(), whole.end(), encoded.begin(), encoded.end()));
        // Every pixel, so that a row out of place at a piece's edge shows.
        Bytes want(whole.begin(), whole.begin() + TargaHeaderSize);
        for (int y = H - 1; y >= 0; --y)
            for (int x = 0; x < W; ++x) {
                want.insert(want.end(), {b(x, y), g(x, y), r(x, y)});
                if (p == 4) want.push_back(a(x, y));
            }
        ASSERT_TRUE(whole == want) << "pixels out of place with " << p << " bytes a pixel";
        int calls = 0;
        EXPECT_FALSE(EncodeTargaTo(img, [&](const uint8_t*, size_t) { return ++calls < 2; }));
        EXPECT_EQ(calls, 2);
    }
}

// Progress comes once for each buffer row whose number is a multiple of ten,
// the rows counted in file order from the bottom one, however the rows are
// grouped into pieces.
TEST(TargaEncode, ProgressComesOnRowsThatAreMultiplesOfTen) {
    for (auto [W, H] : {std::pair{1001, 300}, {5000, 73}, {3, 9}}) {
        Plane r, g, b, a;
        for (Plane* q : {&r, &g, &b, &a}) q->alloc(W, H);
        TargaImage img{&r, &g, &b, &a, nullptr, nullptr, W, H, 0, 2};
        std::vector<int> seen;
        EncodeTargaTo(
            img, [](const uint8_t*, size_t) { return true; },
            [](int percent, void* context) { static_cast<std::vector<int>*>(context)->push_back(percent); }, &seen);
        std::vector<int> want;
        for (int done = 0, y = H - 1; y >= 0; --y, ++done)
            if (y % 10 == 0) want.push_back(done * 100 / H);
        EXPECT_EQ(seen, want) << W << " x " << H;
    }
}
