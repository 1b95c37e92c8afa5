// The conversion service: `convert` started through the host by name with an
// argument list (never through a shell), absolute paths behind explicit format
// prefixes so that no name can pass for an option, and literal output names so
// that '%' stays '%'.
//
// ImageMagick also reads meaning into input names ("[1]" as a frame, depending
// even on the current folder), so the source is reached through a link of a
// plain name in the private folder; only its extension is kept, as a hint.
//
// ImageMagick 6.9 marks the Targa files it writes as bottom-left while writing
// the top row first, and reads bottom-left files without turning them. Both
// directions therefore go through -auto-orient, and imports are written with an
// explicit top-left origin, which that version writes correctly.
#include "file/Conversion.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStringList>
#include <QTemporaryDir>
#include <QTimer>

#include <iterator>
#include <list>
#include <vector>

#include "core/framework/AppState.h"
#include "core/framework/Boxes.h"
#include "core/framework/Guard.h"
#include "core/framework/Host.h"
#include "core/framework/vb.h"
#include "file/ConversionErrors.h"

std::string ConversionProgram = "convert";

namespace {

double Since(double t0) { return host().Clock() - t0; }

QString Q(const std::string& s) { return QString::fromStdString(s); }
std::string Absolute(const std::string& path) { return QFileInfo(Q(path)).absoluteFilePath().toStdString(); }
bool Exists(const std::string& path) { return QFileInfo::exists(Q(path)); }

QTemporaryDir& TempDir() {
    static QTemporaryDir dir(QDir::tempPath() + "/kelpwick-XXXXXX");
    return dir;
}

// A plain-named link to the source, in the private folder; the source itself if none can be made.
std::string PlainSourceName(const std::string& source) {
    QString ext;
    for (QChar c : QFileInfo(Q(source)).suffix())
        if (c.isLetterOrNumber() && c.unicode() < 128) ext += c;
    QString name = ext.isEmpty() ? QString("Source") : QString("Source.") + ext.left(10);
    QString link = Q(TempFile(name.toStdString()));
    QFile::remove(link);
    return QFile::link(Q(Absolute(source)), link) ? link.toStdString() : Absolute(source);
}

// Why the program failed, for the user. A limit is named with its value, which
// the program itself lists when asked.
std::string FailureReason(const ProgramExit& exit) {
    std::string limits;
    const std::string named = LimitsNamed(exit.ErrorText);
    if (!named.empty() && named != "Policy")
        limits = host().ProgramOutput(ConversionProgram, {"-list", "resource"}, 10000).value_or("");
    return ConversionFailureReason(exit.ErrorText, limits);
}

// The arguments of a conversion, behind those that make every exception heard.
std::vector<std::string> WithDebug(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), std::begin(ConversionDebugArguments), std::end(ConversionDebugArguments));
    return arguments;
}

bool ExitedWell(const ProgramExit& exit) { return exit.Normal && exit.Code == 0; }

void Pump(double seconds) {
    const double t0 = host().Clock();
    do {
        host().DoEvents();
        host().Sleep(5);
    } while (Since(t0) < seconds);
}

// A program started for one conversion, released when it goes out of scope.
struct Program {
    ProgramId id = 0;
    explicit Program(ProgramId started) : id(started) {}
    Program(Program&& other) noexcept : id(other.id) { other.id = 0; }
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;
    ~Program() {
        if (id) host().ReleaseProgram(id);
    }
    bool Running() const { return host().ProgramRunning(id); }
};

Program Start(const std::vector<std::string>& arguments) {
    return Program(host().StartProgram(ConversionProgram, WithDebug(arguments)));
}

// Waits up to 65535 ms for the program, pumping events with the canvas locked.
void WaitOnProgram(const Program& p) {
    const double t0 = host().Clock();
    while (!host().WaitForProgram(p.id, 25)) {
        if (!p.Running() || Since(t0) > 65.535) break;
        ++App.LockCount;
        host().DoEvents();
        --App.LockCount;
    }
    if (p.Running()) {
        host().KillProgram(p.id);
        host().WaitForProgram(p.id, 2000);
    }
}

// The converter has ended well (or left its target anyway): the target should
// follow within 4.5 s. 0 once it is there, 255 after telling the user.
uint8_t AwaitTarga(const std::string& target) {
    const double t0 = host().Clock();
    for (;;) {
        double elapsed = Since(t0);
        if (Exists(target)) {
            Bar(100);
            Pump(0.1);  // let the file settle
            StatusProcessing();
            return 0;
        }
        if (elapsed > 4.5) break;
        Bar(static_cast<int>(vb::Int(elapsed / 4.5 * 100)));
        host().DoEvents();
        host().Sleep(10);
    }
    Kelpwick_MsgBox("Timed out waiting for conversion service");
    StatusProcessing();
    return 255;
}

