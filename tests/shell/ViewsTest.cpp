// Views offscreen: text pages that follow their window, the canvas's own mouse
// gestures (middle drag, zoom wheel), the tool buttons showing the tool.
#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QScreen>
#include <QTemporaryDir>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QToolButton>
#include <QWheelEvent>
#include <QtTest/QTest>

#include "colour/Gradient.h"
#include "core/framework/AppState.h"
#include "core/framework/Commands.h"
#include "core/framework/Settings.h"
#include "core/frame/Form2.h"
#include "core/frame/Form3.h"
#include "core/frame/KeyboardHelp.h"
#include "core/frame/MDIForm1.h"
#include "core/frame/Nav.h"
#include "core/display/Form1.h"
#include "core/document/Undo.h"
#include "shell/CanvasView.h"
#include "shell/ControlWidgets.h"
#include "shell/MainWindow.h"
#include "shell/PanelView.h"
#include "shell/QtHost.h"
#include "tests/support/ScriptedHost.h"

namespace {
QApplication* ViewsApp() {
    static int argc = 1;
    static char name[] = "test_shell";
    static char* argv[] = {name, nullptr};
    static QApplication* app = qApp ? qApp : new QApplication(argc, argv);
    return app;
}

QPlainTextEdit* PageOf(PanelView& view) {
    auto pages = view.findChildren<QPlainTextEdit*>();
    return pages.size() == 1 ? pages.front() : nullptr;
}

void Wheel(QWidget* w, QPoint at, int delta, Qt::KeyboardModifiers mods) {
    QWheelEvent e(QPointF(at), QPointF(w->mapToGlobal(at)), QPoint(), QPoint(0, delta), Qt::NoButton, mods,
                  Qt::NoScrollPhase, false);
    QApplication::sendEvent(w, &e);
}
}  // namespace

TEST(PanelView, ATextPageFillsItsWindowAndReadsAsNormalText) {
    ViewsApp();
    ScriptedHost host;
    PanelView help(KeyboardHelp::form, nullptr);
    help.resize(480, 300);
    help.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&help));
    QPlainTextEdit* page = PageOf(help);
    ASSERT_NE(page, nullptr);
    help.resize(1000, 760);
    QTRY_VERIFY(page->width() > 900 && page->height() > 600);
    EXPECT_LE(page->geometry().bottom(), help.height());

    // The about text is read-only, yet it is drawn as text, not greyed out.
    PanelView about(Form3::form, nullptr);
    QPlainTextEdit* text = PageOf(about);
    ASSERT_NE(text, nullptr);
    EXPECT_TRUE(text->isEnabled());
    EXPECT_TRUE(text->isReadOnly());
}

TEST(CanvasView, TheMiddleButtonDragsTheViewAndCtrlWheelZoomsByTheSteps) {
    ViewsApp();
    ScriptedHost host;
    App.ZoomPercent = 100;
    Nav::FollowZoom();
    Form2::Option1.Value = true;
    CanvasView view(nullptr);
    view.resize(300, 200);
    view.setContentSize(2000, 1500);
    view.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&view));
    QWidget* vp = view.viewport();
    view.horizontalScrollBar()->setValue(500);
    view.verticalScrollBar()->setValue(400);

    const int undoBefore = UndoIndex;
    QTest::mousePress(vp, Qt::MiddleButton, Qt::NoModifier, QPoint(100, 100));
    QTest::mouseMove(vp, QPoint(60, 130));
    {
        // QTest moves carry no buttons: tell the view the middle button is held.
        QMouseEvent move(QEvent::MouseMove, QPointF(40, 150), vp->mapToGlobal(QPointF(40, 150)), Qt::NoButton,
                         Qt::MiddleButton, Qt::NoModifier);
        QApplication::sendEvent(vp, &move);
    }
    QTest::mouseRelease(vp, Qt::MiddleButton, Qt::NoModifier, QPoint(40, 150));
    // Dragged 60 left and 50 down: the picture follows the hand.
    EXPECT_EQ(view.horizontalScrollBar()->value(), 560);
    EXPECT_EQ(view.verticalScrollBar()->value(), 350);
    EXPECT_EQ(UndoIndex, undoBefore);  // no tool saw the drag

    // A plain wheel scrolls; with Ctrl it zooms a step per notch, small turns adding up.
    Wheel(vp, QPoint(50, 50), -120, Qt::ControlModifier);
    EXPECT_EQ(App.ZoomPercent, 50);
    EXPECT_EQ(Nav::HScroll1.Value.get(), 50);
    Wheel(vp, QPoint(50, 50), 60, Qt::ControlModifier);
    EXPECT_EQ(App.ZoomPercent, 50);
    Wheel(vp, QPoint(50, 50), 60, Qt::ControlModifier);
    EXPECT_EQ(App.ZoomPercent, 100);
    Wheel(vp, QPoint(50, 50), 240, Qt::ControlModifier);
    EXPECT_EQ(App.ZoomPercent, 300);
    App.ZoomPercent = 100;
    Nav::FollowZoom();
}

