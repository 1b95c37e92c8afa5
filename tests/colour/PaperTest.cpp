// The paper planes: the slope wraps at the edges, "Negative" turns it over, the
// hold flag defers the work, and the stock papers tile.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "colour/Paper.h"
#include "core/Display.h"
#include "core/Form2.h"
#include "tests/support/ScriptedHost.h"

namespace {
class PaperTest : public ::testing::Test {
protected:
    void SetUp() override {
        NegativeOn = 0;
        PaperHold = 0;
        PaperStrength = 1.0f;
        // A 4 by 3 ramp whose corners differ, so a wrong neighbour shows.
        std::vector<uint8_t> grey = {10, 20, 30, 40, 50, 60, 70, 80, 90, 100, 110, 120};
        SetPaperPicture(grey, 4, 3);
        RefreshPaperBuff();
    }
    void TearDown() override {
        NegativeOn = 0;
        PaperHold = 0;
        PickStockPaper(1);
    }
    ScriptedHost host;
};

TEST_F(PaperTest, SlopeIsTheUpperLeftLessTheLowerRightNeighbourWrapped) {
    ASSERT_EQ(PaperWidth, 4);
    ASSERT_EQ(PaperHeight, 3);
    EXPECT_EQ(PaperB(1, 1), 60);
    EXPECT_FLOAT_EQ(PaperF(1, 1), (10.0f - 110.0f) / 256.0f);
    // At the corner (0, 0) the upper left neighbour wraps to (3, 2) and that is 120.
    EXPECT_FLOAT_EQ(PaperF(0, 0), (120.0f - 60.0f) / 256.0f);
    // At (3, 2) the lower right one wraps to (0, 0).
    EXPECT_FLOAT_EQ(PaperF(3, 2), (70.0f - 10.0f) / 256.0f);
}

TEST_F(PaperTest, NegativeFlipsTheSlopeAndStrengthScalesIt) {
    float plain = PaperF(1, 1);
    NegativeOn = 1;
    RefreshPaperBuff();
    EXPECT_FLOAT_EQ(PaperF(1, 1), -plain);
    PaperStrength = 0.5f;
    RefreshPaperBuff();
    EXPECT_FLOAT_EQ(PaperF(1, 1), -plain / 2);
}

TEST_F(PaperTest, HoldDefersTheRebuildUntilItIsCleared) {
    float before = PaperF(1, 1);
    PaperHold = 1;
    Form2::Check3.Value = 1;  // "Negative" while a preset applies
    EXPECT_EQ(NegativeOn, 1);
    EXPECT_FLOAT_EQ(PaperF(1, 1), before);
    PaperHold = 0;
    RefreshPaperBuff();
    EXPECT_FLOAT_EQ(PaperF(1, 1), -before);
    Form2::Check3.Value = 0;
}

TEST_F(PaperTest, CheckBoxesSetTheFieldsAndTheTitle) {
    MakeTestDocument(8, 8);
    Form2::Check2.Value = 1;
    EXPECT_EQ(DrybrushOn, 1);
    EXPECT_NE(ComposeTitle().find("(Paper)  "), std::string::npos);
    Form2::Check2.Value = 0;
    EXPECT_EQ(ComposeTitle().find("(Paper)"), std::string::npos);
    Form2::HScroll6.Value = 51;
    EXPECT_FLOAT_EQ(PaperStrength, 51 / 255.0f);
    Form2::Check1.Value = 1;
    EXPECT_EQ(BumpinessOn, 1);
    EXPECT_NE(ComposeTitle().find("(Paper)"), std::string::npos);
    Form2::Check1.Value = 0;
    Form2::HScroll6.Value = 128;
}

TEST_F(PaperTest, StockPapersAreGreyTileableAndDifferent) {
    std::vector<std::vector<uint8_t>> papers;
    for (int i = 0; i < StockPaperCount; ++i) {
        std::vector<uint8_t> p = MakeStockPaper(i);
        ASSERT_EQ(p.size(), static_cast<size_t>(StockPaperSide * StockPaperSide));
        // The seam (last column to first, last row to first) is no rougher than the
        // roughest pair of neighbouring columns or rows inside the picture.
        auto at = [&](int x, int y) { return static_cast<int>(p[static_cast<size_t>(y) * StockPaperSide + x]); };
        auto columns = [&](int a, int b) {
            int sum = 0;
            for (int y = 0; y < StockPaperSide; ++y) sum += std::abs(at(a, y) - at(b, y));
            return sum;
        };
        auto rows = [&](int a, int b) {
            int sum = 0;
            for (int x = 0; x < StockPaperSide; ++x) sum += std::abs(at(x, a) - at(x, b));
            return sum;
        };
        int roughest = 0;
        for (int k = 1; k < StockPaperSide; ++k) roughest = std::max({roughest, columns(k - 1, k), rows(k - 1, k)});
        EXPECT_LE(columns(StockPaperSide - 1, 0), roughest) << "paper " << i;
        EXPECT_LE(rows(StockPaperSide - 1, 0), roughest) << "paper " << i;
        papers.push_back(p);
    }
    for (int i = 1; i < StockPaperCount; ++i) EXPECT_NE(papers[0], papers[static_cast<size_t>(i)]);
    PickStockPaper(2);
    EXPECT_EQ(PaperWidth, 160);
    EXPECT_EQ(Form2::Image2.Tag, "1");
    EXPECT_EQ(Form2::Image1.Tag, "0");
    EXPECT_EQ(PaperB(5, 7), papers[1][7 * 160 + 5]);
}
}  // namespace
