// The automation interface on a private session bus, driven from other
// processes: the C++ exercise plug-in and a python3-dbus script. The host's side
// checks what the calls did to its globals; the clients check what came back.
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDBusConnection>
#include <QElapsedTimer>
#include <QProcess>
#include <algorithm>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <numeric>
#include <sstream>
#include <unistd.h>

#include "anim/ApplyToFrames.h"
#include "anim/FrameStore.h"
#include "brush/CustomBrush.h"
#include "colour/Gradients.h"
#include "core/display/Form1.h"
#include "core/document/Buffers.h"
#include "core/framework/AppState.h"
#include "core/framework/Boxes.h"
#include "core/frame/Form2.h"
#include "file/FileMenu.h"
#include "filter/KeptFilter.h"
#include "core/frame/MDIForm1.h"
#include "plugin/AutomationService.h"
#include "plugin/Operations.h"
#include "plugin/PlaneTransfer.h"
#include "plugin/PluginOptions.h"
#include "tests/support/ScriptedHost.h"

namespace {
QCoreApplication& Application() {
    static int argc = 1;
    static char name[] = "test_plugin";
    static char* argv[] = {name, nullptr};
    static QCoreApplication* app = new QCoreApplication(argc, argv);
    return *app;
}

struct ClientRun {
    bool finished = false;
    int exitCode = -1;
    std::string errors;
};

// Serves the bus while the program runs, until `until` says stop or it ends.
ClientRun Serve(QProcess& p, const std::function<bool()>& until = {}, int seconds = 240) {
    QElapsedTimer clock;
    clock.start();
    while (p.state() != QProcess::NotRunning && clock.elapsed() < seconds * 1000) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        if (until && until()) return {false, -1, {}};
    }
    ClientRun r;
    r.finished = p.state() == QProcess::NotRunning;
    r.exitCode = p.exitCode();
    r.errors = p.readAllStandardError().toStdString();
    return r;
}

ClientRun RunClient(const QString& program, const QStringList& args) {
    QProcess p;
    p.start(program, args);
    EXPECT_TRUE(p.waitForStarted(10000)) << program.toStdString();
    return Serve(p);
}

uint64_t Sum(const Plane& p) { return std::accumulate(p.data(), p.data() + p.count(), uint64_t{0}); }

class AutomationBus : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        Application();
        ASSERT_EQ(Automation::StartAutomation(), "org.kelpwick.Kelpwick");
    }
    static void TearDownTestSuite() { Automation::StopAutomation(); }
    void SetUp() override {
        MakeTestDocument(64, 48);
        for (int y = 0; y <= 48; ++y)
            for (int x = 0; x <= 64; ++x) BufR(x, y) = static_cast<uint8_t>(x + 2 * y);
        FreeAnim();
        for (Plane* p : {&BrushR, &BrushG, &BrushB, &BrushA}) p->free();
        BrushWidth = BrushHeight = 0;
        Form2::Picture58.Visible = false;
        App.LockCount = 0;
    }
    // The answers a user gives to the boxes of the "all" run, in its order.
    // With `meanwhile`, another client's calls are served while the value box is up.
    void ScriptTheUser(std::function<void()> meanwhile = {}) {
        host.Expect("GenericOptions", [meanwhile] {
            if (meanwhile) meanwhile();
            EXPECT_EQ(GenericOptions::Label1.Caption.get(), "Pick");
            EXPECT_EQ(GenericOptions::HScroll1.Min.get(), 3);
            EXPECT_EQ(GenericOptions::HScroll1.Max.get(), 9);
            GenericOptions::HScroll1.Value = 5;
            GenericOptions::Command1.press();
        });
        host.Answer("Go on?", 1);
        host.ExpectMessage("Hello from a plug-in");
        host.saveFiles.push_back("/tmp/chosen.tga");
        host.openFiles.push_back(std::nullopt);
    }
    void ExpectEffectsOfTheAllRun() {
        EXPECT_TRUE(host.AllAnswered());
        EXPECT_EQ(FileName, "/tmp/plugged.tga");
        EXPECT_EQ(Form1::form.Caption.get(), "Plugged");
        EXPECT_EQ(Form2::Well(5).Color.get(), 5000u);
        EXPECT_EQ(Form2::Shape4.FillColor.get() & 0xFFFFFF, 0x030201u);
        EXPECT_EQ(Form2::Shape1.FillColor.get() & 0xFFFFFF, 0x060504u);
        EXPECT_EQ(BrushWidth, 10);
        EXPECT_EQ(App.CustomBrushOn, -1);
        EXPECT_EQ(AnimFrameCount, 0);
        EXPECT_EQ(LastProgress, 50);
        EXPECT_EQ(App.LockCount, 0);
        EXPECT_EQ(BufferWidth(), 32);
        EXPECT_EQ(BufR.ubX(), 32);
    }
    ScriptedHost host;
};

