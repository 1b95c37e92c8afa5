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
#include <QPointer>

#include "core/display/Form1.h"
#include "core/framework/Codes.h"
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
    // The MDI area joins the captions itself when the canvas is maximised: ours is put back.
    connect(canvasWindow_, &QMdiSubWindow::windowStateChanged, this, [this] { applyFrame(); });
    buildMenus();
    MakeAnimTools(this);
    applyFrame();
    resize(1280, 860);
    // The frame and the canvas follow their forms' captions, pointers and backgrounds.
    QPointer<MainWindow> self(this);
    MDIForm1::form.viewHook = [self] {
        if (self) self->applyFrame();
    };
    Form1::form.viewHook = [self] {
        if (!self) return;
        self->canvasWindow_->setWindowTitle(Q(Form1::form.Caption));
        const int pointer = Form1::form.MousePointer;
        self->canvas_->viewport()->setCursor(pointer == Pointer::Busy   ? Qt::WaitCursor
                                             : pointer == Pointer::Help ? Qt::WhatsThisCursor
                                                                        : Qt::CrossCursor);
        self->applyFrame();
    };
}

MainWindow::~MainWindow() {
    disconnect(canvasWindow_, nullptr, this, nullptr);  // the children go after this part of the window
    MDIForm1::form.viewHook = nullptr;
    Form1::form.viewHook = nullptr;
}

QString MainWindow::frameTitle() const {
    QString title = Q(MDIForm1::form.Caption);
    // The canvas is shown filling the frame, without a title bar of its own: its
    // caption joins the frame's. (Its window state may read "normal" meanwhile,
    // so only its being shown is asked.)
    if (canvasWindow_->isVisible()) title += " - [" + Q(Form1::form.Caption) + "]";
    return title;
}

void MainWindow::buildMenus() {
    for (MenuEntry* root : MenuRoots(MDIForm1::form)) {
        if (!MenuEntryLive(*root)) continue;
        QMenu* m = menuBar()->addMenu(MenuText(root->Caption));
        m->setObjectName(Q(root->Name));
        FillMenu(m, *root);
    }
}

// The whole title is set here, every time: the MDI area's own joining of the
// canvas caption keeps a copy of the old title and would repeat names in it.
void MainWindow::applyFrame() {
    const QString title = frameTitle();
    if (windowTitle() != title) setWindowTitle(title);
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
    applyFrame();
}

void MainWindow::hideCanvas() {
    canvasWindow_->hide();
    applyFrame();
}

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
