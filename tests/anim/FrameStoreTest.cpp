// The frame store and the transport, against a small model of the frame list.
#include <algorithm>
#include <random>
#include <vector>

#include "core/display/Form1.h"
#include "core/frame/BufferMenu.h"
#include "core/framework/Boxes.h"
#include "core/framework/Codes.h"
#include "tests/anim/AnimFixture.h"

namespace {
using namespace MDIForm1;

// The frame list as the transport should leave it, frames as whole colours.
// The scroll bar is part of it: a new value goes to that frame.
struct Model {
    std::vector<Rgb> frames;
    int cur = 0, max = 1, value = 0;
    Rgb buf;
    int count() const { return static_cast<int>(frames.size()); }
    bool usable() const { return cur >= 0 && cur < count(); }
    void store() { if (usable()) frames[cur] = buf; }
    void get() { if (usable()) buf = frames[cur]; }
    void go(int f) {
        if (frames.empty()) return;
        store();
        cur = std::clamp(f, 0, count());
        get();
    }
    void setValue(int v) {
        v = std::clamp(v, 0, max);
        if (v == value) return;
        value = v;
        go(value);
    }
    void setMax(int m) {
        max = m;
        if (value > max) setValue(max);
    }
    void insert(int f) {
        if (frames.empty()) return;
        f = std::clamp(f, 0, count());
        frames.insert(frames.begin() + f, f < count() ? frames[f] : Rgb{});
        setMax(max + 1);
        ++cur;
        setValue(value + 1);
        get();
    }
    void remove(int f) {
        if (count() < 2 || max < 2) return;
        f = std::clamp(f, 0, count() - 1);
        frames.erase(frames.begin() + f);
        setMax(max - 1);
        if (cur > count() - 1) cur = count() - 1;
        get();
        if (value > max) setValue(max);
    }
};

void ExpectMatches(const Model& m, int step) {
    SCOPED_TRACE("step " + std::to_string(step));
    ASSERT_EQ(AnimFrameCount, m.count());
    ASSERT_EQ(AnimCurrentFrame, m.cur);
    ASSERT_EQ(AnimScroll.Max.get(), m.max);
    ASSERT_EQ(AnimScroll.Value.get(), m.value);
    for (int f = 0; f < m.count(); ++f) ASSERT_EQ(FrameColour(f), m.frames[f]) << "frame " << f;
    ASSERT_EQ(BufferColour(), m.buf);
}
}  // namespace

TEST_F(AnimTest, TransportFollowsTheModelOfTheFrameList) {
    Paint({1, 2, 3});
    MakeAnimation(4);
    Model m;
    m.frames.assign(4, Rgb{1, 2, 3});
    m.buf = {1, 2, 3};
    m.max = 4;  // Create_Anim gives the scroll bar the count, not the last index
    ExpectMatches(m, 0);
    std::mt19937 rng(7);
    for (int step = 1; step <= 600; ++step) {
        int op = static_cast<int>(rng() % 7);
        int count = AnimFrameCount;
        if (op == 0) {
            Rgb c{uint8_t(rng()), uint8_t(rng()), uint8_t(rng())};
            Paint(c);
            m.buf = c;
        } else if (op == 1) {
            int f = static_cast<int>(rng() % (count + 4)) - 2;  // beyond both ends too
            GotoFrame(f);
            m.go(f);
        } else if (op == 2) {
            int v = static_cast<int>(rng() % (m.max + 1));
            AnimScroll.Value = v;
            m.setValue(v);
        } else if (op == 3) {
            Anim_Next_Click();
            if (m.value < m.count() - 1) m.setValue(m.value + 1);
        } else if (op == 4) {
            Anim_Previous_Click();
            if (m.value > 0) m.setValue(m.value - 1);
        } else if (op == 5 && count < 12) {
            Anim_Insert_Click();
            m.insert(m.cur);
        } else if (op == 6) {
            Anim_Delete_Click();
            m.remove(m.cur);
        }
        ExpectMatches(m, step);
        if (HasFatalFailure()) return;
    }
}

