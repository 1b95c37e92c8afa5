// The Targa decoder and encoder on hand-made bytes: layouts, origins, the odd
// header values the reader honours, and damaged data.
#include <gtest/gtest.h>

#include <numeric>

#include "file/TargaFormat.h"

namespace {

struct Planes {
    Plane r, g, b, a;
    Planes(int ubX, int ubY) {
        for (Plane* p : {&r, &g, &b, &a}) {
            p->alloc(ubX, ubY);
            p->fill(77);  // so that untouched pixels show
        }
    }
    TargaPlanes target() { return {&r, &g, &b, &a}; }
};

TargaFileHeader Header(uint8_t type, int w, int h, uint8_t depth) {
    TargaFileHeader hd;
    hd.ImageType = type;
    hd.ImageWidth = static_cast<int16_t>(w);
    hd.ImageHeight = static_cast<int16_t>(h);
    hd.PixelDepth = depth;
    return hd;
}

bool Decode(const TargaFileHeader& h, const std::vector<uint8_t>& data, Planes& p) {
    return DecodeTargaPixels(h, data.data(), static_cast<long long>(data.size()), p.target());
}

}  // namespace

TEST(TargaHeader, PacksLittleEndianAndReadsShortHeadersAsZero) {
    TargaFileHeader h = Header(10, 4000, 3000, 32);
    h.IDLength = 255;
    h.ColorMapFirst = -2;
    h.ColorMapLength = 40000;
    h.ImageDescriptor = 40;
    auto b = PackTargaHeader(h);
    EXPECT_EQ(b[12], 4000 & 255);
    EXPECT_EQ(b[13], 4000 >> 8);
    EXPECT_EQ(b[3], 0xFE);
    EXPECT_EQ(b[4], 0xFF);
    TargaFileHeader back = ParseTargaHeader(b.data(), b.size());
    EXPECT_EQ(back.ImageWidth, 4000);
    EXPECT_EQ(back.ImageHeight, 3000);
    EXPECT_EQ(back.ColorMapFirst, -2);
    EXPECT_EQ(back.ColorMapLength, 40000);
    EXPECT_EQ(back.IDLength, 255);
    EXPECT_EQ(back.ImageDescriptor, 40);
    // A width above 32767 reads as negative: the field is signed.
    b[13] = 0x80;
    EXPECT_LT(ParseTargaHeader(b.data(), b.size()).ImageWidth, 0);
    TargaFileHeader cut = ParseTargaHeader(b.data(), 3);
    EXPECT_EQ(cut.ImageType, 10);
    EXPECT_EQ(cut.ImageWidth, 0);
    EXPECT_EQ(ParseTargaHeader(nullptr, 0).ImageType, 0);
}

TEST(TargaHeader, BytesPerPixelRoundsHalfToEven) {
    EXPECT_EQ(TargaBytesPerPixel(0), 0);
    EXPECT_EQ(TargaBytesPerPixel(4), 0);   // 0.5
    EXPECT_EQ(TargaBytesPerPixel(8), 1);
    EXPECT_EQ(TargaBytesPerPixel(12), 2);  // 1.5
    EXPECT_EQ(TargaBytesPerPixel(15), 2);
    EXPECT_EQ(TargaBytesPerPixel(20), 2);  // 2.5
    EXPECT_EQ(TargaBytesPerPixel(24), 3);
    EXPECT_EQ(TargaBytesPerPixel(32), 4);
    EXPECT_TRUE(TargaTopLeft(32));
    EXPECT_TRUE(TargaTopLeft(40));   // alpha bits do not count
    EXPECT_FALSE(TargaTopLeft(48));  // top-right is read as bottom-left
    EXPECT_FALSE(TargaTopLeft(0));
}

