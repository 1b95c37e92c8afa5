// The shared arithmetic and the mixing tables, at the values where rounding shows.
#include <gtest/gtest.h>

#include <vector>

#include "core/framework/MixTables.h"
#include "core/framework/vb.h"

TEST(Numbers, ConversionsRoundHalfToEven) {
    EXPECT_EQ(vb::CInt(0.5), 0);
    EXPECT_EQ(vb::CInt(1.5), 2);
    EXPECT_EQ(vb::CInt(2.5), 2);
    EXPECT_EQ(vb::CInt(-2.5), -2);
    EXPECT_EQ(vb::CLng(3.5), 4);
    EXPECT_THROW(vb::CInt(32767.5), vb::OverflowError);  // rounds to 32768
    EXPECT_EQ(vb::CInt(32767.4), 32767);
    EXPECT_EQ(vb::Int(-0.5), -1);
    EXPECT_EQ(vb::Fix(-0.5), 0);
    EXPECT_EQ(vb::Wrap16(32768), -32768);
}

TEST(Numbers, ValReadsTheLeadingNumberOnly) {
    EXPECT_EQ(vb::Val("abc"), 0);
    EXPECT_EQ(vb::Val("12px"), 12);
    EXPECT_EQ(vb::Val("  640 "), 640);
    EXPECT_EQ(vb::Val("-3.25x"), -3.25);
    EXPECT_EQ(vb::Val("1e3"), 1000);
    EXPECT_EQ(vb::Val("2e"), 2);
    EXPECT_EQ(vb::Val(""), 0);
    EXPECT_EQ(vb::Val(".5"), 0.5);
    EXPECT_EQ(vb::Str(240), "240");
    EXPECT_EQ(vb::Str(2.5), "2.5");
}

TEST(Numbers, PackedColoursKeepRedLow) {
    uint32_t c = vb::RGB(10, 20, 30);
    EXPECT_EQ(c, 0x1E140Au);
    EXPECT_EQ(vb::RedOf(c), 10);
    EXPECT_EQ(vb::GreenOf(c), 20);
    EXPECT_EQ(vb::BlueOf(c), 30);
}

TEST(Numbers, RandomGeneratorIsSeededAndBelowOne) {
    vb::Randomize(7);
    double a = vb::Rnd(), b = vb::Rnd();
    vb::Randomize(7);
    EXPECT_EQ(vb::Rnd(), a);
    EXPECT_EQ(vb::Rnd(), b);
    for (int i = 0; i < 10000; ++i) {
        double r = vb::Rnd();
        ASSERT_GE(r, 0.0);
        ASSERT_LT(r, 1.0);
    }
}

TEST(MixTables, EndsAndRoundingOfEachTable) {
    // add and subtract clamp; subtract is the first index minus the second
    EXPECT_EQ(MixAt(MixAdd, 200, 100), 255);
    EXPECT_EQ(MixAt(MixAdd, 20, 30), 50);
    EXPECT_EQ(MixAt(MixSub, 100, 30), 70);
    EXPECT_EQ(MixAt(MixSub, 30, 100), 0);
    EXPECT_EQ(MixAt(MixMult, 255, 255), 255);
    EXPECT_EQ(MixAt(MixMult, 128, 128), 64);  // 16384 / 255 = 64.25, integer division
    EXPECT_EQ(MixAt(MixMult, 254, 1), 0);
    // divide: 255 where the divisor is 0, clamped, half to even in single precision
    EXPECT_EQ(MixAt(MixDiv, 0, 0), 255);
    EXPECT_EQ(MixAt(MixDiv, 77, 0), 255);
    EXPECT_EQ(MixAt(MixDiv, 200, 100), 255);
    EXPECT_EQ(MixAt(MixDiv, 1, 2), 128);  // 127.5 -> 128 (even)
    EXPECT_EQ(MixAt(MixDiv, 1, 6), 42);   // 42.5 -> 42 (even)
    EXPECT_EQ(MixAt(MixDiv, 5, 10), 128);
    // screen: j + (255 - j) / 255 * i in doubles
    EXPECT_EQ(MixAt(MixScreen, 0, 0), 0);
    EXPECT_EQ(MixAt(MixScreen, 255, 0), 255);
    EXPECT_EQ(MixAt(MixScreen, 1, 127), 128);  // 127 + 128/255 = 127.50196 -> 128
    EXPECT_EQ(MixAt(MixScreen, 0, 200), 200);
    // around grey: i - 127 + j clamped
    EXPECT_EQ(MixAt(MixAroundGrey, 127, 40), 40);
    EXPECT_EQ(MixAt(MixAroundGrey, 0, 0), 0);
    EXPECT_EQ(MixAt(MixAroundGrey, 255, 255), 255);
    EXPECT_EQ(MixAt(MixAroundGrey, 200, 100), 173);
}

