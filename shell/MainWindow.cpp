// The frame window.
#include "shell/MainWindow.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QDockWidget>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QPixmap>

#include "core/display/Form1.h"
#include "core/framework/Guard.h"
#include "core/frame/MDIForm1.h"
#include "shell/AnimToolsView.h"
#include "shell/CanvasView.h"
#include "shell/Convert.h"

bool MenuEntryLive(const MenuEntry& e) {
    if (!e.Visible) return false;
    if (e.Click) return true;
    for (const MenuEntry* c : e.children)
        if (MenuEntryLive(*c)) return true;
    return false;
}

void MainWindow::FillMenu(QMenu* menu, MenuEntry& entry) {
    for (MenuEntry* child : entry.children) {
        if (!MenuEntryLive(*child)) continue;
        if (!child->children.empty()) {
            QMenu* sub = menu->addMenu(MenuText(child->Caption));
            FillMenu(sub, *child);
            continue;
        }
        QAction* a = menu->addAction(MenuText(child->Caption));
        a->setObjectName(Q(child->Name));
        a->setCheckable(child->Checkable);
        a->setChecked(child->Checked);
        QObject::connect(a, &QAction::triggered, menu, [child] { Guarded([child] { child->press(); }); });
    }
    // Check marks follow the models each time the menu opens.
    QObject::connect(menu, &QMenu::aboutToShow, menu, [menu, &entry] {
        for (QAction* a : menu->actions())
            for (MenuEntry* child : entry.children)
                if (a->objectName() == Q(child->Name)) {
                    a->setCheckable(child->Checkable);
                    a->setChecked(child->Checked);
                }
    });
}

MainWindow::MainWindow() {
    setObjectName("MDIForm1");
    mdi_ = new QMdiArea(this);
    setCentralWidget(mdi_);
    canvas_ = new CanvasView(nullptr);
    canvasWindow_ = mdi_->addSubWindow(canvas_, Qt::SubWindow | Qt::WindowTitleHint);
    canvasWindow_->setWindowTitle(Q(Form1::form.Caption));
    canvasWindow_->hide();
    buildMenus();
    MakeAnimTools(this);
    applyFrame();
    resize(1280, 860);
}

void MainWindow::buildMenus() {
    for (MenuEntry* root : MenuRoots(MDIForm1::form)) {
        if (!MenuEntryLive(*root)) continue;
        QMenu* m = menuBar()->addMenu(MenuText(root->Caption));
        m->setObjectName(Q(root->Name));
        FillMenu(m, *root);
    }
}

void MainWindow::applyFrame() {
    setWindowTitle(Q(MDIForm1::form.Caption));
    if (!MDIForm1::BackBitmap.empty()) {
        QPixmap pm(Q(MDIForm1::BackBitmap));
        if (!pm.isNull()) {
            mdi_->setBackground(QBrush(pm));
            return;
        }
    }
    mdi_->setBackground(QBrush(QColorOf(MDIForm1::BackColor)));
}

void MainWindow::showCanvas() {
    canvasWindow_->setWindowTitle(Q(Form1::form.Caption));
    if (!canvasWindow_->isVisible()) canvasWindow_->showMaximized();
    canvas_->setFocus();
}

void MainWindow::hideCanvas() { canvasWindow_->hide(); }

void MainWindow::closeEvent(QCloseEvent* e) {
    bool quit = false;
    Guarded([&] { quit = MDIForm1::MDIForm_QueryUnload(); });
    if (!quit) {
        e->ignore();
        return;
    }
    Guarded([] { MDIForm1::MDIForm_Unload(); });
    e->accept();
    QApplication::quit();
}
