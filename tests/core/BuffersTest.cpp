// The document's planes, the size state and the whole-buffer commands.
#include <filesystem>
#include <fstream>

#include "core/framework/Boxes.h"
#include "core/document/CanvasSize.h"
#include "core/display/Form1.h"
#include "core/frame/Nav.h"
#include "core/frame/FatBits.h"
#include "core/frame/MemoryOptions.h"
#include "core/frame/Form3.h"
#include "core/frame/KeyboardHelp.h"
#include "core/frame/WindowMenu.h"
#include "tests/core/CoreFixture.h"

using BuffersTest = CoreTest;

TEST_F(BuffersTest, NewDocumentFillsThePictureOnly) {
    Form2::Shape1.FillColor = vb::RGB(10, 20, 30);
    MakeTestDocument(320, 240);
    for (Plane* p : {&BufR, &BufG, &BufB, &BufA, &SwapR, &SwapG, &SwapB, &UndoR, &MarqueePlane}) {
        EXPECT_EQ(p->ubX(), 320);
        EXPECT_EQ(p->ubY(), 240);
        EXPECT_EQ(p->stride(), 321u);
    }
    EXPECT_EQ(BufR(0, 0), 10);
    EXPECT_EQ(BufG(319, 239), 20);
    EXPECT_EQ(BufB(100, 100), 30);
    EXPECT_EQ(SwapR(319, 0), 10);
    EXPECT_EQ(BufA(5, 5), 255);
    // the extra column and row are never part of the picture
    EXPECT_EQ(BufR(320, 10), 0);
    EXPECT_EQ(BufA(320, 10), 0);
    EXPECT_EQ(BufG(10, 240), 0);
    EXPECT_EQ(UndoR(10, 10), 0);  // empty until the first snapshot
}

TEST_F(BuffersTest, UnusableSizeKeepsTheOldDocumentAndItsText) {
    MakeTestDocument(64, 48);
    Stamp(9);
    CanvasSize::Text1.Text = "abc";
    EXPECT_EQ(BufferWidth(), 0);
    host.ExpectMessage("cannot be made");
    EXPECT_FALSE(CreateNewDocument(false));
    EXPECT_EQ(CanvasSize::Text1.Text.get(), "64");
    EXPECT_EQ(BufR.ubX(), 64);
    EXPECT_EQ(BufR(3, 3), 9);

    SetBufferSize(40000, 10);
    host.ExpectMessage("cannot be made");
    EXPECT_FALSE(CreateNewDocument(false));
    EXPECT_EQ(BufferWidth(), 64);
    EXPECT_EQ(BufferHeight(), 48);
}

TEST_F(BuffersTest, AskingFirstAndAnsweringNoChangesNothing) {
    MakeTestDocument(16, 16);
    Stamp(4);
    SetBufferSize(32, 32);
    host.Answer("This will replace the existing buffer.", 2);
    EXPECT_FALSE(CreateNewDocument(true));
    EXPECT_EQ(BufR.ubX(), 16);
    EXPECT_EQ(BufR(0, 0), 4);
}

TEST_F(BuffersTest, SwapExchangesColoursButNotAlpha) {
    MakeTestDocument(8, 4);
    Stamp(50);
    SwapR(1, 1) = 7;
    BufA(2, 2) = 99;
    swapbuffer_Click();
    EXPECT_EQ(App.SwapShown, 255);
    EXPECT_EQ(BufR(1, 1), 7);
    EXPECT_EQ(SwapR(1, 1), 50);
    EXPECT_EQ(BufA(2, 2), 99);
    EXPECT_NE(MDIForm1::ComposeTitle().find("(Swap)  "), std::string::npos);
    SwapBuffers();
    EXPECT_EQ(App.SwapShown, 0);
    EXPECT_EQ(BufR(1, 1), 50);
}

