// The installed tables: every menu entry the program shows has one command, every
// key reaches its row and only it, the tools' buttons are the tool group's, and
// the installer refuses tables that would bind a slot twice.
#include <gtest/gtest.h>

#include <map>
#include <set>
#include <tuple>

#include "app/KeyTable.h"
#include "core/display/Form1.h"

#include "core/frame/Form2.h"
#include "core/frame/MDIForm1.h"
#include "core/framework/Codes.h"
#include "core/framework/Commands.h"

namespace {
std::vector<MenuEntry*> Leaves(Form& f) {
    std::vector<MenuEntry*> leaves;
    for (Control* c : f.controls)
        if (c->Kind == ControlKind::MenuEntry && static_cast<MenuEntry*>(c)->children.empty())
            leaves.push_back(static_cast<MenuEntry*>(c));
    return leaves;
}

TEST(Tables, EveryMenuEntryHasExactlyOneCommandRow) {
    std::map<const MenuEntry*, int> rowsOf;
    for (const MenuRow& r : Commands().rows().menus) ++rowsOf[r.entry];
    int leaves = 0;
    for (Form* f : {&MDIForm1::form, &Menus::form})
        for (MenuEntry* e : Leaves(*f)) {
            ++leaves;
            EXPECT_EQ(rowsOf[e], 1) << f->Name << "." << e->Name;
            EXPECT_TRUE(e->Click) << e->Name << " would be hidden from the menu bar";
        }
    EXPECT_EQ(static_cast<size_t>(leaves), Commands().rows().menus.size()) << "a row for an entry outside the tree";
    EXPECT_GE(leaves, 50);
}

// The installed keys, each with a command that counts, in a table of their own:
// a key reaches its own row and no other.
TEST(Tables, EveryKeyRunsItsOwnRowOnly) {
    const auto& installed = Commands().rows().keys;
    ASSERT_GE(installed.size(), 40u);
    std::vector<int> runs(installed.size(), 0);
    Rows counting;
    for (size_t i = 0; i < installed.size(); ++i) {
        KeyRow r = installed[i];
        r.command = [&runs, i] { ++runs[i]; };
        counting.keys.push_back(r);
    }
    CommandTable table;
    table.install(counting);
    for (size_t i = 0; i < installed.size(); ++i) {
        std::fill(runs.begin(), runs.end(), 0);
        const KeyRow& r = installed[i];
        if (r.on == KeyEvent::Press) {
            table.keyPress(r.key);
        } else if (r.on == KeyEvent::Down) {
            table.keyDown(r.key, r.shift);
            table.keyUp(r.key, r.shift);  // going up is another event: nothing
            table.keyDown(r.key, static_cast<int16_t>(r.shift ^ ShiftState::Shift));
        } else {
            table.keyUp(r.key, r.shift);
            table.keyUp(r.key, static_cast<int16_t>(r.shift ^ ShiftState::Ctrl));  // another shift state: nothing
        }
        for (size_t j = 0; j < runs.size(); ++j) EXPECT_EQ(runs[j], i == j ? 1 : 0) << "key " << r.key << " row " << j;
    }
    // A press matches the character whatever the shift; ctrl z and Esc are keys of their own.
    std::set<std::pair<int, int>> presses;
    for (const KeyRow& r : installed)
        if (r.on == KeyEvent::Press) presses.insert({r.key, 0});
    for (int16_t k : {KeyChar::CtrlZ, KeyChar::CtrlA, KeyChar::Escape, int16_t('d'), int16_t(','), int16_t('@')})
        EXPECT_TRUE(presses.count({k, 0})) << k;
}

// No folder binds a key of its own: every installed key is a row of the key
// table, every line of the table is in the reference, and the keyboard's
// commands that exist are all there.
TEST(Tables, EveryKeyStandsInTheKeyTableAndItsReference) {
    using Key = std::tuple<int, int, int>;
    auto keyOf = [](const KeyRow& r) { return Key{int(r.on), r.key, r.on == KeyEvent::Press ? 0 : r.shift}; };
    std::set<Key> table;
    for (const KeyRow& r : KeyRows().keys) table.insert(keyOf(r));
    const auto& installed = Commands().rows().keys;
    EXPECT_EQ(installed.size(), table.size());
    for (const KeyRow& r : installed) EXPECT_TRUE(table.count(keyOf(r))) << "key " << r.key << " outside the table";
    const std::string reference = KeyReference();
    for (const KeyLine& line : KeyTable())
        EXPECT_NE(reference.find("  " + std::string(line.keys) + " "), std::string::npos) << line.keys;
    for (char c : std::string("uUapoighlb.qweZ][JjS\\|WBvdxyz,rRfcC=+_-K1234567890!@ ?"))
        EXPECT_TRUE(table.count({int(KeyEvent::Press), c, 0})) << c;
    for (int16_t f : {VirtualKey::F1, VirtualKey::F2, VirtualKey::F5, VirtualKey::F6, VirtualKey::F7, VirtualKey::F8})
        EXPECT_TRUE(table.count({int(KeyEvent::Release), f, ShiftState::None})) << f;

    int16_t help = '?';
    Form1::Form_KeyPress(help);
    EXPECT_EQ(Form1::form.MousePointer.get(), Pointer::Help);
    Form1::Form_KeyPress(help);
    EXPECT_EQ(Form1::form.MousePointer.get(), Pointer::Default);
}

TEST(Tables, ToolButtonsAreTheToolGroupsAndTheToolDownIsTheButtonDown) {
    // Hiding the buttons without a row is the installer's, checked on a scratch form below.
    const auto& tools = Commands().rows().tools;
    ASSERT_FALSE(tools.empty());
    for (const ToolRow& t : tools) {
        EXPECT_EQ(&t.button->form, &Form2::form);
        EXPECT_EQ(t.button->OptionGroup, Form2::Option1.OptionGroup);
        EXPECT_EQ(t.button->ToolTipText, t.toolTip);
        EXPECT_TRUE(t.button->Visible) << t.button->Name;
        t.button->Value = true;
        EXPECT_EQ(Commands().toolDown(), &t);
    }
    Form2::Option1.Value = true;
}

// A form of its own, so that the refused rows touch nothing of the program.
Form Scratch("Scratch", "Scratch");
MenuEntry Top(Scratch, "Top", "Top", nullptr);
MenuEntry Leaf(Scratch, "Leaf", "Leaf", &Top);
Slider Strength(Scratch, "Strength", 0, 10, 0);
PictureBox Swatch(Scratch, "Swatch", 4, 4);
OptionButton ToolA(Scratch, "ToolA", "A", 7, true);
OptionButton ToolB(Scratch, "ToolB", "B", 7);
OptionButton Other(Scratch, "Other", "C", 8);

TEST(Tables, TheInstallerRefusesRowsThatWouldBindASlotTwice) {
    // The scratch controls outlive the test: their slots start empty in every run.
    Leaf.Click = nullptr;
    Strength.Change = nullptr;
    Swatch.MouseDown = nullptr;
    CommandTable table;
    Rows good;
    good.menus = {{&Leaf, [] {}}};
    good.controls = {OnEvent(Strength, ControlEvent::Change, [] {}),
                     OnMouse(Swatch, ControlEvent::MouseDown, [](int, int, float, float) {})};
    good.keys = {OnPress('x', [] {}), OnRelease(VirtualKey::F5, ShiftState::None, [] {}),
                 OnRelease(VirtualKey::F5, ShiftState::Shift, [] {})};
    good.tools = {ToolRow{&ToolA, "a"}};
    table.install(good);
    EXPECT_TRUE(Leaf.Click);
    EXPECT_TRUE(Strength.Change);
    EXPECT_TRUE(ToolA.Visible);
    EXPECT_FALSE(ToolB.Visible) << "a tool without a row is hidden";
    EXPECT_TRUE(Other.Visible) << "another group is not the tools'";

    auto refused = [&](Rows rows, const char* why) { EXPECT_THROW(table.install(rows), RowError) << why; };
    auto menus = [](std::vector<MenuRow> v) { Rows r; r.menus = std::move(v); return r; };
    auto keys = [](std::vector<KeyRow> v) { Rows r; r.keys = std::move(v); return r; };
    auto controls = [](std::vector<ControlRow> v) { Rows r; r.controls = std::move(v); return r; };
    auto tools = [](std::vector<ToolRow> v) { Rows r; r.tools = std::move(v); return r; };
    refused(menus({{&Leaf, [] {}}}), "entry bound twice");
    refused(menus({{&Top, [] {}}}), "a menu of entries");
    refused(keys({OnPress('x', [] {})}), "key claimed twice");
    refused(keys({OnRelease(VirtualKey::F5, ShiftState::Shift, [] {})}), "release claimed twice");
    refused(controls({OnEvent(Strength, ControlEvent::Change, [] {})}), "event bound twice");
    refused(controls({OnEvent(Swatch, ControlEvent::Change, [] {})}), "a picture has no Change");
    refused(controls({OnEvent(Swatch, ControlEvent::Paint, {})}), "a row without a procedure");
    refused(tools({ToolRow{&Other, "c"}}), "outside the tool group");
    refused(tools({ToolRow{&ToolA, "a"}}), "a tool with two rows");
}
}  // namespace