TEST_F(AutomationBus, EveryOperationFromTheCppClient) {
    // While the value box waits for the user, a second plug-in takes the lock.
    int lockWhileWaiting = 0;
    size_t planeMemoryMidRun = 0;
    ScriptTheUser([&] {
        planeMemoryMidRun = Automation::PlaneMemoryHeld();
        QProcess other;
        other.start(KW_EXERCISE, {"lock"});
        ASSERT_TRUE(other.waitForStarted(10000));
        Serve(other, [] { return App.LockCount == 1; }, 60);
        lockWhileWaiting = App.LockCount;
        other.kill();
        other.waitForFinished(10000);
        QElapsedTimer clock;
        clock.start();
        while (App.LockCount != 0 && clock.elapsed() < 30000)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    });
    const ClientRun r = RunClient(KW_EXERCISE, {"all"});
    ASSERT_TRUE(r.finished);
    EXPECT_EQ(r.exitCode, 0) << r.errors;
    EXPECT_EQ(lockWhileWaiting, 1);
    ExpectEffectsOfTheAllRun();
    // The memfds its planes went through are let go once it has left the bus.
    EXPECT_GE(planeMemoryMidRun, 7u * 65 * 49);
    QElapsedTimer clock;
    clock.start();
    while (Automation::PlaneMemoryHeld() != 0 && clock.elapsed() < 30000)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    EXPECT_EQ(Automation::PlaneMemoryHeld(), 0u);
}

TEST_F(AutomationBus, EveryOperationFromPython) {
    ScriptTheUser();
    const ClientRun r = RunClient(KW_PYTHON, {KW_EXERCISE_PY, "all"});
    ASSERT_TRUE(r.finished);
    EXPECT_EQ(r.exitCode, 0) << r.errors;
    ExpectEffectsOfTheAllRun();
}

// Each bad argument is refused with its own error and leaves everything as it was.
TEST_F(AutomationBus, RefusalsChangeNothing) {
    const uint64_t r = Sum(BufR), a = Sum(BufA), sr = Sum(SwapR);
    const uint32_t well = Form2::Well(3).Color;
    const uint8_t step = Grad(10, 1, 0);
    const ClientRun run = RunClient(KW_PYTHON, {KW_EXERCISE_PY, "refusals"});
    ASSERT_TRUE(run.finished);
    EXPECT_EQ(run.exitCode, 0) << run.errors;
    EXPECT_EQ(Sum(BufR), r);
    EXPECT_EQ(Sum(BufA), a);
    EXPECT_EQ(Sum(SwapR), sr);
    EXPECT_EQ(Form2::Well(3).Color.get(), well);
    EXPECT_EQ(Grad(10, 1, 0), step);
    EXPECT_EQ(BufferWidth(), 64);
    EXPECT_EQ(BrushWidth, 0);
    EXPECT_EQ(AnimFrameCount, 0);
    EXPECT_TRUE(host.AllAnswered());
}

// The command-line example of the documentation, as it stands there.
TEST_F(AutomationBus, GdbusSetsAPixel) {
    const ClientRun r = RunClient("gdbus", {"call", "--session", "-d", "org.kelpwick.Kelpwick", "-o",
                                            "/org/kelpwick/Kelpwick", "-m",
                                            "org.kelpwick.Kelpwick._Kelpwick_Class.Kel_SetRGB", "10", "20", "0xff",
                                            "0x80", "0x00"});
    ASSERT_TRUE(r.finished);
    EXPECT_EQ(r.exitCode, 0) << r.errors;
    EXPECT_EQ(BufR(10, 20), 0xff);
    EXPECT_EQ(BufG(10, 20), 0x80);
    EXPECT_EQ(BufB(10, 20), 0x00);
}

