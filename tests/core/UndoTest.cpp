// The undo ring: its budget, the index walk of undo and redo, and what each
// slot carries besides pixels.
#include "tests/core/CoreFixture.h"

using UndoTest = CoreTest;

TEST_F(UndoTest, BudgetGivesSlotsAndNeverFewerThanTwo) {
    EXPECT_EQ(UndoSlotsForBudget(14, 320, 240), 46);      // 47 slots
    EXPECT_EQ(UndoSlotsForBudget(14, 1500, 1500), 1);     // the formula's 0 keeps two slots
    EXPECT_EQ(UndoSlotsForBudget(14, 2000, 2000), 1);     // the formula's -1 too
    EXPECT_EQ(UndoSlotsForBudget(14, 1, 1), 32766);       // 16-bit indices still walk the ring
    EXPECT_EQ(UndoSlotsForBudget(0, 10, 10), 1);
    MakeTestDocument(320, 240);
    EXPECT_EQ(UndoLast, 46);
    EXPECT_EQ(UndoRingR.ubZ(), 46);
    EXPECT_EQ(UndoStateRing.size(), 47u);
    EXPECT_EQ(UndoIndex, 0);
}

TEST_F(UndoTest, UndoUndoRedoReturnsToTheFirstUndo) {
    MakeTestDocument(8, 8);
    Stamp(10); SaveUndo();
    Stamp(20); SaveUndo();
    Stamp(30);
    RepaintUndo();
    EXPECT_EQ(BufR(1, 1), 20);
    RepaintUndo();
    EXPECT_EQ(BufR(1, 1), 10);
    Redo();
    EXPECT_EQ(BufR(1, 1), 20);
    Redo();
    EXPECT_EQ(BufR(1, 1), 30);  // the picture of before the first undo was kept
    RepaintUndo();
    EXPECT_EQ(BufR(1, 1), 20);
}

TEST_F(UndoTest, NewSnapshotDoesNotCutTheRedoChain) {
    MakeTestDocument(8, 8);
    Stamp(1); SaveUndo();
    Stamp(2); SaveUndo();
    Stamp(3); SaveUndo();
    Stamp(4);
    RepaintUndo();            // shows 3
    RepaintUndo();            // shows 2
    ASSERT_EQ(BufR(0, 0), 2);
    Stamp(9); SaveUndo();     // snapshot of 9 goes below: old newer slots stay
    Stamp(10);
    RepaintUndo();
    EXPECT_EQ(BufR(0, 0), 9);
    Redo();
    EXPECT_EQ(BufR(0, 0), 10);
    Redo();                   // walks on into the slot the first undo kept: no truncation
    EXPECT_EQ(BufR(0, 0), 4);
}

TEST_F(UndoTest, UndoAcrossSwapBringsTheSwapPlanesBack) {
    MakeTestDocument(6, 6);
    Stamp(40);
    SwapR(0, 0) = 3;
    swapbuffer_Click();
    ASSERT_EQ(BufR(0, 0), 3);
    RepaintUndo();
    EXPECT_EQ(App.SwapShown, 0);
    EXPECT_EQ(BufR(0, 0), 40);
    EXPECT_EQ(SwapR(0, 0), 3);
    Redo();
    EXPECT_EQ(App.SwapShown, 255);
    EXPECT_EQ(BufR(0, 0), 3);
    EXPECT_EQ(SwapR(0, 0), 40);
}

TEST_F(UndoTest, UndoRestoresAlphaAndItsCheckMark) {
    MakeTestDocument(6, 6);
    SwapR(2, 2) = SwapG(2, 2) = SwapB(2, 2) = 0;
    SwapToAlpha_Click();      // snapshot with alpha off, then alpha on
    ASSERT_TRUE(MDIForm1::AlphaEnable.Checked);
    ASSERT_EQ(BufA(2, 2), 0);
    RepaintUndo();
    EXPECT_FALSE(MDIForm1::AlphaEnable.Checked);
    EXPECT_EQ(App.AlphaOff, 255);
    EXPECT_EQ(BufA(2, 2), 255);
    Redo();
    EXPECT_TRUE(MDIForm1::AlphaEnable.Checked);
    EXPECT_EQ(App.AlphaOff, 0);
    EXPECT_EQ(BufA(2, 2), 0);
}

