// The control models: events fire when a property really changes, as a user's
// change would fire them.
#include <gtest/gtest.h>

#include "core/framework/controls.h"

namespace {
Form TestForm("ControlsTestForm", "Test");
int changes = 0, clicks = 0;
Slider S(TestForm, "S", 0, 10, 5, [] { ++changes; });
OptionButton A(TestForm, "A", "a", 1, true, [] { ++clicks; });
OptionButton B(TestForm, "B", "b", 1, false, [] { ++clicks; });
OptionButton C(TestForm, "C", "c", 2, true);
ListBox L(TestForm, "L", [] { ++clicks; });
}  // namespace

TEST(Controls, SliderFiresOnRealChangesAndClamps) {
    S.Value.setQuietly(5);  // as declared, whatever an earlier run left
    changes = 0;
    S.Value = 5;
    EXPECT_EQ(changes, 0);
    S.Value = 7;
    EXPECT_EQ(changes, 1);
    S.Value = 50;
    EXPECT_EQ(S.Value.get(), 10);
    EXPECT_EQ(changes, 2);
    S.Max = 8;
    EXPECT_EQ(S.Value.get(), 8);
    S.Max = 10;
    S.scrollTo(-4);
    EXPECT_EQ(S.Value.get(), 0);
}

TEST(Controls, OptionButtonsExcludeWithinTheirGroup) {
    clicks = 0;
    B.Value = true;
    EXPECT_FALSE(A.Value);
    EXPECT_TRUE(C.Value);
    EXPECT_EQ(clicks, 1);
    A.Value = true;
    EXPECT_FALSE(B.Value);
}

TEST(Controls, ListIndexFiresClickAndRejectsOutOfRange) {
    clicks = 0;
    L.Clear();
    L.AddItem("one");
    L.AddItem("two");
    L.ListIndex = 1;
    EXPECT_EQ(L.Text(), "two");
    EXPECT_EQ(clicks, 1);
    L.ListIndex = 5;
    EXPECT_EQ(L.ListIndex.get(), -1);
    EXPECT_EQ(L.Text(), "");
    EXPECT_EQ(TestForm.find("L"), &L);
    EXPECT_EQ(FindForm("ControlsTestForm"), &TestForm);
}
