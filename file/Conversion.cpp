// The conversion service: `convert` started by name with an argument list (never
// through a shell), absolute paths behind explicit format prefixes so that no
// name can pass for an option, and literal output names so that '%' stays '%'.
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
#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>
#include <QThread>
#include <QTimer>

#include <chrono>
#include <list>
#include <memory>

#include "core/framework/AppState.h"
#include "core/framework/Boxes.h"
#include "core/framework/Guard.h"
#include "core/framework/Host.h"
#include "core/framework/vb.h"

std::string ConversionProgram = "convert";

namespace {

using Clock = std::chrono::steady_clock;
double Since(Clock::time_point t0) { return std::chrono::duration<double>(Clock::now() - t0).count(); }

QString Q(const std::string& s) { return QString::fromStdString(s); }
QString Absolute(const std::string& path) { return QFileInfo(Q(path)).absoluteFilePath(); }

QTemporaryDir& TempDir() {
    static QTemporaryDir dir(QDir::tempPath() + "/kelpwick-XXXXXX");
    return dir;
}

// A plain-named link to the source, in the private folder; the source itself if none can be made.
QString PlainSourceName(const std::string& source) {
    QString ext;
    for (QChar c : QFileInfo(Q(source)).suffix())
        if (c.isLetterOrNumber() && c.unicode() < 128) ext += c;
    QString name = ext.isEmpty() ? QString("Source") : QString("Source.") + ext.left(10);
    QString link = Q(TempFile(name.toStdString()));
    QFile::remove(link);
    return QFile::link(Absolute(source), link) ? link : Absolute(source);
}

// The first lines of what the program said on its error channel.
std::string ErrorText(QProcess& p) {
    QString text = QString::fromLocal8Bit(p.readAllStandardError()).trimmed();
    QStringList lines = text.split('\n', Qt::SkipEmptyParts);
    if (lines.size() > 6) lines = lines.mid(0, 6);
    return lines.join('\n').toStdString();
}

void Pump(double seconds) {
    auto t0 = Clock::now();
    do {
        host().DoEvents();
        QThread::msleep(5);
    } while (Since(t0) < seconds);
}

// Waits up to 65535 ms for the program, pumping events with the canvas locked.
void WaitOnProgram(QProcess& p) {
    auto t0 = Clock::now();
    while (!p.waitForFinished(25)) {
        if (p.state() == QProcess::NotRunning || Since(t0) > 65.535) break;
        ++App.LockCount;
        host().DoEvents();
        --App.LockCount;
    }
    if (p.state() != QProcess::NotRunning) {
        p.kill();
        p.waitForFinished(2000);
    }
}

// Exports still running: reported when they end.
struct PendingExport {
    std::unique_ptr<QProcess> process;
    std::string target;
};
std::list<PendingExport>& Pending() {
    static std::list<PendingExport> list;
    return list;
}

bool Failed(QProcess& p, const std::string& target) {
    return p.exitStatus() != QProcess::NormalExit || p.exitCode() != 0 || !QFileInfo::exists(Q(target));
}

void Report(PendingExport& e) {
    std::string why = ErrorText(*e.process);
    Kelpwick_MsgBox("An error has occurred while saving.\n" + e.target + " was not written." +
                    (why.empty() ? std::string() : "\n" + why));
}

// Takes the finished exports out of the list first, then reports: a message box
// runs events, and those may look at the list again.
void Reap(bool wait) {
    std::list<PendingExport> done;
    auto& list = Pending();
    for (auto it = list.begin(); it != list.end();) {
        if (wait && it->process->state() != QProcess::NotRunning) it->process->waitForFinished(65535);
        if (it->process->state() == QProcess::NotRunning) {
            done.splice(done.end(), list, it++);
        } else {
            ++it;
        }
    }
    for (auto& e : done)
        if (Failed(*e.process, e.target)) Report(e);
}

// In the running program a timer looks for finished exports; at exit the last
// ones are waited for, so that the temporary folder outlives them.
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
        qAddPostRoutine([] {
            for (auto& e : Pending()) e.process->waitForFinished(65535);
            Pending().clear();
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
    const QString input = PlainSourceName(source);
    struct LinkRemover {
        QString link;
        ~LinkRemover() {
            if (QFileInfo(link).isSymLink()) QFile::remove(link);
        }
    } remover{input};
    QProcess p;
    p.setStandardOutputFile(QProcess::nullDevice());
    // Only the first frame of a many-frame file; upright as other viewers show it;
    // 8 bits per channel and no compression, so that the reader takes every result.
    // A palette picture would be written colour-mapped, where its transparency has
    // no place: adding nothing makes it direct colour, with alpha when it has some.
    p.start(Q(ConversionProgram),
            {input, "-auto-orient", "-delete", "1--1", "-evaluate", "Add", "0", "-orient", "TopLeft", "-compress",
             "None", "-depth", "8", "-define", "filename:literal=true", "TGA:" + Absolute(target)});
    if (!p.waitForStarted(10000)) {
        StatusProcessing();
        Kelpwick_MsgBox("The conversion service could not be started: ImageMagick's '" + ConversionProgram +
                        "' program was not found.");
        return 255;
    }
    WaitOnProgram(p);
    if ((p.exitStatus() != QProcess::NormalExit || p.exitCode() != 0) && !QFileInfo::exists(Q(target))) {
        std::string why = ErrorText(p);
        StatusProcessing();
        Kelpwick_MsgBox("ImageMagick could not read " + source + "." + (why.empty() ? std::string() : "\n" + why));
        return 255;
    }
    auto t0 = Clock::now();
    for (;;) {
        double elapsed = Since(t0);
        if (QFileInfo::exists(Q(target))) {
            Bar(100);
            Pump(0.1);  // let the file settle
            StatusProcessing();
            return 0;
        }
        if (elapsed > 4.5) break;
        Bar(static_cast<int>(vb::Int(elapsed / 4.5 * 100)));
        host().DoEvents();
        QThread::msleep(10);
    }
    Kelpwick_MsgBox("Timed out waiting for conversion service");
    StatusProcessing();
    return 255;
}

void ConvertFromTarga(const std::string& target, const std::string& source, const std::string& format) {
    QStringList args;
    if (format == "JPEG") {
        std::string title = GenericOptions::form.Caption;
        GenericOptions::form.Caption = "Jpeg quality";
        int32_t quality = GetGenericValue("Quality", 1, 100, 75);
        GenericOptions::form.Caption = title;
        if (quality == -1) {
            Kelpwick_MsgBox("Save canceled");
            return;
        }
        args << "-quality" << QString::number(quality);
    }
    args << "TGA:" + Absolute(source) << "-auto-orient" << "-define" << "filename:literal=true"
         << Q(format) + ":" + Absolute(target);
    auto p = std::make_unique<QProcess>();
    p->setStandardOutputFile(QProcess::nullDevice());
    p->start(Q(ConversionProgram), args);
    if (!p->waitForStarted(10000)) {
        Kelpwick_MsgBox("An error has occurred while saving.");
        return;
    }
    Pending().push_back({std::move(p), Absolute(target).toStdString()});
    WatchPending();
}

void FinishPendingConversions() { Reap(true); }
void CheckPendingConversions() { Reap(false); }
int PendingConversionCount() { return static_cast<int>(Pending().size()); }