TEST(TargaDecode, TrueColourRowsRunBottomUpInBlueGreenRedOrder) {
    // 2 x 2, 24 bits: the first row of the file is the bottom row.
    std::vector<uint8_t> d = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12};
    Planes p(2, 2);
    ASSERT_TRUE(Decode(Header(2, 2, 2, 24), d, p));
    EXPECT_EQ(p.b(0, 1), 1);
    EXPECT_EQ(p.g(0, 1), 2);
    EXPECT_EQ(p.r(0, 1), 3);
    EXPECT_EQ(p.r(1, 1), 6);
    EXPECT_EQ(p.b(0, 0), 7);
    EXPECT_EQ(p.r(1, 0), 12);
    EXPECT_EQ(p.a(0, 0), 77);  // 24 bits leave alpha alone
    EXPECT_EQ(p.r(2, 0), 77);  // and the extra column

    std::vector<uint8_t> d32 = {1, 2, 3, 200, 4, 5, 6, 0};
    Planes q(2, 1);
    ASSERT_TRUE(Decode(Header(2, 2, 1, 32), d32, q));
    EXPECT_EQ(q.a(0, 0), 200);
    EXPECT_EQ(q.a(1, 0), 0);
    EXPECT_EQ(q.r(1, 0), 6);
}

TEST(TargaDecode, OtherPixelSizesReadAcrossTheirNeighbours) {
    // 16 bits: pixel x takes bytes 2x, 2x+1, 2x+2; the last one reads past the array as zero.
    std::vector<uint8_t> d = {10, 11, 12, 13, 14, 15};
    Planes p(3, 1);
    ASSERT_TRUE(Decode(Header(2, 3, 1, 16), d, p));
    EXPECT_EQ(p.b(1, 0), 12);
    EXPECT_EQ(p.g(1, 0), 13);
    EXPECT_EQ(p.r(1, 0), 14);
    EXPECT_EQ(p.b(2, 0), 14);
    EXPECT_EQ(p.r(2, 0), 0);
    // Depth 0: every pixel reads the same three (missing) bytes.
    Planes z(2, 1);
    ASSERT_TRUE(Decode(Header(2, 2, 1, 0), d, z));
    EXPECT_EQ(z.r(1, 0), 0);
}

TEST(TargaDecode, ShortUncompressedDataReadsAsZero) {
    std::vector<uint8_t> d = {9, 9, 9, 9};  // one pixel and a byte of 2 x 2 x 3
    Planes p(2, 2);
    ASSERT_TRUE(Decode(Header(2, 2, 2, 24), d, p));
    EXPECT_EQ(p.r(0, 1), 9);
    EXPECT_EQ(p.b(1, 1), 9);
    EXPECT_EQ(p.g(1, 1), 0);
    EXPECT_EQ(p.r(0, 0), 0);
    // Nothing at all (an identification field longer than the file).
    Planes q(2, 2);
    ASSERT_TRUE(DecodeTargaPixels(Header(2, 2, 2, 24), nullptr, -40, q.target()));
    EXPECT_EQ(q.r(1, 0), 0);
}

TEST(TargaDecode, RunLengthPacketsAndRowEnds) {
    // 3 x 2: a run of 2 and a raw pixel for the bottom row; a raw packet of 3 for the top row.
    std::vector<uint8_t> d = {0x81, 1, 2, 3, 0x00, 4, 5, 6, 0x02, 7, 8, 9, 10, 11, 12, 13, 14, 15};
    Planes p(3, 2);
    ASSERT_TRUE(Decode(Header(10, 3, 2, 24), d, p));
    EXPECT_EQ(p.r(0, 1), 3);
    EXPECT_EQ(p.r(1, 1), 3);
    EXPECT_EQ(p.b(2, 1), 4);
    EXPECT_EQ(p.b(0, 0), 7);
    EXPECT_EQ(p.r(2, 0), 15);

    // A run of 5 over a row of 3: the fourth pixel lands in the extra column, the
    // fifth nowhere, and the next row still starts at column 0.
    std::vector<uint8_t> over = {0x84, 1, 2, 3, 0x82, 4, 5, 6};
    Planes q(3, 2);
    ASSERT_TRUE(Decode(Header(10, 3, 2, 24), over, q));
    EXPECT_EQ(q.r(2, 1), 3);
    EXPECT_EQ(q.r(3, 1), 3);  // the extra column
    EXPECT_EQ(q.r(3, 0), 77);
    EXPECT_EQ(q.r(0, 0), 6);
    EXPECT_EQ(q.r(2, 0), 6);

    // 32 bits carry alpha through runs.
    std::vector<uint8_t> a = {0x81, 1, 2, 3, 99};
    Planes r(2, 1);
    ASSERT_TRUE(Decode(Header(10, 2, 1, 32), a, r));
    EXPECT_EQ(r.a(1, 0), 99);
}

