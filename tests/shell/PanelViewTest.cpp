// The generic panel view, offscreen: widgets built from a form's models and kept
// in step both ways, keys forwarded to the canvas, menu captions.
#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QtTest/QTest>

#include "core/framework/AppState.h"
#include "core/framework/Boxes.h"
#include "core/document/CanvasSize.h"
#include "core/frame/Nav.h"
#include "core/frame/FatBits.h"
#include "core/frame/MemoryOptions.h"
#include "core/frame/Form3.h"
#include "core/frame/KeyboardHelp.h"
#include "colour/Gradient.h"
#include "core/frame/Form2.h"
#include "core/frame/MDIForm1.h"
#include "core/frame/WindowMenu.h"
#include "file/TargaOptions.h"
#include "filter/FadeLast.h"
#include "shell/Convert.h"
#include "shell/Keys.h"
#include "shell/MainWindow.h"
#include "shell/PanelView.h"
#include "tests/support/ScriptedHost.h"

namespace {
QApplication* App_() {
    static int argc = 1;
    static char name[] = "test_shell";
    static char* argv[] = {name, nullptr};
    static QApplication* app = new QApplication(argc, argv);
    return app;
}

template <typename W>
W* Only(QWidget& parent) {
    auto all = parent.findChildren<W*>();
    EXPECT_EQ(all.size(), 1);
    return all.isEmpty() ? nullptr : all.front();
}
}  // namespace

TEST(PanelView, SliderAndLabelFollowTheModelBothWays) {
    App_();
    ScriptedHost host;
    PanelView view(MemoryOptions::form, nullptr);
    auto* slider = Only<QSlider>(view);
    ASSERT_NE(slider, nullptr);
    EXPECT_EQ(slider->maximum(), 2047);
    slider->setValue(1);  // as the user drags it
    EXPECT_EQ(MemoryOptions::HScroll1.Value.get(), 1);
    EXPECT_EQ(MemoryOptions::Label4.Caption.get(), "meg");
    bool labelShows = false;
    for (QLabel* l : view.findChildren<QLabel*>()) labelShows |= l->text() == "meg";
    EXPECT_TRUE(labelShows);
    MemoryOptions::HScroll1.Value = 300;  // as code writes it
    EXPECT_EQ(slider->value(), 300);
    EXPECT_EQ(view.windowTitle(), "Memory options");
}

TEST(PanelView, TextFieldsListsAndButtonsDriveTheSizeDialog) {
    App_();
    ScriptedHost host;
    CanvasSize::List1.Clear();
    CanvasSize::Presets = {{640, 480}, {1280, 720}};
    CanvasSize::List1.AddItem("VGA");
    CanvasSize::List1.AddItem("HD 720");
    PanelView view(CanvasSize::form, nullptr);
    auto fields = view.findChildren<QLineEdit*>();
    ASSERT_EQ(fields.size(), 2);
    auto lists = view.findChildren<QListWidget*>();
    ASSERT_EQ(lists.size(), 2);
    EXPECT_EQ(lists[0]->count(), 2);
    lists[0]->setCurrentRow(1);
    EXPECT_EQ(CanvasSize::Text1.Text.get(), "1280");
    EXPECT_EQ(fields[0]->text(), "1280");
    fields[0]->clear();
    QTest::keyClicks(fields[0], "800");
    EXPECT_EQ(CanvasSize::Text1.Text.get(), "800");
    CanvasSize::form.Visible = true;
    QTest::keyClick(fields[1], Qt::Key_Return);  // Return presses OK
    EXPECT_FALSE(CanvasSize::form.Visible);
    EXPECT_EQ(CanvasSize::SizeCancelled, 0);
}

TEST(PanelView, EscapingErrorsBecomeMessages) {
    App_();
    ScriptedHost host;
    Form f("ThrowingPanel", "Throws");
    CommandButton b(f, "Command5", "Go", [] { throw std::runtime_error("The disk is full."); });
    PanelView view(f, nullptr);
    host.ExpectMessage("The disk is full.");
    QTest::mouseClick(Only<QPushButton>(view), Qt::LeftButton);
}

