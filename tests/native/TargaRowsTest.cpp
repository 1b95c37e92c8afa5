// Targa rows through the AVX2, SSSE3 and plain forms on every width from 1 to
// 67 (each remainder of the sixteen- and thirty-two-pixel steps, several
// steps), from unaligned sources, without writing past the row.
#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "native/TargaRows.h"

namespace {
using Bytes = std::vector<uint8_t>;
constexpr uint8_t kSentinel = 0xA5;

Bytes Random(size_t n, uint32_t seed) {
    std::mt19937 rng(seed);
    Bytes v(n);
    for (auto& b : v) b = static_cast<uint8_t>(rng());
    return v;
}
}  // namespace

TEST(TargaRows, SplitFormsAgreeWithThePlainFormOnEveryWidth) {
    std::vector<kwtarga::SplitRowFn> forms = {kwtarga::SplitBgrRowScalar};
    if (kwtarga::HaveSsse3()) forms.push_back(kwtarga::SplitBgrRowSsse3);
    EXPECT_EQ(kwtarga::SplitBgrRow(), forms.back());
    const Bytes src = Random(3 * 80, 3);
    for (int offset = 0; offset < 3; ++offset)
        for (int w = 1; w <= 67; ++w)
            for (auto form : forms) {
                Bytes r(w + 1, kSentinel), g(w + 1, kSentinel), b(w + 1, kSentinel);
                const uint8_t* s = src.data() + offset;
                form(s, w, r.data(), g.data(), b.data());
                for (int x = 0; x < w; ++x) {
                    ASSERT_EQ(b[x], s[3 * x]) << "width " << w << " pixel " << x;
                    ASSERT_EQ(g[x], s[3 * x + 1]) << "width " << w << " pixel " << x;
                    ASSERT_EQ(r[x], s[3 * x + 2]) << "width " << w << " pixel " << x;
                }
                ASSERT_EQ(r[w], kSentinel);
                ASSERT_EQ(g[w], kSentinel);
                ASSERT_EQ(b[w], kSentinel);
            }
}

TEST(TargaRows, JoinFormsAgreeWithThePlainFormAndSplitBackOnEveryWidth) {
    std::vector<kwtarga::JoinRowFn> forms = {kwtarga::JoinBgrRowScalar};
    if (kwtarga::HaveSsse3()) forms.push_back(kwtarga::JoinBgrRowSsse3);
    if (kwtarga::HaveAvx2()) forms.push_back(kwtarga::JoinBgrRowAvx2);
    EXPECT_EQ(kwtarga::JoinBgrRow(), forms.back());
    const Bytes r = Random(80, 4), g = Random(80, 5), b = Random(80, 6);
    for (int offset = 0; offset < 3; ++offset)
        for (int w = 1; w <= 67; ++w) {
            Bytes want(3 * w + 3, kSentinel);
            kwtarga::JoinBgrRowScalar(want.data(), w, r.data() + offset, g.data() + offset, b.data() + offset);
            for (int x = 0; x < w; ++x) ASSERT_EQ(want[3 * x + 2], r[offset + x]);
            for (auto form : forms) {
                Bytes got(3 * w + 3, kSentinel);
                form(got.data(), w, r.data() + offset, g.data() + offset, b.data() + offset);
                ASSERT_EQ(got, want) << "width " << w;
                Bytes r2(w), g2(w), b2(w);
                kwtarga::SplitBgrRow()(got.data(), w, r2.data(), g2.data(), b2.data());
                ASSERT_TRUE(std::equal(r2.begin(), r2.end(), r.begin() + offset)) << "width " << w;
                ASSERT_TRUE(std::equal(b2.begin(), b2.end(), b.begin() + offset)) << "width " << w;
            }
        }
}