TEST(PanelView, TheToolThatIsDownLooksDown) {
    ViewsApp();
    ScriptedHost host;
    static bool registered = false;
    if (!registered) RegisterToolButtonsView();
    registered = true;
    Form2::Option1.Value = true;
    PanelView panel(Form2::form, nullptr);
    panel.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&panel));
    auto* brush = panel.findChild<QToolButton*>("Option1");
    auto* baster = panel.findChild<QToolButton*>("Option6");
    ASSERT_NE(brush, nullptr);
    ASSERT_NE(baster, nullptr);
    // The face of a button, away from its border and its text.
    auto face = [](QToolButton* b) { return b->grab().toImage().pixelColor(4, b->height() / 2); };
    auto differ = [](QColor a, QColor b) {
        return std::abs(a.red() - b.red()) + std::abs(a.green() - b.green()) + std::abs(a.blue() - b.blue());
    };
    // No button counts as under the pointer: earlier tests leave the offscreen
    // pointer wherever they last moved it, and a hovered button shows its hover face.
    for (QToolButton* b : panel.findChildren<QToolButton*>()) b->setAttribute(Qt::WA_UnderMouse, false);
    const QColor down = face(brush), up = face(baster);
    EXPECT_TRUE(brush->isChecked());
    EXPECT_FALSE(baster->isChecked());
    EXPECT_GT(differ(down, up), 200) << down.name().toStdString() << " vs " << up.name().toStdString();

    // The other tool taken from the model (a key does this): the looks change places.
    Form2::Option6.Value = true;
    EXPECT_TRUE(baster->isChecked());
    EXPECT_FALSE(brush->isChecked());
    EXPECT_LT(differ(face(baster), down), 30);
    EXPECT_LT(differ(face(brush), up), 30);
    Form2::Option1.Value = true;
}

TEST(MainWindow, TheTitleNamesTheCanvasOnceWhateverHappenedBefore) {
    ViewsApp();
    ScriptedHost scripted;
    MainWindow main;
    QtHost qt(&main);
    SetHost(&qt);
    main.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&main));
    MDIForm1::form.Caption = "Project Kelpwick  (Main)  ";
    Form1::form.Caption = "Canvas";
    Show(Form1::form);
    const QString frame = "Project Kelpwick  (Main)  ";
    EXPECT_EQ(main.windowTitle(), frame + " - [Canvas]");
    for (const char* name : {"/pictures/first.tga", "/pictures/second.png", "/pictures/first.tga"}) {
        Form1::form.Caption = name;
        EXPECT_EQ(main.windowTitle(), frame + " - [" + name + "]");
    }
    // A new document: the canvas window closes and opens again under its first caption.
    Hide(Form1::form);
    EXPECT_EQ(main.windowTitle(), frame);
    Form1::form.Caption = "Canvas";
    Show(Form1::form);
    EXPECT_EQ(main.windowTitle(), frame + " - [Canvas]");
    MDIForm1::form.Caption = "Project Kelpwick  (Swap)  ";
    EXPECT_EQ(main.windowTitle(), "Project Kelpwick  (Swap)   - [Canvas]");
    Form1::form.Caption = "/pictures/third.tga";
    EXPECT_EQ(main.windowTitle(), "Project Kelpwick  (Swap)   - [/pictures/third.tga]");
    Hide(Form1::form);
    SetHost(&scripted);
}