TEST(PanelView, EveryKindOfControlGetsItsWidgetInStepWithTheModel) {
    App_();
    ScriptedHost host;
    Form f("AllKinds", "All kinds");
    Label label(f, "Label1", "a label");
    Label frame(f, "Frame1");  // a frame is drawn as its caption
    CommandButton button(f, "Command7", "Go");
    Slider slider(f, "HScroll1", 0, 50, 20);
    CheckBox check(f, "Check1", "Tick", 1);
    OptionButton option(f, "Option1", "Pick", 1, true);
    TextBox line(f, "Text1", "12");
    TextBox page(f, "Text2", "many\nlines");
    page.MultiLine = true;
    ListBox list(f, "List1");
    FileListBox files(f, "File1", "*.none");
    ComboBox combo(f, "Combo1");
    PictureBox picture(f, "Picture1", 64, 30);
    Shape swatch(f, "Shape1");
    LineControl rule(f, "Line1");
    Timer timer(f, "Timer1", 100);
    MenuEntry entry(f, "Menu1", "Menu", nullptr);
    for (ListBox* l : {&list, static_cast<ListBox*>(&combo)}) {
        l->AddItem("one");
        l->AddItem("two");
        l->ListIndex = 1;
    }
    check.ToolTipText = "tip";
    button.Enabled = false;
    label.Visible = false;

    // Each control with the widget type it should get (none for the ones without
    // a widget) and what that widget shows after the first sync.
    struct Row {
        Control* control;
        const char* type;
        std::function<bool(QWidget*)> shows;
    };
    auto any = [](QWidget*) { return true; };
    const Row table[] = {
        {&label, "QLabel", [](QWidget* w) { return static_cast<QLabel*>(w)->text() == "a label" && w->isHidden(); }},
        {&frame, "QLabel", any},
        {&button, "QPushButton",
         [](QWidget* w) { return static_cast<QPushButton*>(w)->text() == "Go" && !w->isEnabled(); }},
        {&slider, "QWidget",
         [](QWidget* w) {
             auto* s = w->findChild<QSlider*>();
             return s && s->maximum() == 50 && s->value() == 20;
         }},
        {&check, "QCheckBox",
         [](QWidget* w) { return static_cast<QCheckBox*>(w)->isChecked() && w->toolTip() == "tip"; }},
        {&option, "QRadioButton", [](QWidget* w) { return static_cast<QRadioButton*>(w)->isChecked(); }},
        {&line, "QLineEdit", [](QWidget* w) { return static_cast<QLineEdit*>(w)->text() == "12"; }},
        {&page, "QPlainTextEdit",
         [](QWidget* w) { return static_cast<QPlainTextEdit*>(w)->toPlainText() == "many\nlines"; }},
        {&list, "QListWidget", [](QWidget* w) { return static_cast<QListWidget*>(w)->currentRow() == 1; }},
        {&files, "QListWidget", any},
        {&combo, "QComboBox",
         [](QWidget* w) {
             auto* c = static_cast<QComboBox*>(w);
             return c->count() == 2 && c->currentIndex() == 1;
         }},
        {&picture, "QWidget", [](QWidget* w) { return w->sizeHint() == QSize(64, 30); }},
        {&swatch, "QWidget", [](QWidget* w) { return w->findChild<QLabel*>() != nullptr; }},
        {&rule, nullptr, nullptr},
        {&timer, nullptr, nullptr},
        {&entry, nullptr, nullptr},
    };
    PanelView view(f, nullptr);
    int widgets = 0;
    for (const Row& row : table) {
        SCOPED_TRACE(row.control->Name);
        QWidget* w = view.buildControl(*row.control);
        ASSERT_EQ(w != nullptr, row.type != nullptr);
        if (!w) continue;
        ++widgets;
        ASSERT_TRUE(w->inherits(row.type));
        EXPECT_TRUE(row.shows(w));
    }
    // The view built the same: one widget per control that has one. The page of
    // text takes what room the window gains, so no stretch follows.
    EXPECT_EQ(view.layout()->count(), widgets);
    swatch.Visible = false;  // a hidden shape takes no room at all
    EXPECT_EQ(view.buildControl(swatch), nullptr);
}

