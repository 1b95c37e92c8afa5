// A host for tests: modal forms are answered from a queue of actions, every
// message and question is recorded, and an unexpected dialog fails the test.
#pragma once

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "core/framework/Host.h"
#include "core/framework/controls.h"

class ScriptedHost : public Host {
public:
    ScriptedHost();
    ~ScriptedHost() override;

    // The next modal form must be `formName`; `action` runs while it is up and
    // must hide it (press a button).
    void Expect(const std::string& formName, std::function<void()> action);
    // The next modal form is `formName`, answered by pressing its button `button`.
    void Press(const std::string& formName, const std::string& button);
    // A message box whose text contains `fragment`, acknowledged with OK.
    void ExpectMessage(const std::string& fragment);
    // A question box whose text contains `fragment`, answered 1 (yes) or 2 (no).
    void Answer(const std::string& fragment, int answer);
    // The size dialog, answered with this size and OK.
    void AnswerSize(int w, int h);
    bool AllAnswered() const { return script_.empty(); }

    std::vector<std::string> messages, questions, shown;
    std::vector<std::string> popups;  // names of the popup menus opened, in order
    std::deque<std::optional<std::string>> openFiles, saveFiles;
    int openFilter = 0;  // the filter an open dialog is answered with; 0 leaves the dialog's own
    std::deque<std::optional<uint32_t>> colours;
    std::vector<std::string> documentsOpened;
    bool documentOpens = true;
    std::optional<CanvasSurface> surface;  // fixed surface; otherwise the canvas window, capped
    int canvasWidth = 0, canvasHeight = 0;
    int imageChanges = 0;
    struct ChangedRect { int left, top, right, bottom; };
    std::vector<ChangedRect> changedRects;  // every repaint of the screen image, in order
    bool canvasActive = true;
    // The clock moves only when the logic sleeps or waits for a program: a sleep
    // takes no real time, a wait takes what it really took.
    double clock = 0;
    // Every program started (or tried), its name first, then its arguments.
    std::vector<std::vector<std::string>> programsStarted;
    // Programs that do not really run: started by this name, they have ended at
    // once, as given (their error text included).
    std::map<std::string, ProgramExit> fakePrograms;

    void ShowForm(Form& f, bool modal, Form* owner) override;
    void HideForm(Form&) override {}
    void UnloadForm(Form&) override {}
    void DoEvents() override {
        ++eventPumps;
        if (onEvents) onEvents();
    }
    void PaintPending() override {
        ++paintPumps;
        if (onEvents) onEvents();
    }
    int eventPumps = 0, paintPumps = 0;
    std::function<void()> onEvents;  // runs at each pump: a test looks at the screen meanwhile
    bool closing = false;
    bool Closing() override { return closing; }
    // Fonts: the dialog answers from a queue (cancel when empty). The text
    // rasteriser is a fixed one: every character cell is 6 pixels wide and a
    // printable character other than a blank is a solid 4 x 7 block at (1, 1)
    // of its cell. A font named "" is not installed.
    std::deque<std::optional<FontChoice>> fonts;
    std::optional<FontChoice> ChooseFont(const FontChoice& initial) override;
    int TextWidth(const std::string& text, const FontChoice& font) override;
    bool RasteriseText(const std::string& text, const FontChoice& font, int width, int height,
                       std::vector<uint8_t>& pixels) override;
    CanvasSurface GetCanvasSurface() override;
    // The origin follows, held inside the picture as a scroll bar holds it.
    void ScrollCanvasTo(int x, int y) override;
    int originX = 0, originY = 0;  // of the visible part, when no fixed surface is given
    std::map<PictureBox*, std::vector<uint32_t>> surfaces;  // the off-screen pictures by box
    void SetCanvasWindowSize(int w, int h) override {
        canvasWidth = w;
        canvasHeight = h;
    }
    void CanvasImageChanged(int l, int t, int r, int b) override {
        ++imageChanges;
        changedRects.push_back({l, t, r, b});
    }
    bool CanvasIsActive() override { return canvasActive; }
    std::optional<std::string> OpenFileDialog(FileDialogRequest& dialog) override;
    std::optional<std::string> SaveFileDialog(FileDialogRequest& dialog) override;
    std::optional<uint32_t> ChooseColor(uint32_t initial) override;
    // Off-screen pictures kept in memory; a present copies into the box's pixels.
    uint32_t* OpenSurface(PictureBox& box, int width, int height) override;
    void PresentSurface(PictureBox& box) override;
    void CloseSurface(PictureBox& box) override;
    bool refuseSurfaces = false;  // as a host without off-screen pictures
    int surfacePresents = 0;
    bool OpenDocument(const std::string& path) override;
    double Clock() override { return clock; }
    void PopupMenu(MenuEntry& menu) override { popups.push_back(menu.Name); }
    void Sleep(int milliseconds) override { clock += milliseconds / 1000.0; }
    // Programs really run, so that conversions meet the real converter.
    ProgramId StartProgram(const std::string& program, const std::vector<std::string>& arguments) override;
    bool ProgramRunning(ProgramId id) override;
    bool WaitForProgram(ProgramId id, int milliseconds) override;
    ProgramExit ProgramResult(ProgramId id) override;
    void KillProgram(ProgramId id) override;
    void ReleaseProgram(ProgramId id) override;
    long ProgramProcessId(ProgramId id) override;
    void WhenProgramEnds(ProgramId id, std::function<void()> ended) override;
    // The output of a faked program is its entry here; other programs really run.
    std::optional<std::string> ProgramOutput(const std::string& program, const std::vector<std::string>& arguments,
                                             int milliseconds) override;
    std::map<std::string, std::string> fakeOutputs;

private:
    struct Step {
        std::string form;
        std::function<void()> action;
    };
    std::deque<Step> script_;
    struct Program;
    std::map<ProgramId, std::unique_ptr<Program>> programs_;
    Program* program(ProgramId id);
    Host* previous_ = nullptr;
};

// Makes a fresh document of w x h with the display sized to it.
void MakeTestDocument(int w, int h);