TEST_F(UndoTest, RingOfTwoSlotsAlternates) {
    App.UndoMegs = 0;
    MakeTestDocument(8, 8);
    ASSERT_EQ(UndoLast, 1);
    Stamp(1); SaveUndo();
    Stamp(2); SaveUndo();
    Stamp(3); SaveUndo();
    Stamp(4);
    RepaintUndo();
    EXPECT_EQ(BufR(0, 0), 3);
    RepaintUndo();
    EXPECT_EQ(BufR(0, 0), 4);  // two slots: the walk comes round again
    RepaintUndo();
    EXPECT_EQ(BufR(0, 0), 3);
}

TEST_F(UndoTest, BlockRestoreLeavesTheLastExtraByte) {
    MakeTestDocument(5, 4);
    BufR(5, 2) = 11;  // an extra-column byte inside the copied rows
    BufR(5, 3) = 12;  // the last one of the last picture row
    SaveUndo();
    BufR(5, 2) = 21;
    BufR(5, 3) = 22;
    BufR(1, 1) = 99;
    RepaintUndo();    // first step from fresh: the present picture goes in pixel by pixel
    EXPECT_EQ(BufR(1, 1), 255);
    EXPECT_EQ(BufR(5, 2), 11);
    EXPECT_EQ(BufR(5, 3), 22);
}

TEST_F(UndoTest, SnapshotKeepsTheCleanCopyAndState) {
    MakeTestDocument(4, 4);
    Stamp(70);
    SaveUndo();
    EXPECT_EQ(UndoR(2, 2), 70);
    EXPECT_EQ(UndoB(2, 2), 72);
    EXPECT_EQ(UndoFresh, 1);
    EXPECT_EQ(UndoDirection, 0);
    EXPECT_EQ(UndoIndex, UndoLast);  // the index runs downward and wraps
    RepaintUndo();
    EXPECT_EQ(UndoDirection, 1);
    EXPECT_EQ(UndoFresh, 0);
    Redo();
    EXPECT_EQ(UndoDirection, -1);
}

// Every pixel of the picture and its extra column different, so a shifted or
// short copy shows.
static void Pattern(int seed) {
    for (int y = 0; y <= BufR.ubY(); ++y)
        for (int x = 0; x <= BufR.ubX(); ++x) {
            BufR(x, y) = static_cast<uint8_t>(x * 7 + y * 3 + seed);
            BufG(x, y) = static_cast<uint8_t>(x + y * 11 + seed);
            BufB(x, y) = static_cast<uint8_t>(x * y + seed);
            BufA(x, y) = static_cast<uint8_t>(x ^ (y + seed));
        }
}

TEST_F(UndoTest, RoundTripsRestoreEveryPixelOnWidthsInAndOutOfStepWithTheVectors) {
    // 63 + 1 = 64 bytes a row, 64 + 1 = 65; a tall plane passes the size where copies stream.
    const int sizes[][2] = {{63, 5}, {64, 7}, {1, 1}, {15, 3}, {1023, 1100}};
    for (const auto& size : sizes) {
        SCOPED_TRACE(std::to_string(size[0]) + " x " + std::to_string(size[1]));
        MakeTestDocument(size[0], size[1]);
        Pattern(1);
        Plane r, a;
        r.copyFrom(BufR);
        a.copyFrom(BufA);
        SaveUndo();
        const uint8_t lastExtra = BufR(size[0], size[1] - 1);
        Pattern(50);
        BufR(size[0], size[1] - 1) = static_cast<uint8_t>(lastExtra + 1);
        RepaintUndo();
        for (int y = 0; y < size[1]; ++y)
            for (int x = 0; x <= size[0]; ++x) {
                // The last extra-column byte of the last row is the one undo leaves alone.
                const bool kept = x == size[0] && y == size[1] - 1;
                ASSERT_EQ(BufR(x, y), kept ? static_cast<uint8_t>(lastExtra + 1) : r(x, y)) << x << "," << y;
                if (!kept) {
                    ASSERT_EQ(BufA(x, y), a(x, y)) << x << "," << y;
                }
            }
        Redo();
        for (int y = 0; y < size[1]; ++y)
            for (int x = 0; x < size[0]; ++x) ASSERT_EQ(BufG(x, y), static_cast<uint8_t>(x + y * 11 + 50));
    }
}