TEST(PanelView, ReturnAndCloseFollowTheButtonRolesNotTheirNames) {
    App_();
    ScriptedHost host;
    Form f("RolePanel", "Roles");
    std::string pressed;
    CommandButton plain(f, "Command1", "Plain", [&] { pressed += "plain "; });
    CommandButton cancel(f, "Dismiss", "Cancel", [&] { pressed += "cancel "; }, ButtonRole::Cancel);
    CommandButton ok(f, "Accept", "OK", [&] { pressed += "ok "; }, ButtonRole::Default);
    EXPECT_EQ(f.button(ButtonRole::Default), &ok);
    EXPECT_EQ(f.button(ButtonRole::Cancel), &cancel);
    PanelView view(f, nullptr);
    for (QPushButton* b : view.findChildren<QPushButton*>()) EXPECT_EQ(b->isDefault(), b->text() == "OK");

    f.Visible = true;
    QTest::keyClick(&view, Qt::Key_Return);
    EXPECT_EQ(pressed, "ok ");
    view.close();  // the cancel button leaves the form up: the close hides it after
    EXPECT_EQ(pressed, "ok cancel ");
    EXPECT_FALSE(f.Visible);

    // Without roles Return does nothing and closing only hides.
    Form bare("BarePanel", "Bare");
    CommandButton named(bare, "Command2", "Named", [&] { pressed += "named "; });
    PanelView plainView(bare, nullptr);
    bare.Visible = true;
    QTest::keyClick(&plainView, Qt::Key_Return);
    plainView.close();
    EXPECT_EQ(pressed, "ok cancel ");
    EXPECT_FALSE(bare.Visible);
    EXPECT_EQ(bare.button(ButtonRole::Default), nullptr);
}

TEST(PanelView, DialogsKeepTheirDefaultAndCancelButtons) {
    const std::tuple<Form*, CommandButton*, CommandButton*> dialogs[] = {
        {&MessageBox::form, &MessageBox::Command1, nullptr},
        {&QuestionBox::form, &QuestionBox::Command1, &QuestionBox::Command2},
        {&GenericOptions::form, &GenericOptions::Command1, &GenericOptions::Command2},
        {&CanvasSize::form, &CanvasSize::Command1, &CanvasSize::Command2},
        {&MemoryOptions::form, &MemoryOptions::Command1, &MemoryOptions::Command2},
        {&TargaOptions::form, &TargaOptions::Command1, &TargaOptions::Command2},
        {&FadeLast::form, &FadeLast::Command1, &FadeLast::Command2},
        {&Form3::form, &Form3::Command1, nullptr},
        // Neither a Return in the tool panel nor closing the Fill window may
        // press a button that changes the picture or the gradient.
        {&Form2::form, nullptr, nullptr},
        {&Gradient::form, nullptr, nullptr},
    };
    for (const auto& [form, ok, cancel] : dialogs) {
        SCOPED_TRACE(form->Name);
        EXPECT_EQ(form->button(ButtonRole::Default), ok);
        EXPECT_EQ(form->button(ButtonRole::Cancel), cancel);
    }
}