TEST(FileDialog, ATypedNameSurvivesAChangeOfFilter) {
    ViewsApp();
    QFileDialog d(nullptr, "Save a file", QDir::tempPath(), "Bmp (*.bmp);;Png (*.png)");
    d.setOption(QFileDialog::DontUseNativeDialog);
    d.setAcceptMode(QFileDialog::AcceptSave);
    KeepTypedName(d);
    d.show();
    auto* edit = d.findChild<QLineEdit*>("fileNameEdit");
    auto* types = d.findChild<QComboBox*>("fileTypeCombo");
    ASSERT_NE(edit, nullptr);
    ASSERT_NE(types, nullptr);
    QTest::keyClicks(edit, "holiday.jpg");
    // The user picks the second filter, as the combo box tells it.
    types->setCurrentIndex(1);
    emit types->activated(1);
    emit types->textActivated(types->itemText(1));
    EXPECT_EQ(edit->text(), "holiday.jpg");
    // A name typed afresh is the one kept from then on.
    edit->clear();
    QTest::keyClicks(edit, "sea.bmp");
    types->setCurrentIndex(0);
    emit types->activated(0);
    emit types->textActivated(types->itemText(0));
    EXPECT_EQ(edit->text(), "sea.bmp");
}

TEST(QtHost, PanelsOpenAtTheFramesRightEdgeThenWhereTheUserPutThem) {
    ViewsApp();
    ScriptedHost scripted;
    MainWindow main;
    SaveSectionSetting("Panels", Nav::form.Name, "");
    {
        QtHost qt(&main);
        SetHost(&qt);
        main.setGeometry(main.screen()->availableGeometry().adjusted(10, 10, -10, -10));
        main.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&main));
        Show(Nav::form);
        PanelView* zoom = qt.panelFor(Nav::form);
        const QRect frame = main.geometry();
        EXPECT_LE(zoom->geometry().right(), frame.right());
        EXPECT_GT(zoom->geometry().right(), frame.right() - 40);
        EXPECT_GT(zoom->geometry().top(), frame.top());
        zoom->move(120, 330);
        Hide(Nav::form);
        SetHost(&scripted);
    }
    {
        QtHost qt(&main);  // as in the next run: the place comes from the settings
        SetHost(&qt);
        Show(Nav::form);
        EXPECT_EQ(qt.panelFor(Nav::form)->pos(), QPoint(120, 330));
        Hide(Nav::form);
        SetHost(&scripted);
    }
    SaveSectionSetting("Panels", Nav::form.Name, "");

    // A box that would cover the progress window goes below it, or above it near the bottom.
    const QRect area(0, 0, 1600, 1000), status(600, 400, 320, 100);
    EXPECT_EQ(AwayFrom(QRect(650, 420, 200, 120), status, area).top(), 507);
    EXPECT_EQ(AwayFrom(QRect(650, 420, 200, 120), QRect(600, 400, 320, 500), area).bottom(), 392);
    EXPECT_EQ(AwayFrom(QRect(0, 0, 50, 50), status, area), QRect(0, 0, 50, 50));
    // The first place keeps a panel inside the screen even for a frame beyond it.
    const QPoint p = RightEdgePlace(QRect(900, 100, 1000, 700), QSize(300, 200), 2, area);
    EXPECT_EQ(p, QPoint(1299, 100 + 64 + 56));
    EXPECT_EQ(RightEdgePlace(QRect(1500, 900, 1000, 700), QSize(300, 200), 0, area), QPoint(1299, 799));
}

TEST(PanelView, TheGradientFileBoxShowsOpenOrItsFileNeverABlank) {
    ViewsApp();
    ScriptedHost host;
    QTemporaryDir dir;
    const std::string before = App.StartDirectory;
    App.StartDirectory = dir.path().toStdString();
    QFile grd(dir.filePath("sunset.grd"));
    ASSERT_TRUE(grd.open(QIODevice::WriteOnly));
    grd.write(QByteArray(8192, '\x40'));
    grd.close();

    PanelView panel(Gradient::form, nullptr);
    QComboBox* files = nullptr;
    for (QComboBox* c : panel.findChildren<QComboBox*>())
        if (c->placeholderText() == "Open") files = c;
    ASSERT_NE(files, nullptr) << "no combo box shows \"Open\"";
    Gradient::Combo2_GotFocus();
    ASSERT_EQ(files->count(), 1);
    EXPECT_EQ(files->currentIndex(), -1);  // nothing chosen: the placeholder shows

    Gradient::Combo2.ListIndex = 0;  // the user picks the file
    EXPECT_EQ(files->currentText(), "sunset.grd");
    Gradient::Command4.press();  // Apply
    EXPECT_EQ(files->currentText(), "sunset.grd");
    Gradient::Combo2_GotFocus();  // the list read again, as after a save
    EXPECT_EQ(files->currentText(), "sunset.grd");
    App.StartDirectory = before;
    Gradient::Combo2_GotFocus();
}