TEST_F(UndoTest, CleanCopyIsTheLastSnapshotThroughUndoRedoAndANewDocument) {
    MakeTestDocument(9, 4);
    EXPECT_EQ(UndoR.ubX(), 9);
    EXPECT_EQ(UndoR.ubY(), 4);
    Stamp(10);
    SaveUndo();
    Stamp(20);
    SaveUndo();
    Stamp(30);
    // Walking the ring changes the picture, never the clean copy.
    RepaintUndo();
    EXPECT_EQ(BufR(3, 3), 20);
    RepaintUndo();
    EXPECT_EQ(BufR(3, 3), 10);
    Redo();
    for (int y = 0; y < 4; ++y)
        for (int x = 0; x < 9; ++x) {
            ASSERT_EQ(UndoR(x, y), 20);
            ASSERT_EQ(UndoG(x, y), 21);
            ASSERT_EQ(UndoB(x, y), 22);
        }
    // The next snapshot moves it; a new document starts it empty at its size.
    Stamp(40);
    SaveUndo();
    EXPECT_EQ(UndoB(8, 3), 42);
    MakeTestDocument(5, 6);
    EXPECT_EQ(UndoR.ubX(), 5);
    EXPECT_EQ(UndoR.ubY(), 6);
    EXPECT_EQ(UndoR(4, 5), 0);
}

// A snapshot taken band by band while the bands change holds the picture as it
// was, every byte of the slot as SaveUndo leaves it: bands taken in steps, a
// band past the last row, and none at all (all taken at the end).
TEST_F(UndoTest, ASnapshotByBandsIsThePictureBeforeTheChange) {
    const int sizes[][2] = {{63, 5}, {1, 1}, {200, 37}};
    for (const auto& size : sizes)
        for (int band : {0, 1, 4, 100}) {
            SCOPED_TRACE(std::to_string(size[0]) + " x " + std::to_string(size[1]) + " band " + std::to_string(band));
            MakeTestDocument(size[0], size[1]);
            Pattern(1);
            Plane r, g, b, a;
            r.copyFrom(BufR), g.copyFrom(BufG), b.copyFrom(BufB), a.copyFrom(BufA);
            {
                UndoByBands undo;
                for (int top = 0; band > 0 && top < size[1]; top += band) {
                    undo.Take(top + band - 1);
                    for (int y = top; y < std::min(top + band, size[1]); ++y)
                        for (Plane* p : {&BufR, &BufG, &BufB})
                            for (int x = 0; x <= size[0]; ++x) (*p)(x, y) = static_cast<uint8_t>(255 - (*p)(x, y));
                }
            }
            for (const auto& [ring, want] : {std::pair{&UndoRingR, &r}, std::pair{&UndoRingG, &g},
                                             std::pair{&UndoRingB, &b}}) {
                const std::vector<uint8_t> slot(ring->slot(UndoIndex), ring->slot(UndoIndex) + want->count());
                ASSERT_EQ(slot, std::vector<uint8_t>(want->data(), want->data() + want->count()));
            }
            EXPECT_EQ(UndoR.data(), UndoRingR.slot(UndoIndex)) << "the slot is the clean copy";
            RepaintUndo();
            for (int y = 0; y < size[1]; ++y)
                for (int x = 0; x < size[0]; ++x) {
                    ASSERT_EQ(BufR(x, y), r(x, y)) << x << "," << y;
                    ASSERT_EQ(BufB(x, y), b(x, y)) << x << "," << y;
                    ASSERT_EQ(BufA(x, y), a(x, y)) << x << "," << y;
                }
        }
}