TEST_F(BuffersTest, CopyToSwapLeavesUndoAndDisplayAlone) {
    MakeTestDocument(8, 4);
    Stamp(33);
    int16_t index = UndoIndex;
    int changes = host.imageChanges;
    CopyToSwap_Click();
    EXPECT_EQ(SwapG(7, 3), 34);
    EXPECT_EQ(UndoIndex, index);
    EXPECT_EQ(host.imageChanges, changes);
}

TEST_F(BuffersTest, AlphaExchangesWithTheSwapBuffer) {
    MakeTestDocument(4, 2);
    SwapR(0, 0) = 1; SwapG(0, 0) = 1; SwapB(0, 0) = 0;   // 2/3 -> 1
    SwapR(1, 0) = 2; SwapG(1, 0) = 2; SwapB(1, 0) = 1;   // 5/3 -> 2
    SwapR(2, 0) = 255; SwapG(2, 0) = 255; SwapB(2, 0) = 254;
    SwapToAlpha_Click();
    EXPECT_EQ(BufA(0, 0), 1);
    EXPECT_EQ(BufA(1, 0), 2);
    EXPECT_EQ(BufA(2, 0), 255);
    EXPECT_EQ(App.AlphaOff, 0);
    EXPECT_TRUE(MDIForm1::AlphaEnable.Checked);

    BufA(3, 1) = 77;
    AlhpaToSwap_Click();
    EXPECT_EQ(SwapR(3, 1), 77);
    EXPECT_EQ(SwapB(3, 1), 77);
    EXPECT_EQ(SwapG(0, 0), 1);
}

TEST_F(BuffersTest, AlphaCommandsSetMaskAndCheckMark) {
    MakeTestDocument(6, 6);
    InvertAlpha_Click();
    EXPECT_EQ(BufA(3, 3), 0);
    SelectAll_Click();
    EXPECT_EQ(BufA(3, 3), 255);
    EXPECT_EQ(App.AlphaOff, 0);
    EXPECT_TRUE(Form1::Timer1.TimerEnabled);
    AlphaEnable_Click();
    EXPECT_EQ(App.AlphaOff, 255);
    EXPECT_FALSE(MDIForm1::AlphaEnable.Checked);
    EXPECT_FALSE(Form1::Timer1.TimerEnabled);
    BufA(1, 1) = 0;
    MarqueePlane(2, 2) = 9;
    ClearAlpha_Click();
    EXPECT_EQ(BufA(1, 1), 255);
    EXPECT_EQ(MarqueePlane(2, 2), 0);
}

TEST_F(BuffersTest, ClearUsesTheSecondaryColourAndIgnoresAlpha) {
    MakeTestDocument(5, 5);
    Stamp(1);
    BufA(2, 2) = 0;
    App.AlphaOff = 0;
    SwapR(0, 0) = 44;
    Form2::Shape1.FillColor = vb::RGB(200, 100, 50);
    Form1::Form_KeyPress(*std::make_unique<int16_t>('K'));
    EXPECT_EQ(BufR(2, 2), 200);
    EXPECT_EQ(BufB(4, 4), 50);
    EXPECT_EQ(SwapR(0, 0), 44);
    EXPECT_EQ(BufA(2, 2), 0);
    RepaintUndo();
    EXPECT_EQ(BufR(2, 2), 1);
}

TEST_F(BuffersTest, NewWithCancelClearsAtTheOldSize) {
    MakeTestDocument(20, 10);
    Stamp(5);
    host.Answer("The current buffer will be lost.  Continue?", 1);
    host.Expect("CanvasSize", [] {
        CanvasSize::Text1.Text = "999";
        CanvasSize::Command2.press();
    });
    New_Click();
    EXPECT_EQ(BufferWidth(), 20);
    EXPECT_EQ(BufR.ubX(), 20);
    EXPECT_EQ(BufR(3, 3), 255);
    EXPECT_EQ(CanvasSize::SizeCancelled, 255);

    host.Answer("Continue?", 2);
    Stamp(6);
    New_Click();
    EXPECT_EQ(BufR(3, 3), 6);
}

