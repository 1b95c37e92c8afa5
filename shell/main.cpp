// Kelpwick: starts Qt, installs the host and runs the start-up sequence.
#include <QApplication>
#include <QStyleFactory>
#include <QTimer>
#include <QMdiSubWindow>
#include "shell/CanvasView.h"
#include <map>

#include "app/Startup.h"
#include "core/display/Form1.h"
#include "core/framework/Codes.h"
#include "core/framework/Guard.h"
#include "core/frame/MDIForm1.h"
#include "core/framework/controls.h"
#include "shell/ControlWidgets.h"
#include "shell/Convert.h"
#include "shell/Keys.h"
#include "shell/MainWindow.h"
#include "shell/QtHost.h"

namespace {
// Runs the timer models of every form on Qt timers.
void DriveTimers(QObject* owner) {
    for (Form* f : AllForms())
        for (Control* c : f->controls) {
            if (c->Kind != ControlKind::Timer) continue;
            auto* m = static_cast<Timer*>(c);
            auto* t = new QTimer(owner);
            QObject::connect(t, &QTimer::timeout, owner, [m] { Guarded([m] { m->fire(); }); });
            m->viewHook = [m, t] {
                t->setInterval(std::max(1, m->Interval.get()));
                if (m->TimerEnabled && !t->isActive()) t->start();
                if (!m->TimerEnabled && t->isActive()) t->stop();
            };
            m->viewHook();
        }
}
}  // namespace

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QApplication::setApplicationName("kelpwick");
    QApplication::setStyle(QStyleFactory::create("Fusion"));
    QApplication::setQuitOnLastWindowClosed(false);

    Kelpwick::Compose();  // before the views: the menu bar and the tool row show what has a row
    RegisterControlWidgets();
    MainWindow main;
    QtHost host(&main);
    SetHost(&host);
    KeyForwarder keys;
    app.installEventFilter(&keys);
    DriveTimers(&app);

    QTimer::singleShot(0, [&] {
        Guarded([] { Kelpwick::Main(QCoreApplication::applicationDirPath().toStdString()); });
    });
    int rc = app.exec();
    SetHost(nullptr);
    return rc;
}