TEST_F(AnimTest, FrameCopiesAreOneByteShortOfThePlane) {
    Paint({5, 6, 7});
    MakeAnimation(2);
    const size_t last = AnimR.frameBytes() - 1;
    AnimR.frame(0)[last] = 99;
    Paint({40, 41, 42});
    StoreFrame();
    EXPECT_EQ(AnimR.frame(0)[last], 99);  // column W of row H stays as it was
    EXPECT_EQ(AnimR.frame(0)[last - 1], 40);
    BufG.data()[last] = 77;
    AnimCurrentFrame = 1;
    GetFrame();
    EXPECT_EQ(BufG.data()[last], 77);
    EXPECT_EQ(BufG.data()[last - 1], 6);
}

TEST_F(AnimTest, CreateMakesCopiesAsksBeforeReplacingAndShowsTheBar) {
    Paint({9, 8, 7});
    MakeAnimation(3);
    EXPECT_EQ(AnimFrameCount, 3);
    EXPECT_EQ(AnimScroll.Max.get(), 3);
    EXPECT_TRUE(Anim_Tools.Visible.get());
    EXPECT_TRUE(Ani_Interface.Checked.get());
    for (int f = 0; f < 3; ++f) EXPECT_EQ(FrameColour(f), (Rgb{9, 8, 7}));
    // Declining keeps the old frames and closes the panel.
    MakeAnimation(5, 2);
    EXPECT_EQ(AnimFrameCount, 3);
    EXPECT_EQ(AnimScroll.Max.get(), 3);
    EXPECT_FALSE(Create_Anim::form.Visible.get());
    MakeAnimation(5, 1);
    EXPECT_EQ(AnimFrameCount, 5);
    EXPECT_EQ(AnimScroll.Max.get(), 5);
}

TEST_F(AnimTest, NonsenseFrameCountsAreRefusedAndThePanelStays) {
    host.Expect("Create_Anim", [this] {
        for (const char* text : {"0", "abc", "-4"}) {
            host.ExpectMessage("Type a number of frames of 1 or more.");
            Create_Anim::Text1.Text = text;
            Create_Anim::Command1.press();
            EXPECT_TRUE(Create_Anim::form.Visible.get());
        }
        Create_Anim::Command2.press();
    });
    Ani_Create_Click();
    EXPECT_EQ(AnimFrameCount, 0);
}

TEST_F(AnimTest, FramesTheMachineCannotHoldAreRefusedNamingBothFigures) {
    Paint({1, 1, 1});
    // 7 x 5 bytes per plane, three planes: 105 bytes a frame.
    AvailableMemory = [] { return uint64_t{1000} << 20; };
    host.Expect("Create_Anim", [] {
        Create_Anim::Text1.Text = "20000000";
        EXPECT_EQ(Create_Anim::Label2.Caption.get(), "20000000 frames of 6 by 4 pixels take 2003 MB; 1000 MB are free.");
        Create_Anim::Command1.press();  // refused: the panel stays up
        EXPECT_TRUE(Create_Anim::form.Visible.get());
        Create_Anim::Command2.press();
    });
    host.ExpectMessage("Not enough memory for this animation: 20000000 frames of 6 by 4 pixels take 2003 MB; 1000 MB are free.");
    Ani_Create_Click();
    EXPECT_EQ(AnimFrameCount, 0);
    EXPECT_TRUE(AnimR.empty());
    EXPECT_EQ(BufferColour(), (Rgb{1, 1, 1}));
    EXPECT_FALSE(Anim_Tools.Visible.get());
}

TEST_F(AnimTest, InsertRefusesWhenNoFrameFitsAndKeepsTheFrames) {
    MakeDistinctFrames(3);
    AvailableMemory = [] { return uint64_t{50}; };
    host.ExpectMessage("Not enough memory for one more frame");
    Anim_Insert_Click();
    EXPECT_EQ(AnimFrameCount, 3);
    EXPECT_EQ(FrameColour(2), (Rgb{20, 21, 22}));
}

TEST_F(AnimTest, DeletingFrameZeroOfTwoLeavesOneAndALowerMax) {
    MakeDistinctFrames(2);
    Anim_Delete_Click();
    EXPECT_EQ(AnimFrameCount, 1);
    EXPECT_EQ(AnimScroll.Max.get(), 1);
    EXPECT_EQ(FrameColour(0), (Rgb{10, 11, 12}));
    EXPECT_EQ(BufferColour(), (Rgb{10, 11, 12}));
    Anim_Delete_Click();  // the last frame stays
    EXPECT_EQ(AnimFrameCount, 1);
}

