// The Host of the real program.
#include "shell/QtHost.h"

#include <algorithm>

#include <cstring>

#include <QApplication>
#include <QColorDialog>
#include <QCursor>
#include <QDesktopServices>
#include <QDockWidget>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMdiArea>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QDir>
#include <QUrl>

#include "core/display/Form1.h"
#include "core/framework/Boxes.h"
#include "core/framework/Settings.h"
#include "core/frame/Form2.h"
#include "core/frame/MDIForm1.h"
#include "core/framework/controls.h"
#include "shell/CanvasView.h"
#include "shell/Convert.h"
#include "shell/ForeignWindow.h"
#include "shell/MainWindow.h"
#include "shell/PanelView.h"

QtHost::QtHost(MainWindow* main) : main_(main) {}

QPoint RightEdgePlace(const QRect& frame, const QSize& size, int stacked, const QRect& area) {
    constexpr int margin = 12, firstTop = 64, step = 28;
    QPoint p(frame.right() - size.width() - margin, frame.top() + firstTop + stacked * step);
    p.setX(std::clamp(p.x(), area.left(), std::max(area.left(), area.right() - size.width())));
    p.setY(std::clamp(p.y(), area.top(), std::max(area.top(), area.bottom() - size.height())));
    return p;
}

QRect AwayFrom(const QRect& box, const QRect& obstacle, const QRect& area) {
    if (!box.intersects(obstacle)) return box;
    QRect below = box.translated(0, obstacle.bottom() + 8 - box.top());
    if (below.bottom() <= area.bottom()) return below;
    QRect above = box.translated(0, obstacle.top() - 8 - box.bottom());
    return above.top() >= area.top() ? above : box;
}

void QtHost::RememberPlace(const PanelView* w, const Form& f) {
    const QPoint p = w->pos();
    SaveSectionSetting("Panels", f.Name, std::to_string(p.x()) + "," + std::to_string(p.y()));
}

void QtHost::placePanel(PanelView* w, Form& f, bool modal) {
    const QRect frame = main_->geometry();
    QScreen* screen = main_->screen();
    const QRect area = screen ? screen->availableGeometry() : frame;
    // Boxes and the progress window come up over the middle of the frame; a box
    // stays clear of the progress window when both are up.
    if (modal || &f == &Status::form) {
        QRect box(frame.center() - QPoint(w->width() / 2, w->height() / 2), w->size());
        PanelView* status = &f == &Status::form ? nullptr : panels_[&Status::form].data();
        if (status && status->isVisible()) box = AwayFrom(box, status->frameGeometry(), area);
        w->move(box.topLeft());
        return;
    }
    const QStringList saved = Q(GetSectionSetting("Panels", f.Name, "")).split(',');
    if (saved.size() == 2) {
        bool okX = false, okY = false;
        QPoint p(saved[0].toInt(&okX), saved[1].toInt(&okY));
        // A place off the present screen (another monitor, a smaller one) is not kept.
        if (okX && okY && area.intersects(QRect(p, w->size()))) {
            w->move(p);
            return;
        }
    }
    int stacked = 0;
    for (auto& [form, panel] : panels_)
        if (panel && panel != w && panel->isVisible() && form != &Status::form) ++stacked;
    w->move(RightEdgePlace(frame, w->size(), stacked, area));
}

// Programs still running at exit were started for the user (an export writing
// the file just saved): they are let finish rather than killed.
QtHost::~QtHost() {
    for (auto& [form, panel] : panels_)
        if (panel && panel->isVisible() && !panel->isModal() && form != &Status::form) RememberPlace(panel, *form);
    for (auto& [id, program] : programs_)
        if (program.process->state() != QProcess::NotRunning) program.process->waitForFinished(65535);
}

PanelView* QtHost::panelFor(Form& f) {
    auto& p = panels_[&f];
    if (!p) {
        p = new PanelView(f, main_);
        p->setAttribute(Qt::WA_DeleteOnClose, false);
    }
    return p;
}