// Exports still running: reported when they end.
struct PendingExport {
    Program process;
    std::string target;
    std::function<void()> written;
};
// Never destroyed: the host is gone before statics are, and it lets the last
// exports finish on its own.
std::list<PendingExport>& Pending() {
    static auto* list = new std::list<PendingExport>;
    return *list;
}

void Report(const PendingExport& e) {
    const ProgramExit exit = host().ProgramResult(e.process.id);
    if (ExitedWell(exit) && Exists(e.target)) {
        if (e.written) e.written();
        return;
    }
    std::string why = FailureReason(exit);
    Kelpwick_MsgBox("An error has occurred while saving.\n" + e.target + " was not written." +
                    (why.empty() ? std::string() : "\n" + why));
}

// Takes the finished exports out of the list first, then reports: a message box
// runs events, and those may look at the list again.
void Reap(bool wait) {
    std::list<PendingExport> done;
    auto& list = Pending();
    for (auto it = list.begin(); it != list.end();) {
        if (wait && it->process.Running()) host().WaitForProgram(it->process.id, 65535);
        if (!it->process.Running()) {
            done.splice(done.end(), list, it++);
        } else {
            ++it;
        }
    }
    for (auto& e : done) Report(e);
}

// In the running program a timer looks for finished exports. The host lets the
// last ones finish at exit, before the temporary folder goes.
void WatchPending() {
    auto* app = QCoreApplication::instance();
    if (!app) return;
    static QTimer* timer = nullptr;
    if (!timer) {
        timer = new QTimer(app);
        timer->setInterval(250);
        QObject::connect(timer, &QTimer::timeout, [] {
            if (Pending().empty()) {
                timer->stop();
                return;
            }
            Guarded([] { Reap(false); });
        });
    }
    timer->start();
}

}  // namespace

void StatusProcessing() {
    Status::Frame1.Caption = "Processing...";
    Status::form.Caption = "Processing...";
    HideStatus();
}

std::string TempFile(const std::string& name) {
    QTemporaryDir& dir = TempDir();
    QString base = dir.isValid() ? dir.path() : QDir::tempPath();
    return QDir(base).filePath(Q(name)).toStdString();
}

uint8_t ConvertToTarga(const std::string& source, const std::string& target) {
    ShowStatus("Computer stuff happening...");
    QFile::remove(Q(target));  // an old temporary must not pass as the result
    const std::string input = PlainSourceName(source);
    struct LinkRemover {
        QString link;
        ~LinkRemover() {
            if (QFileInfo(link).isSymLink()) QFile::remove(link);
        }
    } remover{Q(input)};
    // Only the first frame of a many-frame file; upright as other viewers show it;
    // 8 bits per channel and no compression, so that the reader takes every result.
    // A palette picture would be written colour-mapped, where its transparency has
    // no place: adding nothing makes it direct colour, with alpha when it has some.
    Program p = Start({input, "-auto-orient", "-delete", "1--1", "-evaluate", "Add", "0", "-orient", "TopLeft",
                       "-compress", "None", "-depth", "8", "-define", "filename:literal=true",
                       "TGA:" + Absolute(target)});
    if (!p.id) {
        StatusProcessing();
        Kelpwick_MsgBox("The conversion service could not be started: ImageMagick's '" + ConversionProgram +
                        "' program was not found.");
        return 255;
    }
    WaitOnProgram(p);
    const ProgramExit exit = host().ProgramResult(p.id);
    if (!ExitedWell(exit) && !Exists(target)) {
        std::string why = FailureReason(exit);
        StatusProcessing();
        Kelpwick_MsgBox("ImageMagick could not read " + source + "." + (why.empty() ? std::string() : "\n" + why));
        return 255;
    }
    return AwaitTarga(target);
}

void ConvertFromTarga(const std::string& target, const std::string& source, const std::string& format,
                      std::function<void()> written) {
    std::vector<std::string> args;
    if (format == "JPEG") {
        std::string title = GenericOptions::form.Caption;
        GenericOptions::form.Caption = "Jpeg quality";
        int32_t quality = GetGenericValue("Quality", 1, 100, 75);
        GenericOptions::form.Caption = title;
        if (quality == -1) {
            Kelpwick_MsgBox("Save canceled");
            return;
        }
        args = {"-quality", std::to_string(quality)};
    }
    args.insert(args.end(), {"TGA:" + Absolute(source), "-auto-orient", "-define", "filename:literal=true",
                             format + ":" + Absolute(target)});
    Program p = Start(args);
    if (!p.id) {
        Kelpwick_MsgBox("An error has occurred while saving.");
        return;
    }
    Pending().push_back({std::move(p), Absolute(target), std::move(written)});
    WatchPending();
}

void FinishPendingConversions() { Reap(true); }
int PendingConversionCount() { return static_cast<int>(Pending().size()); }