TEST_F(AnimTest, ThePositionPastTheLastFrameReadsAndWritesNothing) {
    MakeDistinctFrames(3);
    AnimScroll.Value = 3;  // the scroll bar reaches the count
    EXPECT_EQ(AnimCurrentFrame, 3);
    EXPECT_EQ(Anim_Label.Caption.get(), "3");
    EXPECT_EQ(BufferColour(), (Rgb{0, 1, 2}));  // frame 0 still shows: nothing was fetched
    Paint({200, 200, 200});
    AnimScroll.Value = 1;
    for (int f = 0; f < 3; ++f) EXPECT_EQ(FrameColour(f), (Rgb{uint8_t(10 * f), uint8_t(10 * f + 1), uint8_t(10 * f + 2)}));
}

TEST_F(AnimTest, PlayTakesTheRateStopKeepsTheFrameAndTheTimerWraps) {
    MakeDistinctFrames(3);
    Paint({50, 50, 50});  // painted on frame 0 before playing: Play stores it
    Anim_Framerate.Text = "30";
    Anim_Play_Click();
    EXPECT_EQ(FrameColour(0), (Rgb{50, 50, 50}));
    EXPECT_EQ(Anim_Timer.Interval.get(), 33);
    EXPECT_EQ(AnimInterval, 33);
    EXPECT_TRUE(Anim_Timer.TimerEnabled.get());
    std::vector<int> shown;
    for (int i = 0; i < 5; ++i) {
        Anim_Timer.fire();
        shown.push_back(AnimCurrentFrame);
    }
    EXPECT_EQ(shown, (std::vector<int>{1, 2, 0, 1, 2}));
    EXPECT_EQ(BufferColour(), (Rgb{20, 21, 22}));
    EXPECT_EQ(AnimScroll.Value.get(), 0);  // the scroll bar does not follow playback
    Anim_Stop_Click();
    EXPECT_FALSE(Anim_Timer.TimerEnabled.get());
    EXPECT_EQ(AnimCurrentFrame, 2);
    EXPECT_EQ(App.Silent, 0);
    EXPECT_EQ(App.NoTitle, 0);
}

TEST_F(AnimTest, FrameRatesAtTheirEnds) {
    MakeDistinctFrames(2);
    Anim_Framerate.Text = "0";
    Anim_Play_Click();
    EXPECT_EQ(Anim_Timer.Interval.get(), 0);
    Anim_Timer.fire();
    EXPECT_EQ(AnimCurrentFrame, 0);  // no frame advances
    Anim_Framerate.Text = "2000";  // the change: Int(1000 / 2000) is 0, raised to 1
    EXPECT_EQ(Anim_Timer.Interval.get(), 1);
    Anim_Framerate.Text = "7";
    EXPECT_EQ(Anim_Timer.Interval.get(), 142);
    Anim_Framerate.Text = "";  // an empty box changes nothing
    EXPECT_EQ(Anim_Timer.Interval.get(), 142);
    Anim_Framerate.Text = "5000";
    Anim_Play_Click();  // Play clamps to 1000 first
    EXPECT_EQ(Anim_Timer.Interval.get(), 1);
    Anim_Framerate.Text = "-3";
    Anim_Play_Click();
    EXPECT_EQ(Anim_Timer.Interval.get(), 0);
}

TEST_F(AnimTest, ArrowKeysStepSpaceStopsShiftArrowsLeaveTheFrames) {
    MakeDistinctFrames(3);
    int16_t right = VirtualKey::Right, left = VirtualKey::Left, space = ' ';
    Form1::Form_KeyDown(right, ShiftState::None);
    Form1::Form_KeyDown(right, ShiftState::None);
    Form1::Form_KeyDown(right, ShiftState::None);  // stops at the last frame
    EXPECT_EQ(AnimCurrentFrame, 2);
    EXPECT_EQ(BufferColour(), (Rgb{20, 21, 22}));
    Form1::Form_KeyDown(left, ShiftState::Shift);
    EXPECT_EQ(AnimCurrentFrame, 2);
    Form1::Form_KeyDown(left, ShiftState::None);
    EXPECT_EQ(AnimCurrentFrame, 1);
    Anim_Play_Click();
    Form1::Form_KeyPress(space);
    EXPECT_FALSE(Anim_Timer.TimerEnabled.get());
}