TEST_F(BuffersTest, SizeDialogPresetsAndAspect) {
    std::string path = (std::filesystem::temp_directory_path() / "kw_res_test.txt").string();
    {
        std::ofstream f(path, std::ios::binary);
        f << "\"VGA\",640,480\r\n\"Wide, quoted\", 1280 , 720\r\nBare,10,20\n\"Broken\",70000,5\n\"Never\",1,1\n";
    }
    CanvasSize::ReadPresets(path);
    ASSERT_EQ(CanvasSize::List1.ListCount(), 3);  // reading stops at the value no 16-bit field holds
    EXPECT_EQ(CanvasSize::List1.items[1], "Wide, quoted");
    CanvasSize::List1.ListIndex = 1;
    EXPECT_EQ(CanvasSize::Text1.Text.get(), "1280");
    EXPECT_EQ(CanvasSize::Text2.Text.get(), "720");
    std::filesystem::remove(path);
    CanvasSize::ReadPresets(path + ".missing");
    EXPECT_EQ(CanvasSize::List1.ListCount(), 0);

    // The aspect constraint follows the size the dialog opened with.
    CanvasSize::SavedWidth = 400;
    CanvasSize::SavedHeight = 300;
    CanvasSize::Check1.Enabled = true;
    CanvasSize::Check1.Value = 1;
    CanvasSize::Text1.Text = "200";
    CanvasSize::Text1_KeyUp();
    EXPECT_EQ(CanvasSize::Text2.Text.get(), "150");
    CanvasSize::Text2.Text = "100";
    CanvasSize::Text2_KeyUp();
    EXPECT_EQ(CanvasSize::Text1.Text.get(), "133");  // Int floors
    CanvasSize::Text1.Text = "abc";
    CanvasSize::Text1_KeyUp();                       // width 0 is taken as 0.0001
    EXPECT_EQ(CanvasSize::Text2.Text.get(), "0");
    CanvasSize::Check1.Enabled = false;
    CanvasSize::Text1.Text = "50";
    CanvasSize::Text1_KeyUp();
    EXPECT_EQ(CanvasSize::Text2.Text.get(), "0");
}

TEST_F(BuffersTest, CropKeepsTheSelectedPartOfBothPages) {
    MakeTestDocument(10, 8);
    for (int y = 0; y < 8; ++y)
        for (int x = 0; x < 10; ++x) {
            BufR(x, y) = static_cast<uint8_t>(x * 10 + y);
            SwapG(x, y) = static_cast<uint8_t>(100 + x);
            BufA(x, y) = (x >= 2 && x <= 5 && y >= 3 && y <= 4) ? 255 : 0;
        }
    BufferCrop_Click();
    EXPECT_EQ(BufferWidth(), 4);
    EXPECT_EQ(BufferHeight(), 2);
    EXPECT_EQ(BufR(0, 0), 23);
    EXPECT_EQ(BufR(3, 1), 54);
    EXPECT_EQ(SwapG(3, 0), 105);
    EXPECT_EQ(BufA(0, 0), 255);

    FillPicture(BufA, 0);
    host.ExpectMessage("Nothing is selected");
    BufferCrop_Click();
    EXPECT_EQ(BufferWidth(), 4);
}