// What a client introspects is the table: names, order, member ids, arguments, doc strings.
TEST_F(AutomationBus, IntrospectionSeenByAClientIsTheTable) {
    QProcess p;
    p.start(KW_PYTHON, {KW_EXERCISE_PY, "introspect"});
    ASSERT_TRUE(p.waitForStarted(10000));
    const ClientRun r = Serve(p);
    ASSERT_TRUE(r.finished);
    ASSERT_EQ(r.exitCode, 0) << r.errors;
    std::istringstream lines(p.readAllStandardOutput().toStdString());
    std::string line;
    size_t i = 0;
    const auto& ops = Automation::Operations();
    while (std::getline(lines, line) && i < ops.size()) {
        const Automation::Operation& op = ops[i++];
        std::ostringstream id;
        id << "0x" << std::hex << op.memberId;
        EXPECT_EQ(line.substr(0, line.find('|')), op.name);
        EXPECT_NE(line.find("|" + id.str() + "|"), std::string::npos) << line;
        EXPECT_EQ(line.substr(line.rfind('|') + 1), op.doc) << line;
        EXPECT_EQ(line.find("|property|") != std::string::npos, op.property) << line;
    }
    EXPECT_EQ(i, 72u);
}

// A plug-in killed while it holds the lock gives it back: the host sees its
// bus connection go.
TEST_F(AutomationBus, AKilledPluginReleasesItsLock) {
    QProcess p;
    p.start(KW_EXERCISE, {"lock"});
    ASSERT_TRUE(p.waitForStarted(10000));
    Serve(p, [&] { return App.LockCount == 1; }, 60);
    ASSERT_EQ(App.LockCount, 1);
    p.kill();
    p.waitForFinished(10000);
    QElapsedTimer clock;
    clock.start();
    while (App.LockCount != 0 && clock.elapsed() < 30000) QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    EXPECT_EQ(App.LockCount, 0);
}

// A plug-in that ends while a process of its own keeps its bus connection
// still gives its lock back: the host watches the process it started too.
TEST_F(AutomationBus, APluginThatEndsReleasesItsLockThoughItsConnectionLivesOn) {
    namespace fs = std::filesystem;
    const fs::path folder = fs::temp_directory_path() / ("kw-leave-" + std::to_string(getpid()));
    fs::create_directories(folder);
    const fs::path childPid = folder / "child.pid";
    std::ofstream(folder / "Leave_pm") << "#!/bin/sh\nexec " << KW_PYTHON << " " << KW_EXERCISE_PY
                                        << " lock-and-leave " << childPid.string() << "\n";
    fs::permissions(folder / "Leave_pm", fs::perms::owner_all);
    const std::string savedStart = App.StartDirectory;
    App.StartDirectory = folder.string();
    ASSERT_TRUE(StartPlugin("Leave_pm"));
    QElapsedTimer clock;
    clock.start();
    bool locked = false;
    while ((!fs::exists(childPid) || App.LockCount != 0) && clock.elapsed() < 60000) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        locked = locked || App.LockCount == 1;
    }
    EXPECT_TRUE(locked);
    EXPECT_EQ(App.LockCount, 0);
    ASSERT_TRUE(fs::exists(childPid));
    std::string text;
    std::ifstream(childPid) >> text;
    const pid_t child = static_cast<pid_t>(std::stol(text));
    EXPECT_EQ(kill(child, 0), 0) << "the connection's other process still runs";
    kill(child, SIGKILL);
    App.StartDirectory = savedStart;
    fs::remove_all(folder);
}