TEST_F(AnimTest, SizeCommandsRefuseOrAskWhileFramesExist) {
    MakeDistinctFrames(2);
    host.ExpectMessage("Not available with animations");
    BufferCrop_Click();
    host.Answer("This will free the current animation.", 2);
    New_Click();
    EXPECT_EQ(AnimFrameCount, 2);
    host.Answer("This will free the current animation.", 2);
    BufferResample_Click();
    EXPECT_EQ(AnimFrameCount, 2);
    host.Answer("This will free the current animation.", 1);
    host.AnswerSize(8, 8);
    New_Click();
    EXPECT_EQ(AnimFrameCount, 0);
    EXPECT_EQ(AnimScroll.Max.get(), 1);
    EXPECT_EQ(BufferWidth(), 8);
}

TEST_F(AnimTest, ANewDocumentFreesTheFramesWithoutAsking) {
    MakeDistinctFrames(3);
    AnimScroll.Value = 2;
    SetBufferSize(10, 10);
    ASSERT_TRUE(CreateNewDocument(false));
    EXPECT_EQ(AnimFrameCount, 0);
    EXPECT_TRUE(AnimR.empty());
    EXPECT_EQ(AnimScroll.Value.get(), 0);
    EXPECT_EQ(AnimScroll.Max.get(), 1);
}

TEST_F(AnimTest, FreeAsksAndInterfaceToggles) {
    MakeDistinctFrames(2);
    host.Answer("Are you sure you want to free this animation?", 2);
    Ani_Free_Click();
    EXPECT_EQ(AnimFrameCount, 2);
    host.Answer("Are you sure you want to free this animation?", 1);
    Ani_Free_Click();
    EXPECT_EQ(AnimFrameCount, 0);
    Ani_Interface_Click();
    EXPECT_FALSE(Anim_Tools.Visible.get());
    EXPECT_FALSE(Ani_Interface.Checked.get());
    Ani_Interface_Click();
    EXPECT_TRUE(Anim_Tools.Visible.get());
    EXPECT_TRUE(Ani_Interface.Checked.get());
}

TEST_F(AnimTest, ClearFramesFillsEveryFrameWithTheSecondaryColour) {
    MakeDistinctFrames(3);
    AnimScroll.Value = 1;
    host.Answer("Clear all frames of animation?", 2);
    Menus::Anim_ClearFrames_Click();
    EXPECT_EQ(FrameColour(2), (Rgb{20, 21, 22}));
    host.Answer("Clear all frames of animation?", 1);
    Menus::Anim_ClearFrames_Click();
    for (int f = 0; f < 3; ++f) EXPECT_EQ(FrameColour(f), (Rgb{0x10, 0x20, 0x30}));
    EXPECT_EQ(AnimCurrentFrame, 1);
    EXPECT_EQ(Status::Frame1.Caption.get(), "Processing...");
}

TEST_F(AnimTest, PaintingOnAFrameAndMovingOnStoresIt) {
    MakeDistinctFrames(3);
    AnimScroll.Value = 1;
    Paint({99, 98, 97});
    Anim_Next_Click();
    Anim_Previous_Click();
    EXPECT_EQ(BufferColour(), (Rgb{99, 98, 97}));
    EXPECT_EQ(FrameColour(1), (Rgb{99, 98, 97}));
    EXPECT_EQ(FrameColour(2), (Rgb{20, 21, 22}));
}

TEST_F(AnimTest, ARightClickOnTheClearButtonOpensItsPopup) {
    ASSERT_TRUE(Form2::Command1.MouseDown);
    Form2::Command1.MouseDown(MouseButton::Left, 0, 1, 1);
    EXPECT_TRUE(host.popups.empty());
    Form2::Command1.MouseDown(MouseButton::Right, 0, 1, 1);
    ASSERT_EQ(host.popups.size(), 1u);
    EXPECT_EQ(host.popups[0], "Clear_menu");
    EXPECT_TRUE(Menus::Anim_ClearFrames.Click);
}
