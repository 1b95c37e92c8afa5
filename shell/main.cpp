// Kelpwick: starts Qt, installs the host and runs the start-up sequence.
#include <QApplication>
#include <QStyleFactory>
#include <QTimer>
#include <QMdiSubWindow>
#include "shell/CanvasView.h"
#include <cstdio>
#include <map>

#include "app/CommandLine.h"
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
            t->setTimerType(Qt::PreciseTimer);  // playback holds its frame rate
            QObject::connect(t, &QTimer::timeout, owner, [m] { Guarded([m] { m->fire(); }); });
            m->viewHook = [m, t] {
                t->setInterval(std::max(1, m->Interval.get()));
                // An interval of 0 never fires.
                const bool run = m->TimerEnabled && m->Interval > 0;
                if (run && !t->isActive()) t->start();
                if (!run && t->isActive()) t->stop();
            };
            m->viewHook();
        }
}
std::vector<std::string> ArgumentsAfterProgram(const QStringList& all) {
    std::vector<std::string> args;
    for (qsizetype i = 1; i < all.size(); ++i) args.push_back(all[i].toStdString());
    return args;
}

// Help and version are answered before Qt starts, so they need no display.
bool AnsweredWithoutWindows(int argc, char** argv) {
    const CommandLine line = ParseCommandLine(std::vector<std::string>(argv + 1, argv + argc));
    if (line.action == CommandLine::Action::Help) std::fputs(CommandLineUsage().c_str(), stdout);
    if (line.action == CommandLine::Action::Version) std::fputs(VersionText().c_str(), stdout);
    return line.action == CommandLine::Action::Help || line.action == CommandLine::Action::Version;
}
}  // namespace

int main(int argc, char** argv) {
    if (AnsweredWithoutWindows(argc, argv)) return 0;
    QApplication app(argc, argv);
    // Qt has taken its own options (-platform, -style...) out of the list by now.
    const CommandLine line = ParseCommandLine(ArgumentsAfterProgram(QCoreApplication::arguments()));
    if (line.action == CommandLine::Action::Error) {
        std::fprintf(stderr, "kelpwick: %s\n%s", line.error.c_str(), CommandLineUsage().c_str());
        return 2;
    }
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
        Guarded([] { Kelpwick::Main(DefaultFilesFolder(QCoreApplication::applicationDirPath().toStdString())); });
        if (!line.file.empty()) Guarded([&line] { OpenFromCommandLine(line.file); });
    });
    int rc = app.exec();
    SetHost(nullptr);
    return rc;
}