void QtHost::ShowForm(Form& f, bool modal, Form*) {
    if (&f == &MDIForm1::form) {
        main_->show();
        return;
    }
    if (&f == &Form1::form) {
        main_->showCanvas();
        return;
    }
    if (&f == &Form2::form) {
        auto* dock = main_->findChild<QDockWidget*>("Form2Dock");
        if (!dock) {
            dock = new QDockWidget(Q(f.Caption), main_);
            dock->setObjectName("Form2Dock");
            // The panel grows with the tools: it scrolls inside its dock.
            auto* scroll = new QScrollArea(dock);
            scroll->setWidgetResizable(true);
            scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
            auto* view = new PanelView(f, scroll);
            view->setWindowFlags(Qt::Widget);
            scroll->setWidget(view);
            scroll->setMinimumWidth(view->sizeHint().width() + scroll->verticalScrollBar()->sizeHint().width() + 4);
            dock->setWidget(scroll);
            main_->addDockWidget(Qt::LeftDockWidgetArea, dock);
        }
        dock->show();
        return;
    }
    PanelView* w = panelFor(f);
    w->setWindowModality(modal ? Qt::ApplicationModal : Qt::NonModal);
    w->adjustSize();
    if (!w->isVisible()) placePanel(w, f, modal);
    w->show();
    w->raise();
    w->activateWindow();
    if (modal) {
        QEventLoop loop;
        w->modalLoop = &loop;
        if (f.Visible) loop.exec();
        w->modalLoop = nullptr;
    }
}

void QtHost::HideForm(Form& f) {
    if (&f == &Form1::form) {
        main_->hideCanvas();
        return;
    }
    if (&f == &MDIForm1::form) return;
    auto it = panels_.find(&f);
    if (it == panels_.end() || !it->second) return;
    if (it->second->isVisible() && !it->second->isModal() && &f != &Status::form) RememberPlace(it->second, f);
    it->second->hide();
    if (it->second->modalLoop) it->second->modalLoop->quit();
}

void QtHost::UnloadForm(Form& f) {
    if (&f == &MDIForm1::form) {
        closing_ = true;
        QApplication::quit();
        return;
    }
    HideForm(f);
}

void QtHost::DoEvents() { QApplication::processEvents(QEventLoop::AllEvents, 20); }

void QtHost::Beep() { QApplication::beep(); }

CanvasSurface QtHost::GetCanvasSurface() {
    CanvasView* c = main_->canvas();
    CanvasSurface s;
    s.Width = c->visibleWidth();
    s.Height = c->visibleHeight();
    if (!c->isVisible() || s.Width == 0 || s.Height == 0) {
        // Before the canvas is shown: size the image for the window it will have.
        QSize area = main_->mdi()->viewport()->size();
        s.Width = std::min(std::max(area.width(), 640), c->contentWidth());
        s.Height = std::min(std::max(area.height(), 480), c->contentHeight());
    }
    s.BitsPixel = 32;
    s.OriginX = c->horizontalScrollBar()->value();
    s.OriginY = c->verticalScrollBar()->value();
    return s;
}

void QtHost::SetCanvasWindowSize(int width, int height) { main_->canvas()->setContentSize(width, height); }

void QtHost::CanvasImageChanged(int left, int top, int right, int bottom) {
    CanvasView* c = main_->canvas();
    c->viewport()->update(QRect(left, top, right - left, bottom - top));
    // A stroke repaints small rectangles many times a second: only a whole
    // repaint can come with a new title or background.
    if (left <= 0 && top <= 0 && right >= c->visibleWidth() && bottom >= c->visibleHeight()) main_->applyFrame();
}

void QtHost::ScrollCanvasTo(int x, int y) {
    CanvasView* c = main_->canvas();
    c->horizontalScrollBar()->setValue(x);
    c->verticalScrollBar()->setValue(y);
}

void QtHost::PaintPending() { QApplication::processEvents(QEventLoop::ExcludeUserInputEvents, 20); }