// A filter plug-in run from its panel is kept, and Animation > "Apply to
// frames..." runs it again on each frame, waiting for it to end each time.
TEST_F(AutomationBus, AFilterPluginIsRunAgainOnTheFrames) {
    namespace fs = std::filesystem;
    const fs::path folder = fs::temp_directory_path() / ("kw-invert-" + std::to_string(getpid()));
    fs::create_directories(folder);
    std::ofstream(folder / "Invert_pf") << "#!/bin/sh\nexec " << KW_PYTHON << " " << KW_EXERCISE_PY << " invert-red\n";
    fs::permissions(folder / "Invert_pf", fs::perms::owner_all);
    const std::string savedStart = App.StartDirectory;
    App.StartDirectory = folder.string();
    host.onEvents = [] { QCoreApplication::processEvents(QEventLoop::AllEvents, 5); };
    ASSERT_EQ(CreateAnim(3), CreateResult::Created);
    for (int f = 0; f < 3; ++f) std::memset(AnimR.frame(f), 40 * (f + 1), AnimR.frameBytes());
    GetFrame();

    // By hand on the first frame, from the panel.
    ShowPluginPanel(0);
    const auto it = std::find(Plugin_Options::File1.items.begin(), Plugin_Options::File1.items.end(), "Invert_pf");
    ASSERT_NE(it, Plugin_Options::File1.items.end());
    Plugin_Options::File1.ListIndex = static_cast<int>(it - Plugin_Options::File1.items.begin());
    Plugin_Options::Command1.press();
    QElapsedTimer clock;
    clock.start();
    while (BufR(0, 0) != 255 - 40 && clock.elapsed() < 30000) QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    EXPECT_EQ(BufR(0, 0), 255 - 40);
    EXPECT_EQ(KeptFilterCaption(), "Plug-in Invert_pf");
    Plugin_Options::Command2_Click();

    // Again on the second and third frames (1 and 2 as the transport bar numbers them).
    host.Expect("ApplyFrames", [] {
        ApplyFrames::Text1.Text = "1";
        ApplyFrames::Text2.Text = "2";
        ApplyFrames::Command1.press();
    });
    MDIForm1::Ani_ApplyFrames.press();
    EXPECT_EQ(AnimR.frame(1)[0], 255 - 80);
    EXPECT_EQ(AnimR.frame(2)[0], 255 - 120);
    EXPECT_EQ(AnimR.frame(2)[AnimR.frameBytes() / 2], 255 - 120);
    App.StartDirectory = savedStart;
    fs::remove_all(folder);
}

TEST_F(AutomationBus, APlaneOf8000By6000RoundTrips) {
    const ClientRun r = RunClient(KW_EXERCISE, {"big", "7999", "5999"});
    ASSERT_TRUE(r.finished);
    EXPECT_EQ(r.exitCode, 0) << r.errors;
    ASSERT_EQ(BufG.ubX(), 7999);
    EXPECT_EQ(BufG(7999, 5999), static_cast<uint8_t>(7999 * 3 + 5999 * 5));
    EXPECT_EQ(BufG(1234, 4321), static_cast<uint8_t>(1234 * 3 + 4321 * 5));
}

// With the name taken by another program, this one serves under a name of its
// own, puts that in the plug-ins' environment and says so in the panel.
TEST_F(AutomationBus, ASecondInstanceTakesANameOfItsOwn) {
    Automation::StopAutomation();
    QDBusConnection first = QDBusConnection::connectToBus(QDBusConnection::SessionBus, "first-kelpwick");
    ASSERT_TRUE(first.registerService(Automation::BusName));
    const std::string own = "org.kelpwick.Kelpwick.instance" + std::to_string(getpid());
    EXPECT_EQ(Automation::StartAutomation(), own);
    EXPECT_EQ(qgetenv("KELPWICK_BUS_NAME").toStdString(), own);
    EXPECT_NE(Plugin_Options::Label1.Caption.get().find("Another Kelpwick holds org.kelpwick.Kelpwick"),
              std::string::npos);
    // A client started now reaches this instance through the environment.
    const ClientRun r = RunClient(KW_PYTHON, {KW_EXERCISE_PY, "introspect"});
    EXPECT_TRUE(r.finished && r.exitCode == 0) << r.errors;
    Automation::StopAutomation();
    first.unregisterService(Automation::BusName);
    QDBusConnection::disconnectFromBus("first-kelpwick");
    EXPECT_EQ(Automation::StartAutomation(), "org.kelpwick.Kelpwick");
}

// Locks are counted per caller: extra unlocks go below zero and are not given
// back when their caller goes; a lock at -1 only brings the count to 0.
TEST(LockAccounting, CountsPerCallerAndReleasesOnlyWhatWasHeld) {
    App.LockCount = 0;
    ReleaseLock(":1.7");
    EXPECT_EQ(App.LockCount, -1);
    TakeLock(":1.8");
    EXPECT_EQ(App.LockCount, 0);
    TakeLock(":1.8");
    TakeLock(":1.8");
    EXPECT_EQ(LocksHeldBy(":1.8"), 3);
    CallerGone(":1.8");
    EXPECT_EQ(App.LockCount, -1);  // the one unlock too many stays
    CallerGone(":1.7");
    EXPECT_EQ(App.LockCount, -1);
    EXPECT_EQ(LocksHeldBy(":1.7"), 0);
    App.LockCount = 0;
}
}  // namespace
