// The canvas view offscreen: the brush outline that follows the cursor.
#include <gtest/gtest.h>

#include <QApplication>
#include <QPaintEvent>
#include <QtTest/QTest>

#include "brush/BrushState.h"
#include "core/framework/AppState.h"
#include "core/frame/Form2.h"
#include "shell/CanvasView.h"
#include "tests/support/ScriptedHost.h"

namespace {
QApplication* CanvasApp() {
    static int argc = 1;
    static char name[] = "test_shell";
    static char* argv[] = {name, nullptr};
    static QApplication* app = qApp ? qApp : new QApplication(argc, argv);
    return app;
}

// Collects what the viewport is asked to repaint.
struct PaintSpy : QObject {
    QRegion painted;
    bool eventFilter(QObject*, QEvent* e) override {
        if (e->type() == QEvent::Paint) painted += static_cast<QPaintEvent*>(e)->region();
        return false;
    }
};
}  // namespace

TEST(CanvasView, AnOutlineDrawnAtOneSizeIsWipedWhenTheCursorMovesAtAnother) {
    CanvasApp();
    ScriptedHost h;
    App.ZoomPercent = 100;
    App.CustomBrushOn = 0;
    Form2::Option1.Value = true;
    CanvasView view(nullptr);
    view.resize(400, 300);
    view.setContentSize(400, 300);
    view.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&view));
    PaintSpy spy;
    view.viewport()->installEventFilter(&spy);

    BrushRadius = 17;  // a large brush: its outline is drawn around (200, 150)
    QTest::mouseMove(view.viewport(), QPoint(200, 150));
    QTRY_VERIFY(spy.painted.contains(QPoint(200 - 17, 150)));  // drawn
    BrushRadius = 0;  // the size goes down to 1 while the cursor rests
    spy.painted = QRegion();
    QTest::mouseMove(view.viewport(), QPoint(40, 40));
    QTRY_VERIFY(!spy.painted.isEmpty());
    // The big circle's box is repainted, so no stale outline is left behind.
    EXPECT_TRUE((QRegion(200 - 17, 150 - 17, 35, 35) - spy.painted).isEmpty());
    view.viewport()->removeEventFilter(&spy);
}
