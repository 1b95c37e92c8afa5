// Fade last action: the blend toward the picture before the last action, and
// what Ok and Cancel leave behind.
#include "filter/FadeLast.h"
#include "tests/core/CoreFixture.h"

using FadeLastTest = CoreTest;

TEST_F(FadeLastTest, FadeBlendsTowardTheStateBeforeAndCancelRestores) {
    MakeTestDocument(4, 4);
    Stamp(0);
    SaveUndo();
    Stamp(200);
    FadePrevious_Click();
    EXPECT_EQ(BufR(1, 1), 200);  // amount 0 leaves the picture as it is
    FadeLast::HScroll1.Value = 255;
    EXPECT_EQ(BufR(1, 1), 0);
    FadeLast::HScroll1.Value = 128;
    EXPECT_EQ(BufR(1, 1), (200 * 127 + 0 * 128) / 255);
    FadeLast::Command2_Click();
    EXPECT_EQ(BufR(1, 1), 200);
    EXPECT_TRUE(FadeR.empty());

    FadePrevious_Click();
    FadeLast::HScroll1.Value = 255;
    FadeLast::Command1_Click();
    EXPECT_EQ(BufR(1, 1), 0);
    EXPECT_TRUE(FadeR.empty());
}

TEST_F(FadeLastTest, FadeCancelAfterANewDocumentKeepsThePlanesTogether) {
    MakeTestDocument(8, 8);
    SaveUndo();
    FadePrevious_Click();
    MakeTestDocument(20, 10);  // a new buffer while the fade panel is still open
    FadeLast::HScroll1.Value = 100;
    FadeLast::Command2_Click();
    EXPECT_EQ(BufR.ubX(), 20);
    EXPECT_EQ(BufG.ubY(), 10);
    EXPECT_EQ(BufB.ubX(), BufA.ubX());
    EXPECT_TRUE(FadeR.empty());
}
