// Animation > "Apply to frames...": the kept filter run again over a range of
// frames, with the values its panel was kept with.
#include <algorithm>
#include <random>
#include <vector>

#include "anim/ApplyToFrames.h"
#include "filter/AdjustPanels.h"
#include "filter/Blurs.h"
#include "filter/FilterMenus.h"
#include "filter/KeptFilter.h"
#include "tests/anim/AnimFixture.h"

namespace {
constexpr Rgb FrameOf(int f) {
    const auto v = static_cast<uint8_t>(10 * f);
    return {v, static_cast<uint8_t>(v + 1), static_cast<uint8_t>(v + 2)};
}
Rgb Negative(Rgb c) { return {uint8_t(255 - c.r), uint8_t(255 - c.g), uint8_t(255 - c.b)}; }

class ApplyToFramesTest : public AnimTest {
protected:
    void SetUp() override {
        AnimTest::SetUp();
        ForgetKeptFilter();
        MakeDistinctFrames(4);
    }
    // Animation > "Apply to frames..." over first..last, answered with Ok.
    void ApplyTo(int first, int last) {
        host.Expect("ApplyFrames", [first, last] {
            ApplyFrames::Text1.Text = std::to_string(first);
            ApplyFrames::Text2.Text = std::to_string(last);
            ApplyFrames::Command1.press();
        });
        MDIForm1::Ani_ApplyFrames.press();
    }
    // Colour balance with the red slider at `percent`, kept with Ok.
    void KeepRedBalance(int percent) {
        MDIForm1::ColorBalance2.press();
        AdjustColor::HScroll6.Value = percent;
        AdjustColor::Command1.press();
    }
};

// Every frame's bytes, in frame order.
std::vector<std::vector<uint8_t>> Frames() {
    std::vector<std::vector<uint8_t>> all;
    for (int f = 0; f < AnimFrameCount; ++f)
        for (FrameArray* a : {&AnimR, &AnimG, &AnimB}) all.emplace_back(a->frame(f), a->frame(f) + a->frameBytes());
    return all;
}

void SetFrames(const std::vector<std::vector<uint8_t>>& all) {
    size_t i = 0;
    for (int f = 0; f < AnimFrameCount; ++f)
        for (FrameArray* a : {&AnimR, &AnimG, &AnimB}) std::copy(all[i].begin(), all[i].end(), a->frame(f)), ++i;
}

TEST_F(ApplyToFramesTest, ThreeFramesEqualTheFilterKeptThreeTimesByHand) {
    std::mt19937 noise(7);
    for (int f = 0; f < AnimFrameCount; ++f)
        for (FrameArray* a : {&AnimR, &AnimG, &AnimB})
            for (size_t i = 0; i < a->frameBytes(); ++i) a->frame(f)[i] = static_cast<uint8_t>(noise());
    GetFrame();
    MDIForm1::FastGaus.press();  // kept on frame 0 at a radius of 6
    FastGaussian::HScroll1.Value = 6;
    FastGaussian::Command1.press();
    const auto start = Frames();

    for (int f = 1; f <= 3; ++f) {
        MDIForm1::AnimScroll.Value = f;
        MDIForm1::FastGaus.press();  // the panel comes up with the radius it was kept with
        FastGaussian::Command1.press();
    }
    MDIForm1::AnimScroll.Value = 0;
    const auto byHand = Frames();
    ASSERT_NE(byHand, start);

    SetFrames(start);
    ApplyTo(1, 3);
    EXPECT_TRUE(Frames() == byHand);
}

TEST_F(ApplyToFramesTest, ADirectFilterRunsOnTheChosenFramesEachAsByHand) {
    MDIForm1::ColorNegative.press();  // on frame 0, in the buffer
    EXPECT_EQ(KeptFilterCaption(), "Color > Negative");
    ApplyTo(1, 2);
    EXPECT_EQ(FramePictureColour(0), Negative(FrameOf(0)));  // stored when the run moved on
    EXPECT_EQ(FramePictureColour(1), Negative(FrameOf(1)));
    EXPECT_EQ(FramePictureColour(2), Negative(FrameOf(2)));
    EXPECT_EQ(FramePictureColour(3), FrameOf(3));
    EXPECT_EQ(AnimCurrentFrame, 0);
    EXPECT_EQ(MDIForm1::AnimScroll.Value.get(), 0);
    EXPECT_EQ((Rgb{BufR(2, 2), BufG(2, 2), BufB(2, 2)}), Negative(FrameOf(0)));
}

TEST_F(ApplyToFramesTest, APanelFilterRepeatsItsKeptValuesWithThePanelUnseen) {
    KeepRedBalance(50);
    EXPECT_EQ(KeptFilterCaption(), "Adjust > Color");
    host.shown.clear();
    ApplyTo(2, 3);
    for (int f : {2, 3}) {
        const Rgb was = FrameOf(f);
        EXPECT_EQ(FramePictureColour(f), (Rgb{uint8_t(was.r / 2), was.g, was.b})) << "frame " << f;
    }
    EXPECT_EQ(FramePictureColour(1), FrameOf(1));
    EXPECT_EQ(host.shown, std::vector<std::string>{"ApplyFrames"});
    EXPECT_FALSE(AdjustColor::form.Visible.get());
}

TEST_F(ApplyToFramesTest, CancelKeepsThePreviousFilterAndNothingKeptIsSaid) {
    host.ExpectMessage("No filter has been kept yet");
    MDIForm1::Ani_ApplyFrames.press();
    MDIForm1::ColorNegative.press();
    MDIForm1::ColorBalance2.press();
    AdjustColor::HScroll6.Value = 0;
    AdjustColor::Command2.press();  // Cancel
    EXPECT_EQ(KeptFilterCaption(), "Color > Negative");
    ApplyTo(3, 3);
    EXPECT_EQ(FramePictureColour(3), Negative(FrameOf(3)));
}

TEST_F(ApplyToFramesTest, StopEndsBetweenFramesAndABadRangeChangesNothing) {
    MDIForm1::ColorNegative.press();
    host.Expect("ApplyFrames", [] {
        ApplyFrames::Text1.Text = "2";
        ApplyFrames::Text2.Text = "1";
        ApplyFrames::Command1.press();  // refused: the panel stays for other numbers
        ApplyFrames::Text1.Text = "4";
        ApplyFrames::Text2.Text = "4";
        ApplyFrames::Command1.press();  // refused: there is no frame 4
        ApplyFrames::Command2.press();
    });
    host.ExpectMessage("from 0 to 3");
    host.ExpectMessage("from 0 to 3");
    MDIForm1::Ani_ApplyFrames.press();
    for (int f : {1, 2, 3}) EXPECT_EQ(FramePictureColour(f), FrameOf(f));

    host.onEvents = [] { ApplyFrames::Command3.press(); };  // Stop, after the first frame
    host.Expect("ApplyFrames", [] {
        ApplyFrames::Text1.Text = "1";
        ApplyFrames::Text2.Text = "3";
        ApplyFrames::Command1.press();
        EXPECT_EQ(ApplyFrames::Label4.Caption.get(), "Stopped.");
        ApplyFrames::Command2.press();
    });
    MDIForm1::Ani_ApplyFrames.press();
    host.onEvents = nullptr;
    EXPECT_EQ(FramePictureColour(1), Negative(FrameOf(1)));
    EXPECT_EQ(FramePictureColour(2), FrameOf(2));
    EXPECT_EQ(FramePictureColour(3), FrameOf(3));
}
}  // namespace