bool QtHost::CanvasIsActive() {
    QMdiSubWindow* current = main_->mdi()->currentSubWindow();
    return current == nullptr || current == main_->canvasWindow();
}

QString QtFilterOf(const std::string& filter, int index, QString* selected) {
    QStringList parts = Q(filter).split('|');
    QStringList out;
    for (int i = 0; i + 1 < parts.size(); i += 2) {
        QString desc = parts[i];
        int paren = desc.indexOf('(');
        if (paren > 0) desc = desc.left(paren).trimmed();
        QString pats = parts[i + 1];
        pats.replace(';', ' ');
        out << desc + " (" + pats + ")";
        if (selected && i / 2 + 1 == index) *selected = out.back();
    }
    return out.join(";;");
}

void KeepTypedName(QFileDialog& dialog) {
    auto* edit = dialog.findChild<QLineEdit*>("fileNameEdit");
    if (!edit) return;  // a dialog of the desktop's own, which leaves names alone
    auto typed = std::make_shared<QString>();
    QObject::connect(edit, &QLineEdit::textEdited, edit, [typed](const QString& t) { *typed = t; });
    QObject::connect(&dialog, &QFileDialog::currentChanged, edit, [typed](const QString& path) {
        if (!QFileInfo(path).isDir()) *typed = QFileInfo(path).fileName();
    });
    QObject::connect(&dialog, &QFileDialog::filterSelected, edit, [edit, typed](const QString&) {
        if (!typed->isEmpty() && edit->text() != *typed) edit->setText(*typed);
    });
}