// A row of draws gives the draws one at a time would, in order, and leaves the
// generator where they would: short rows, rows just past the size where four
// lanes start, and rows of a wide picture's three draws a pixel.
TEST(Numbers, RowsOfDrawsAreTheSingleDrawsInOrder) {
    for (bool vector : {false, true})
        for (size_t count : {size_t{0}, size_t{1}, size_t{255}, size_t{256}, size_t{257}, size_t{258}, size_t{259},
                             size_t{1000}, size_t{12003}}) {
            vb::Randomize(99);
            std::vector<double> want(count);
            for (double& d : want) d = vb::Rnd();
            const double next = vb::Rnd();
            vb::Randomize(99);
            std::vector<double> got(count, -1.0);
            vb::RndRow(got.data(), count, vector);
            ASSERT_EQ(got, want) << "count " << count << " vector " << vector;
            EXPECT_EQ(vb::Rnd(), next) << "count " << count;
            // A second row goes on from where the first left off.
            vb::Randomize(5);
            for (double& d : want) d = vb::Rnd();
            std::vector<double> second(count);
            for (double& d : second) d = vb::Rnd();
            vb::Randomize(5);
            vb::RndRow(got.data(), count, vector);
            std::vector<double> got2(count);
            vb::RndRow(got2.data(), count, vector);
            ASSERT_EQ(got2, second) << "count " << count;
        }
}

// Rows of colour noise hold each pixel's draw cut into its words, in order:
// short rows, rows around the size where four lanes start, and lengths
// leaving every remainder by four in the quarters and their tails; between
// plain rows of other lengths, each wanting its own jump, they go on from
// where the single draws would be.
TEST(Numbers, RowsOfColourNoiseAreTheSingleDrawsInOrder) {
    for (bool vector : {false, true})
        for (size_t pixels : {size_t{0}, size_t{1}, size_t{255}, size_t{256}, size_t{257}, size_t{258},
                              size_t{259}, size_t{1001}, size_t{32000}, size_t{32003}}) {
            vb::Randomize(7);
            std::vector<int16_t> want[3];
            for (size_t i = 0; i < pixels; ++i) {
                const vb::ChannelNoise c = vb::NextChannelNoise();
                want[0].push_back(c.r), want[1].push_back(c.g), want[2].push_back(c.b);
            }
            const double next = vb::Rnd();
            vb::Randomize(7);
            std::vector<int16_t> got[3];
            for (auto& c : got) c.assign(pixels, 12345);
            vb::RndRowNoise(got[0].data(), got[1].data(), got[2].data(), pixels, vector);
            for (int c = 0; c < 3; ++c) ASSERT_EQ(got[c], want[c]) << "pixels " << pixels << " vector " << vector;
            EXPECT_EQ(vb::Rnd(), next) << "pixels " << pixels << " vector " << vector;
        }
    vb::Randomize(3);
    std::vector<double> plainWant(700);
    for (size_t i = 0; i < 300; ++i) plainWant[i] = vb::Rnd();
    std::vector<uint64_t> noiseWant(500);
    for (uint64_t& x : noiseWant) x = vb::NextRandom();
    for (size_t i = 300; i < 700; ++i) plainWant[i] = vb::Rnd();
    vb::Randomize(3);
    std::vector<double> plain(700);
    std::vector<int16_t> c[3];
    for (auto& v : c) v.resize(500);
    vb::RndRow(plain.data(), 300);
    vb::RndRowNoise(c[0].data(), c[1].data(), c[2].data(), 500);
    vb::RndRow(plain.data() + 300, 400);
    EXPECT_EQ(plain, plainWant);
    for (size_t i = 0; i < 500; ++i)
        for (int k = 0; k < 3; ++k) {
            // Red is the top word, then green and blue, each less 2^15.
            const int word = static_cast<int>((noiseWant[i] >> (48 - 16 * k)) & 0xFFFF);
            ASSERT_EQ(c[k][i], word - 32768) << "pixel " << i << " channel " << k;
        }
}
