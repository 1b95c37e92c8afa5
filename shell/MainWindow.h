// The frame: menu bar from the menu table, the MDI area with the canvas, and
// the tool panel docked at its side.
#pragma once

#include <QMainWindow>

class QMdiArea;
class QMdiSubWindow;
class CanvasView;
class MenuEntry;
class QMenu;

class MainWindow : public QMainWindow {
public:
    MainWindow();
    ~MainWindow() override;
    CanvasView* canvas() { return canvas_; }
    QMdiSubWindow* canvasWindow() { return canvasWindow_; }
    QMdiArea* mdi() { return mdi_; }
    void showCanvas();
    void hideCanvas();
    void applyFrame();
    // The frame's caption, with the canvas's when the canvas fills the frame.
    QString frameTitle() const;
    // Builds a QMenu (popup or bar menu) from an entry and its children.
    static void FillMenu(QMenu* menu, MenuEntry& entry);

protected:
    void closeEvent(QCloseEvent* e) override;

private:
    void buildMenus();
    QMdiArea* mdi_;
    CanvasView* canvas_;
    QMdiSubWindow* canvasWindow_;
};

// True for entries with a command, or with children that have one.
bool MenuEntryLive(const MenuEntry& e);