TEST(TargaDecode, RunLengthStopsWhereTheDataEnds) {
    // Two rows of 2; the data ends inside the top row's packet.
    std::vector<uint8_t> d = {0x81, 1, 2, 3, 0x01, 4, 5, 6};
    Planes p(2, 2);
    EXPECT_FALSE(Decode(Header(10, 2, 2, 24), d, p));
    EXPECT_EQ(p.r(1, 1), 3);   // the bottom row is in
    EXPECT_EQ(p.r(1, 0), 77);  // the top row's second pixel never came
    // The spare zero byte behind the data is read like the file's own.
    std::vector<uint8_t> spare = {0x80, 1, 2};
    Planes q(1, 1);
    EXPECT_TRUE(Decode(Header(10, 1, 1, 24), spare, q));
    EXPECT_EQ(q.r(0, 0), 0);
    // Nothing after the header.
    Planes e(1, 1);
    EXPECT_FALSE(Decode(Header(10, 4, 1, 24), {}, e));
}

TEST(TargaDecode, ColourMapShiftsByBytesAndDropsWhatFallsOutside) {
    // Two map entries (blue, green, red) and four indices.
    TargaFileHeader h = Header(1, 2, 2, 8);
    h.ColorMapLength = 2;
    std::vector<uint8_t> d = {10, 20, 30, 40, 50, 60, 0, 1, 1, 0};
    Planes p(2, 2);
    ASSERT_TRUE(Decode(h, d, p));
    EXPECT_EQ(p.r(0, 1), 30);
    EXPECT_EQ(p.b(0, 1), 10);
    EXPECT_EQ(p.r(1, 1), 60);
    EXPECT_EQ(p.r(0, 0), 60);

    // First entry 1 moves every byte one place: each entry's channels change roles.
    h.ColorMapFirst = 1;
    Planes s(2, 2);
    ASSERT_TRUE(Decode(h, d, s));
    EXPECT_EQ(s.b(0, 1), 0);   // palette byte 0 was never written
    EXPECT_EQ(s.g(0, 1), 10);
    EXPECT_EQ(s.r(0, 1), 20);
    EXPECT_EQ(s.b(1, 1), 30);  // entry 1 starts with the old red
    EXPECT_EQ(s.r(1, 1), 50);

    // An index beyond a short map is black.
    std::vector<uint8_t> beyond = {10, 20, 30, 40, 50, 60, 200, 1, 1, 0};
    TargaFileHeader shortMap = Header(1, 2, 2, 8);
    shortMap.ColorMapLength = 2;
    Planes k(2, 2);
    ASSERT_TRUE(Decode(shortMap, beyond, k));
    EXPECT_EQ(k.r(0, 1), 0);

    // A map reaching past 256 entries or shifted below 0 loses the bytes outside and nothing else.
    for (int first : {-5, 700}) {
        TargaFileHeader big = Header(1, 1, 1, 8);
        big.ColorMapFirst = static_cast<int16_t>(first);
        big.ColorMapLength = 300;
        std::vector<uint8_t> m(900, 5);
        m.push_back(0);
        Planes b(1, 1);
        ASSERT_TRUE(Decode(big, m, b));
        EXPECT_EQ(b.r(0, 0), first < 0 ? 5 : 0);
    }
}