namespace {
std::optional<std::string> RunFileDialog(QWidget* parent, FileDialogRequest& dialog, bool save) {
    QString selected;
    QString filters = QtFilterOf(dialog.Filter, dialog.FilterIndex, &selected);
    QString start = Q(dialog.InitDir);
    if (!dialog.FileName.empty()) start = QFileInfo(QDir(start), Q(dialog.FileName)).filePath();
    QFileDialog d(parent, Q(dialog.Title), QString(), filters);
    d.setAcceptMode(save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    d.setFileMode(save ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    if (QFileInfo(start).isDir()) d.setDirectory(start);
    else if (!start.isEmpty()) d.selectFile(start);
    if (!selected.isEmpty()) d.selectNameFilter(selected);
    if (save) KeepTypedName(d);
    if (d.exec() != QDialog::Accepted || d.selectedFiles().isEmpty()) return std::nullopt;
    const QString path = d.selectedFiles().front();
    selected = d.selectedNameFilter();
    if (path.isEmpty()) return std::nullopt;
    QStringList all = filters.split(";;");
    dialog.FilterIndex = static_cast<int>(all.indexOf(selected)) + 1;
    dialog.FileName = path.toStdString();
    return path.toStdString();
}
}  // namespace

std::optional<std::string> QtHost::OpenFileDialog(FileDialogRequest& dialog) {
    return RunFileDialog(main_, dialog, false);
}
std::optional<std::string> QtHost::SaveFileDialog(FileDialogRequest& dialog) {
    return RunFileDialog(main_, dialog, true);
}

std::optional<uint32_t> QtHost::ChooseColor(uint32_t initial) {
    QColor c = QColorDialog::getColor(QColorOf(initial), main_);
    if (!c.isValid()) return std::nullopt;
    return BgrOf(c);
}

// An off-screen picture in the byte order of the picture box's own pixels
// (0x00BBGGRR is R, G, B, X in memory), so that showing it is one copy.
uint32_t* QtHost::OpenSurface(PictureBox& box, int width, int height) {
    if (width <= 0 || height <= 0) return nullptr;
    QImage image(width, height, QImage::Format_RGBX8888);
    if (image.isNull()) return nullptr;
    image.fill(Qt::black);
    QImage& kept = surfaces_[&box] = std::move(image);
    return reinterpret_cast<uint32_t*>(kept.bits());
}

void QtHost::PresentSurface(PictureBox& box) {
    auto it = surfaces_.find(&box);
    if (it == surfaces_.end()) return;
    const QImage& image = it->second;
    const size_t n = std::min(box.pixels.size(), static_cast<size_t>(image.width()) * image.height());
    std::memcpy(box.pixels.data(), image.constBits(), n * sizeof(uint32_t));
    box.Refresh();
}

void QtHost::CloseSurface(PictureBox& box) { surfaces_.erase(&box); }

bool QtHost::OpenDocument(const std::string& path) {
    if (!QFileInfo::exists(Q(path))) return false;
    return QDesktopServices::openUrl(QUrl::fromLocalFile(Q(path)));
}

double QtHost::Clock() {
    static QElapsedTimer t;
    if (!t.isValid()) t.start();
    return static_cast<double>(t.nsecsElapsed()) / 1e9;
}

void QtHost::PopupMenu(MenuEntry& menu) {
    QMenu m(main_);
    MainWindow::FillMenu(&m, menu);
    m.exec(QCursor::pos());
}

QProcess* QtHost::process(ProgramId id) {
    auto it = programs_.find(id);
    return it == programs_.end() ? nullptr : it->second.process.get();
}

ProgramId QtHost::StartProgram(const std::string& program, const std::vector<std::string>& arguments) {
    auto p = std::make_unique<QProcess>();
    p->setStandardOutputFile(QProcess::nullDevice());
    QStringList args;
    for (const std::string& a : arguments) args << Q(a);
    p->start(Q(program), args);
    if (!p->waitForStarted(10000)) return 0;
    programs_[++lastProgram_] = {std::move(p), {}};
    return lastProgram_;
}

bool QtHost::ProgramRunning(ProgramId id) {
    QProcess* p = process(id);
    return p && p->state() != QProcess::NotRunning;
}

bool QtHost::WaitForProgram(ProgramId id, int milliseconds) {
    QProcess* p = process(id);
    return !p || p->state() == QProcess::NotRunning || p->waitForFinished(milliseconds);
}

ProgramExit QtHost::ProgramResult(ProgramId id) {
    auto it = programs_.find(id);
    if (it == programs_.end()) return {};
    QProcess& p = *it->second.process;
    it->second.errorText += p.readAllStandardError().toStdString();
    return {p.exitStatus() == QProcess::NormalExit, p.exitCode(), it->second.errorText};
}

void QtHost::KillProgram(ProgramId id) {
    if (QProcess* p = process(id)) p->kill();
}

void QtHost::ReleaseProgram(ProgramId id) { programs_.erase(id); }

bool QtHost::PaintTileOnWindow(uint64_t window, const PatternTile& tile) {
    return PaintTileOnX11Window(window, tile);
}

bool QtHost::RaiseWindowOnTop(uint64_t window, int showMode) {
    return RaiseX11WindowOnTop(window, showMode, main_ ? static_cast<uint64_t>(main_->winId()) : 0);
}

long QtHost::ProgramProcessId(ProgramId id) {
    QProcess* p = process(id);
    return p ? static_cast<long>(p->processId()) : 0;
}

void QtHost::WhenProgramEnds(ProgramId id, std::function<void()> ended) {
    if (QProcess* p = process(id))
        QObject::connect(p, &QProcess::finished, p, [ended = std::move(ended)](int, QProcess::ExitStatus) { ended(); });
}

std::optional<std::string> QtHost::ProgramOutput(const std::string& program, const std::vector<std::string>& arguments,
                                                 int milliseconds) {
    QProcess p;
    p.setStandardErrorFile(QProcess::nullDevice());
    QStringList args;
    for (const std::string& a : arguments) args << Q(a);
    p.start(Q(program), args);
    if (!p.waitForStarted(10000)) return std::nullopt;
    if (!p.waitForFinished(milliseconds)) {
        p.kill();
        p.waitForFinished(2000);
        return std::nullopt;
    }
    return p.readAllStandardOutput().toStdString();
}
