// The one door from the logic to people, windows and the operating system.
// The shell implements it with Qt; tests install a scripted host that answers
// modal forms from a queue and fails on an unexpected dialog.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

struct Form;
class MenuEntry;
class PictureBox;
struct PatternTile;

// The visible part of the canvas window: the screen image covers exactly this.
// Origin is the window pixel (in the zoomed picture) at the image's top left.
struct CanvasSurface {
    int Width = 0;       // pixels
    int Height = 0;      // rows
    int BitsPixel = 32;  // 16, 24 or 32
    int OriginX = 0;
    int OriginY = 0;
};

struct FileDialogRequest {
    std::string Title;
    std::string Filter;  // "Targa (*.tga)|*.tga|All (*.*)|*.*"
    std::string InitDir;
    std::string FileName;
    int FilterIndex = 1;  // 1-based, set by the dialog to the chosen filter
};

// A font as the font dialog gives it and the text rasteriser takes it.
struct FontChoice {
    std::string Name = "Sans";
    int Size = 12;  // points
    bool Bold = false, Italic = false;
};

// A program started through the host; 0 is none.
using ProgramId = int;

// How a program ended.
struct ProgramExit {
    bool Normal = false;    // it exited by itself, neither killed nor crashed
    int Code = 0;           // its exit code
    std::string ErrorText;  // all it wrote on its error channel, as it wrote it
};

class Host {
public:
    virtual ~Host() = default;
    // Modal shows return when the form hides itself.
    virtual void ShowForm(Form& f, bool modal, Form* owner) = 0;
    virtual void HideForm(Form& f) = 0;
    virtual void UnloadForm(Form& f) = 0;
    virtual void DoEvents() = 0;
    virtual void Beep() {}

    // Canvas window: its visible surface, its size as a whole zoomed picture,
    // and repaints of the screen image (whole, or one rectangle of it).
    virtual CanvasSurface GetCanvasSurface() = 0;
    virtual void SetCanvasWindowSize(int width, int height) = 0;
    virtual void CanvasImageChanged(int left, int top, int right, int bottom) = 0;
    // True while the canvas is the active window of the frame.
    virtual bool CanvasIsActive() { return true; }
    // Scrolls the canvas so that window pixel (x, y) of the zoomed picture lies at
    // the view's top left, as far as the picture's size allows.
    virtual void ScrollCanvasTo(int /*x*/, int /*y*/) {}
    // Lets the windows paint what is pending, taking no input from the user:
    // long work keeps the screen alive without running commands in between.
    virtual void PaintPending() { DoEvents(); }

    // Common dialogs: empty / nullopt when cancelled.
    virtual std::optional<std::string> OpenFileDialog(FileDialogRequest& dialog) = 0;
    virtual std::optional<std::string> SaveFileDialog(FileDialogRequest& dialog) = 0;
    virtual std::optional<uint32_t> ChooseColor(uint32_t initial) = 0;

    // A document in the user's viewer (the help page); false when none starts.
    virtual bool OpenDocument(const std::string& path) = 0;
    virtual double Clock() = 0;  // seconds since an arbitrary start
    // Sleeps the calling thread; nothing else runs meanwhile.
    virtual void Sleep(int milliseconds);

    // Other programs, started by name (found through the search path) with an
    // argument list, never through a shell. Their output goes nowhere; what they
    // write on their error channel is kept for ProgramResult. The defaults are
    // those of a host that can start no program.
    // StartProgram gives 0 when the program has not started within 10 s.
    virtual ProgramId StartProgram(const std::string& program, const std::vector<std::string>& arguments);
    virtual bool ProgramRunning(ProgramId id);
    // Waits up to `milliseconds` for the program to end; true once it has ended.
    virtual bool WaitForProgram(ProgramId id, int milliseconds);
    // How it ended; meaningful once it has.
    virtual ProgramExit ProgramResult(ProgramId id);
    virtual void KillProgram(ProgramId id);
    // Forgets a program, killing it first if it still runs.
    virtual void ReleaseProgram(ProgramId id);
    // The system's process id of a running program, 0 when there is none.
    virtual long ProgramProcessId(ProgramId id);
    // `ended` runs from the event loop once the program has ended (not at all
    // when it is released first).
    virtual void WhenProgramEnds(ProgramId id, std::function<void()> ended);
    // Runs a program to its end, for at most `milliseconds`, and gives all it wrote
    // on its output channel; nullopt when it did not start or did not end in time.
    virtual std::optional<std::string> ProgramOutput(const std::string& program,
                                                     const std::vector<std::string>& arguments, int milliseconds);

    // Another program's window on this display, by its window-system id. The
    // tile is painted as the window's background; the raise keeps the window
    // above all others, shows it and, for show mode 1, marks it modal to this
    // program's main window. false when there is no such window or the window
    // system gives no way to do it.
    virtual bool PaintTileOnWindow(uint64_t /*window*/, const PatternTile& /*tile*/) { return false; }
    virtual bool RaiseWindowOnTop(uint64_t /*window*/, int /*showMode*/) { return false; }

    // An off-screen picture for a panel's picture box: width x height pixels,
    // 0x00BBGGRR, x fastest, that the logic clears and draws into and then
    // shows in the box in one copy. nullptr when the host has none to give.
    virtual uint32_t* OpenSurface(PictureBox& /*box*/, int /*width*/, int /*height*/) { return nullptr; }
    virtual void PresentSurface(PictureBox& /*box*/) {}
    virtual void CloseSurface(PictureBox& /*box*/) {}

    // Opens a popup menu of the hidden Menus window at the pointer.
    virtual void PopupMenu(MenuEntry& menu) = 0;

    // True once the frame is closing: loops that wait on events end.
    virtual bool Closing() { return false; }
    // The common font dialog; nullopt when cancelled.
    virtual std::optional<FontChoice> ChooseFont(const FontChoice& /*initial*/) { return std::nullopt; }
    // Text measured and drawn in a font, without anti-aliasing. The width in
    // pixels, or -1 when the font cannot be had. RasteriseText draws the text
    // at (0, 0) in black on white into width x height bytes (x fastest): a
    // letter's pixels are 0, every other pixel 255. False when nothing could be drawn.
    virtual int TextWidth(const std::string& /*text*/, const FontChoice& /*font*/) { return -1; }
    virtual bool RasteriseText(const std::string& /*text*/, const FontChoice& /*font*/, int /*width*/,
                               int /*height*/, std::vector<uint8_t>& /*pixels*/) {
        return false;
    }
};

Host& host();
void SetHost(Host* h);

// Shows a form, loading it first (its Load runs once until unloaded).
void Show(Form& f, bool modal = false, Form* owner = nullptr);
void Hide(Form& f);
// While one lives, panels shown without a modal loop do their work without
// reaching the screen: a kept filter runs again with the values its panel holds.
class UnseenPanels {
public:
    UnseenPanels();
    ~UnseenPanels();
    UnseenPanels(const UnseenPanels&) = delete;
    UnseenPanels& operator=(const UnseenPanels&) = delete;
};
void Unload(Form& f);