TEST(TargaDecode, GreyscaleUsesIdentityPalette) {
    std::vector<uint8_t> d = {0, 128, 255, 7};
    Planes p(2, 2);
    ASSERT_TRUE(Decode(Header(3, 2, 2, 8), d, p));
    EXPECT_EQ(p.r(1, 1), 128);
    EXPECT_EQ(p.g(1, 1), 128);
    EXPECT_EQ(p.b(0, 0), 255);
    EXPECT_EQ(p.r(1, 0), 7);
}

TEST(TargaDecode, RefusesPlanesThatDoNotCoverThePicture) {
    std::vector<uint8_t> d(5 * 5 * 4, 1);
    for (uint8_t type : {1, 2, 3, 10}) {
        Planes p(2, 2);
        EXPECT_FALSE(Decode(Header(type, 5, 5, 32), d, p)) << int(type);
        EXPECT_EQ(p.r(0, 0), 77);
    }
    // Nothing to do for an empty or negative size; unknown types read nothing.
    Planes q(1, 1);
    EXPECT_TRUE(Decode(Header(2, 0, 5, 24), d, q));
    EXPECT_TRUE(Decode(Header(2, -3, 5, 24), d, q));
    EXPECT_TRUE(Decode(Header(7, 1, 1, 24), d, q));
    EXPECT_EQ(q.r(0, 0), 77);
}

TEST(TargaEncode, EveryWrittenTypeReadsBack) {
    const int W = 5, H = 3;
    Planes src(W, H);
    Plane index;
    index.alloc(W, H);
    uint32_t palette[256];
    for (int i = 0; i < 256; ++i) palette[i] = static_cast<uint32_t>(i | (255 - i) << 8 | (i * 3 & 255) << 16);
    for (int y = 0; y < H; ++y)
        for (int x = 0; x < W; ++x) {
            src.r(x, y) = static_cast<uint8_t>(x * 50);
            src.g(x, y) = static_cast<uint8_t>(y * 90);
            src.b(x, y) = static_cast<uint8_t>(x + y * 7);
            src.a(x, y) = static_cast<uint8_t>(x * y * 20);
            index(x, y) = static_cast<uint8_t>(x * 40 + y);
        }
    struct Case { uint8_t flags, type; int depth; };
    for (Case c : {Case{0, 2, 24}, Case{1, 2, 32}, Case{2, 3, 8}, Case{6, 1, 8}}) {
        TargaImage img{&src.r, &src.g, &src.b, &src.a, &index, palette, W, H, c.flags, c.type};
        auto bytes = EncodeTarga(img);
        TargaFileHeader h = ParseTargaHeader(bytes.data(), bytes.size());
        EXPECT_EQ(h.ImageType, c.type);
        EXPECT_EQ(h.PixelDepth, c.depth);
        EXPECT_EQ(h.ImageDescriptor, 0);
        EXPECT_EQ(h.ColorMapType, c.type == 1 ? 1 : 0);
        EXPECT_EQ(h.ColorMapLength, c.type == 1 ? 256 : 0);
        EXPECT_EQ(h.ColorMapEntrySize, c.type == 1 ? 24 : c.depth);
        EXPECT_EQ(bytes.size(), 18u + (c.type == 1 ? 768u : 0u) + size_t(W * H * c.depth / 8));
        Planes back(W, H);
        ASSERT_TRUE(DecodeTargaPixels(h, bytes.data() + 18, static_cast<long long>(bytes.size()) - 18, back.target()));
        for (int y = 0; y < H; ++y)
            for (int x = 0; x < W; ++x) {
                int r = src.r(x, y), g = src.g(x, y), b = src.b(x, y);
                if (c.type == 3) r = g = b = (r + g + b) / 3;
                if (c.type == 1) {
                    uint32_t pc = palette[index(x, y)];
                    r = pc & 255, g = pc >> 8 & 255, b = pc >> 16 & 255;
                }
                ASSERT_EQ(back.r(x, y), r) << int(c.type) << " at " << x << "," << y;
                ASSERT_EQ(back.g(x, y), g);
                ASSERT_EQ(back.b(x, y), b);
                if (c.flags == 1) {
                    ASSERT_EQ(back.a(x, y), src.a(x, y));
                }
            }
    }
}
