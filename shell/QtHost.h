// The Host of the real program: forms become Qt windows, dialogs are Qt's own.
#pragma once

#include <QImage>
#include <QPointer>
#include <QProcess>
#include <QWidget>
#include <map>
#include <memory>

#include "core/framework/Host.h"

class MainWindow;
class QFileDialog;
class PanelView;

class QtHost : public Host {
public:
    explicit QtHost(MainWindow* main);
    ~QtHost() override;
    void ShowForm(Form& f, bool modal, Form* owner) override;
    void HideForm(Form& f) override;
    void UnloadForm(Form& f) override;
    void DoEvents() override;
    void Beep() override;
    CanvasSurface GetCanvasSurface() override;
    void SetCanvasWindowSize(int width, int height) override;
    void CanvasImageChanged(int left, int top, int right, int bottom) override;
    bool CanvasIsActive() override;
    void ScrollCanvasTo(int x, int y) override;
    void PaintPending() override;
    std::optional<std::string> OpenFileDialog(FileDialogRequest& dialog) override;
    std::optional<std::string> SaveFileDialog(FileDialogRequest& dialog) override;
    std::optional<uint32_t> ChooseColor(uint32_t initial) override;
    bool PaintTileOnWindow(uint64_t window, const PatternTile& tile) override;
    bool RaiseWindowOnTop(uint64_t window, int showMode) override;
    uint32_t* OpenSurface(PictureBox& box, int width, int height) override;
    void PresentSurface(PictureBox& box) override;
    void CloseSurface(PictureBox& box) override;
    bool OpenDocument(const std::string& path) override;
    double Clock() override;
    void PopupMenu(MenuEntry& menu) override;
    ProgramId StartProgram(const std::string& program, const std::vector<std::string>& arguments) override;
    bool ProgramRunning(ProgramId id) override;
    bool WaitForProgram(ProgramId id, int milliseconds) override;
    ProgramExit ProgramResult(ProgramId id) override;
    void KillProgram(ProgramId id) override;
    void ReleaseProgram(ProgramId id) override;
    long ProgramProcessId(ProgramId id) override;
    void WhenProgramEnds(ProgramId id, std::function<void()> ended) override;
    std::optional<std::string> ProgramOutput(const std::string& program, const std::vector<std::string>& arguments,
                                             int milliseconds) override;
    // QtHostText.cpp: closing, fonts and text.
    bool Closing() override;
    std::optional<FontChoice> ChooseFont(const FontChoice& initial) override;
    int TextWidth(const std::string& text, const FontChoice& font) override;
    bool RasteriseText(const std::string& text, const FontChoice& font, int width, int height,
                       std::vector<uint8_t>& pixels) override;

    PanelView* panelFor(Form& f);  // made on first use
    // Where a panel opens: where the user last put it, or first at the frame's right edge.
    void placePanel(PanelView* w, Form& f, bool modal);
    // Keeps where a panel stands, for the next time it opens (this run or the next).
    static void RememberPlace(const PanelView* w, const Form& f);

private:
    MainWindow* main_;
    bool closing_ = false;  // the frame was unloaded
    std::map<Form*, QPointer<PanelView>> panels_;
    std::map<PictureBox*, QImage> surfaces_;  // off-screen pictures of panels' picture boxes
    struct Program {
        std::unique_ptr<QProcess> process;
        std::string errorText;  // gathered as it is read
    };
    std::map<ProgramId, Program> programs_;
    ProgramId lastProgram_ = 0;
    QProcess* process(ProgramId id);
};

// A panel's first place: against the right edge of the frame, below the panels
// already standing there (`stacked` of them), inside `area`.
QPoint RightEdgePlace(const QRect& frame, const QSize& size, int stacked, const QRect& area);
// `box` moved off `obstacle`, below it or else above it, staying inside `area`;
// unchanged when they do not overlap.
QRect AwayFrom(const QRect& box, const QRect& obstacle, const QRect& area);

// Qt's own save dialog rewrites the extension of a typed name when the user
// picks another filter; this keeps the name as typed (or picked from the list).
void KeepTypedName(QFileDialog& dialog);

// Filters of the classic dialogs ("Desc|*.a;*.b|...") in Qt's form.
QString QtFilterOf(const std::string& filter, int index, QString* selected);
