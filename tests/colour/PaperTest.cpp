// The paper planes: the slope wraps at the edges, "Negative" turns it over, the
// hold flag defers the work, and the stock papers tile.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

#include "core/frame/MDIForm1.h"
#include "colour/Paper.h"
#include "core/display/Display.h"
#include "core/frame/Form2.h"
#include "tests/colour/ColourFixture.h"

namespace {
class PaperTest : public ::testing::Test {
protected:
    void SetUp() override {
        NegativeOn = 0;
        PaperHold = 0;
        PaperStrength = 1.0f;
        // A 4 by 3 ramp whose corners differ, so a wrong neighbour shows.
        SetPaperPicture({10, 20, 30, 40, 50, 60, 70, 80, 90, 100, 110, 120}, 4, 3);
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
    // At the corner (0, 0) the upper left neighbour wraps to (3, 2), and at (3, 2) the lower right one to (0, 0).
    EXPECT_FLOAT_EQ(PaperF(0, 0), (120.0f - 60.0f) / 256.0f);
    EXPECT_FLOAT_EQ(PaperF(3, 2), (70.0f - 10.0f) / 256.0f);
}

TEST_F(PaperTest, NegativeFlipsTheSlopeStrengthScalesItAndHoldDefersBoth) {
    const float plain = PaperF(1, 1);
    NegativeOn = 1;
    RefreshPaperBuff();
    EXPECT_FLOAT_EQ(PaperF(1, 1), -plain);
    PaperStrength = 0.5f;
    RefreshPaperBuff();
    EXPECT_FLOAT_EQ(PaperF(1, 1), -plain / 2);

    SetUp();
    PaperHold = 1;
    Form2::Check3.Value = 1;  // "Negative" while a preset applies
    EXPECT_EQ(NegativeOn, 1);
    EXPECT_FLOAT_EQ(PaperF(1, 1), plain);
    PaperHold = 0;
    RefreshPaperBuff();
    EXPECT_FLOAT_EQ(PaperF(1, 1), -plain);
    Form2::Check3.Value = 0;
}

TEST_F(PaperTest, CheckBoxesSetTheFieldsAndTheTitle) {
    MakeTestDocument(8, 8);
    Form2::Check2.Value = 1;
    EXPECT_EQ(DrybrushOn, 1);
    EXPECT_NE(MDIForm1::ComposeTitle().find("(Paper)  "), std::string::npos);
    Form2::Check2.Value = 0;
    EXPECT_EQ(MDIForm1::ComposeTitle().find("(Paper)"), std::string::npos);
    Form2::HScroll6.Value = 51;
    EXPECT_FLOAT_EQ(PaperStrength, 51 / 255.0f);
    Form2::Check1.Value = 1;
    EXPECT_EQ(BumpinessOn, 1);
    EXPECT_NE(MDIForm1::ComposeTitle().find("(Paper)"), std::string::npos);
    Form2::Check1.Value = 0;
    Form2::HScroll6.Value = 128;
}

TEST_F(PaperTest, StockPapersAreGreyTileableAndDifferent) {
    constexpr int S = StockPaperSide;
    std::vector<std::vector<uint8_t>> papers;
    for (int i = 0; i < StockPaperCount; ++i) {
        const std::vector<uint8_t> p = MakeStockPaper(i);
        ASSERT_EQ(p.size(), static_cast<size_t>(S * S));
        // The seam (last column to first, last row to first) is no rougher than the
        // roughest pair of neighbouring columns or rows inside the picture.
        auto step = [&](int a, int b, bool columns) {
            int sum = 0;
            for (int k = 0; k < S; ++k) sum += columns ? std::abs(p[k * S + a] - p[k * S + b]) : std::abs(p[a * S + k] - p[b * S + k]);
            return sum;
        };
        int roughest = 0;
        for (int k = 1; k < S; ++k) roughest = std::max({roughest, step(k - 1, k, true), step(k - 1, k, false)});
        EXPECT_LE(step(S - 1, 0, true), roughest) << "paper " << i;
        EXPECT_LE(step(S - 1, 0, false), roughest) << "paper " << i;
        EXPECT_TRUE(papers.empty() || p != papers[0]) << "paper " << i;
        papers.push_back(p);
    }
    PickStockPaper(2);
    EXPECT_EQ(PaperWidth, 160);
    EXPECT_EQ(Form2::Image2.Tag, "1");
    EXPECT_EQ(Form2::Image1.Tag, "0");
    EXPECT_EQ(PaperB(5, 7), papers[1][7 * 160 + 5]);
}
}  // namespace