TEST(MainWindow, CheckableMenuEntriesShowTheirCheckMarks) {
    App_();
    ScriptedHost host;
    Form f("MenuForm", "Menus");
    MenuEntry root(f, "Root", "Root", nullptr);
    MenuEntry toggle(f, "Toggle", "Toggle", &root, [&] { toggle.Checked = !toggle.Checked; });
    MenuEntry command(f, "Command", "Command", &root, [] {});
    toggle.Checkable = true;
    QMenu menu;
    MainWindow::FillMenu(&menu, root);
    auto action = [&](const char* name) { return menu.findChild<QAction*>(name); };
    ASSERT_NE(action("Toggle"), nullptr);
    ASSERT_NE(action("Command"), nullptr);
    EXPECT_TRUE(action("Toggle")->isCheckable());
    EXPECT_FALSE(action("Toggle")->isChecked());
    EXPECT_FALSE(action("Command")->isCheckable());
    action("Toggle")->trigger();
    EXPECT_TRUE(toggle.Checked.get());
    emit menu.aboutToShow();
    EXPECT_TRUE(action("Toggle")->isChecked());

    // The program's own switches show as switches while they are off.
    QMenu prefs;
    MainWindow::FillMenu(&prefs, MDIForm1::Prefs);
    QAction* force15 = prefs.findChild<QAction*>("prefs_Disp_15bit");
    ASSERT_NE(force15, nullptr);
    EXPECT_TRUE(force15->isCheckable());
    EXPECT_EQ(force15->isChecked(), MDIForm1::prefs_Disp_15bit.Checked.get());
    QAction* save = prefs.findChild<QAction*>("Prefs_Save");
    ASSERT_NE(save, nullptr);
    EXPECT_FALSE(save->isCheckable());
}

TEST(Keys, ClassicCodesOfQtKeys) {
    EXPECT_EQ(VirtualKeyOf(Qt::Key_Left), 37);
    EXPECT_EQ(VirtualKeyOf(Qt::Key_Down), 40);
    EXPECT_EQ(VirtualKeyOf(Qt::Key_F6), 117);
    EXPECT_EQ(VirtualKeyOf(Qt::Key_A), 65);
    EXPECT_EQ(KeyAsciiOf(Qt::Key_Z, Qt::ControlModifier, "z"), 26);
    EXPECT_EQ(KeyAsciiOf(Qt::Key_A, Qt::ControlModifier, ""), 1);
    EXPECT_EQ(KeyAsciiOf(Qt::Key_J, Qt::ShiftModifier, "J"), 'J');
    EXPECT_EQ(KeyAsciiOf(Qt::Key_Bar, Qt::ShiftModifier, "|"), '|');
    EXPECT_EQ(KeyAsciiOf(Qt::Key_Escape, Qt::NoModifier, "\x1b"), 27);
    EXPECT_EQ(KeyAsciiOf(Qt::Key_Shift, Qt::ShiftModifier, ""), 0);
}

TEST(Keys, MenuCaptionsPutTheirKeyInTheShortcutColumn) {
    EXPECT_EQ(MenuText("Swap buffers                          j"), "Swap buffers\tj");
    EXPECT_EQ(MenuText("Undo   u / ctrl &z"), "Undo\tu / ctrl z");
    EXPECT_EQ(MenuText("Resample..."), "Resample...");
    EXPECT_EQ(MenuText("Alpha on/off     \\"), "Alpha on/off\t\\");
}

TEST(Keys, PanelsForwardTheirKeysButAModalBoxKeepsThem) {
    App_();
    ScriptedHost host;
    KeyForwarder keys;
    qApp->installEventFilter(&keys);
    Form f("KeyPanel", "Keys");
    ListBox list(f, "List1");
    list.AddItem("one");
    PanelView view(f, nullptr);
    auto* w = Only<QListWidget>(view);
    ASSERT_NE(w, nullptr);
    view.show();
    QApplication::setActiveWindow(&view);
    w->setFocus();

    Form2::slider1.Value = 2;
    QTest::keyPress(w, Qt::Key_F5);
    QTest::keyRelease(w, Qt::Key_F5);  // F5 sets the step to 1 when it is let go
    EXPECT_EQ(Form2::slider1.Value.get(), 1);

    // While a box is up the canvas gets no input, not even through the box's own keys.
    view.hide();
    view.setWindowModality(Qt::ApplicationModal);
    view.show();
    QApplication::setActiveWindow(&view);
    w->setFocus();
    Form2::slider1.Value = 2;
    QTest::keyPress(w, Qt::Key_F5);
    QTest::keyRelease(w, Qt::Key_F5);
    EXPECT_EQ(Form2::slider1.Value.get(), 2);
    view.hide();
    qApp->removeEventFilter(&keys);
}