TEST_F(BuffersTest, ResampleHonoursCancelAndEachMethod) {
    MakeTestDocument(4, 2);
    for (int x = 0; x < 4; ++x) BufR(x, 0) = BufR(x, 1) = static_cast<uint8_t>(x * 40);  // 0 40 80 120
    host.Expect("CanvasSize", [] {
        CanvasSize::Text1.Text = "8";
        CanvasSize::Command2.press();
    });
    BufferResample_Click();
    EXPECT_EQ(BufferWidth(), 4);

    host.Expect("CanvasSize", [] {
        EXPECT_TRUE(CanvasSize::List2.Enabled);
        CanvasSize::Text1.Text = "2";
        CanvasSize::Text2.Text = "1";
        CanvasSize::List2.ListIndex = 2;  // "Bi-linear+" averages the area when shrinking
        CanvasSize::Command1.press();
    });
    BufferResample_Click();
    ASSERT_EQ(BufferWidth(), 2);
    EXPECT_EQ(BufR(0, 0), 20);
    EXPECT_EQ(BufR(1, 0), 100);
    EXPECT_FALSE(CanvasSize::List2.Enabled);

    host.Expect("CanvasSize", [] {
        CanvasSize::Text1.Text = "4";
        CanvasSize::Text2.Text = "1";
        CanvasSize::List2.ListIndex = 0;  // nearest neighbour repeats pixels
        CanvasSize::Command1.press();
    });
    BufferResample_Click();
    EXPECT_EQ(BufR(0, 0), 20);
    EXPECT_EQ(BufR(1, 0), 20);
    EXPECT_EQ(BufR(2, 0), 100);
}

TEST_F(BuffersTest, BufferInfoSaysSizeAndMemory) {
    MakeTestDocument(30, 20);
    host.ExpectMessage("Buffer width = 30\nBuffer Height = 20");
    ImageInfo_Click();
    EXPECT_NE(host.messages.back().find(" memory = 1800 Bytes"), std::string::npos);
}

TEST_F(BuffersTest, SizeTextAheadOfThePlanesStaysInsideThem) {
    // A plug-in or the open size dialog may write a larger size before any new
    // planes exist; the whole-buffer commands must keep to the planes they have.
    MakeTestDocument(16, 12);
    Stamp(7);
    SetBufferSize(400, 300);
    SwapToAlpha_Click();
    AlhpaToSwap_Click();
    int l, t, r, b;
    EXPECT_TRUE(FindSelection(l, t, r, b));
    EXPECT_EQ(r, 15);
    EXPECT_EQ(b, 11);
    InvertAlpha_Click();
    EXPECT_EQ(BufA(15, 11), 0);
    EXPECT_EQ(BufR.ubX(), 16);

    // And with no planes at all, before the first document.
    for (Plane* p : {&BufR, &BufG, &BufB, &BufA, &SwapR, &SwapG, &SwapB, &MarqueePlane}) p->free();
    SwapToAlpha_Click();
    AlhpaToSwap_Click();
    InvertAlpha_Click();
    EXPECT_FALSE(FindSelection(l, t, r, b));
}

TEST_F(BuffersTest, SizeBeyondTheMemoryIsRefusedBeforeAnythingIsTouched) {
    MakeTestDocument(64, 48);
    Stamp(8);
    auto real = AvailableMemory;
    AvailableMemory = [] { return uint64_t{2000000}; };
    SetBufferSize(2000, 2000);
    host.ExpectMessage("Not enough memory for a buffer of 2000 by 2000 pixels. The current buffer is kept.");
    EXPECT_FALSE(CreateNewDocument(false));
    EXPECT_EQ(BufferWidth(), 64);
    EXPECT_EQ(BufR(1, 1), 8);

    // Short of memory for the whole budget, the ring keeps its two slots.
    SetBufferSize(100, 100);
    ASSERT_TRUE(CreateNewDocument(false));
    EXPECT_EQ(UndoLast, 1);

    // With no document yet, a size that cannot fit gives way to the default one.
    for (Plane* p : {&BufR, &BufG, &BufB, &BufA}) p->free();
    SetBufferSize(5000, 5000);
    host.ExpectMessage("Not enough memory for a buffer of 5000 by 5000 pixels.");
    EXPECT_TRUE(CreateNewDocument(false));
    EXPECT_EQ(BufferWidth(), 320);
    EXPECT_EQ(BufR.ubX(), 320);
    AvailableMemory = real;
}
