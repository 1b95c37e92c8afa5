// The generic panel view, offscreen: widgets built from a form's models and kept
// in step both ways, keys forwarded to the canvas, menu captions.
#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
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
#include "core/frame/WindowMenu.h"
#include "filter/FadeLast.h"
#include "shell/Convert.h"
#include "shell/Keys.h"
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

    ::App.KeyDownCode = 0;
    QTest::keyPress(w, Qt::Key_F3);  // a key no command uses: only KeyDownCode shows it
    EXPECT_EQ(::App.KeyDownCode, 114);
    QTest::keyRelease(w, Qt::Key_F3);

    // While a box is up the canvas gets no input, not even through the box's own keys.
    view.hide();
    view.setWindowModality(Qt::ApplicationModal);
    view.show();
    QApplication::setActiveWindow(&view);
    w->setFocus();
    ::App.KeyDownCode = 0;
    QTest::keyPress(w, Qt::Key_F3);
    EXPECT_EQ(::App.KeyDownCode, 0);
    QTest::keyRelease(w, Qt::Key_F3);
    view.hide();
    qApp->removeEventFilter(&keys);
}
