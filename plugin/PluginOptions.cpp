// The plug-in panel, starting plug-ins and companion programs, the progress
// strip and the per-caller lock accounting.
#include "plugin/PluginOptions.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <vector>

#include "core/document/Undo.h"
#include "core/frame/MDIForm1.h"
#include "core/framework/AppState.h"
#include "core/framework/Boxes.h"
#include "core/framework/Host.h"
#include "core/framework/PanelLook.h"
#include "core/framework/vb.h"
#include "filter/KeptFilter.h"

int16_t PluginPanelOpen = 0;
int16_t LastProgress = 0;

namespace {
constexpr int BarRows = 14;
std::map<std::string, int> LocksHeld;
std::map<std::string, long> CallerPids;
std::vector<ProgramId> Started;  // plug-ins started and not yet seen to end

// Programs that have ended are forgotten, so that their handles do not pile up.
void ForgetEnded() {
    std::vector<ProgramId> running;
    for (ProgramId id : Started) {
        if (host().ProgramRunning(id)) running.push_back(id);
        else host().ReleaseProgram(id);
    }
    Started = std::move(running);
}

bool ProgramPresent(const std::string& name) {
    std::error_code ec;
    return std::filesystem::is_regular_file(ProgramFile(name), ec);
}

// The list's selection: an undo step first, so that the plug-in's work is one
// step. A filter plug-in is kept, to be run again on the frames of an animation.
bool RunSelection() {
    using namespace Plugin_Options;
    if (File1.ListIndex < 0) return false;
    SaveUndo();
    const std::string name = File1.Text();
    // A program that will not start says nothing.
    if (StartPlugin(name) && TabBox.Tag == "0")
        KeepFilter("Plug-in " + name, [name] {
            SaveUndo();
            StartPlugin(name);
        });
    return true;
}

// Run again on frame after frame, a filter plug-in finishes with one picture
// before the next is put in place; its calls are served meanwhile. One that
// takes longer than the longest wait of a plug-in is left to run.
void ServeUntilEnded(ProgramId id) {
    for (int waited = 0; waited < 65535; waited += 10) {
        host().DoEvents();
        if (host().WaitForProgram(id, 10)) break;
    }
    host().DoEvents();
}
}  // namespace

namespace Plugin_Options {
Form form("Plugin_Options", "Execute plugin");
ListBox TabBox(form, "TabBox", [] { TabBox_Click(); });
FileListBox File1(form, "File1", "*_pf");
PictureBox Picture1(form, "Picture1", 200, BarRows);
Label Label1(form, "Label1");
CommandButton Command1(form, "Command1", "OK", [] { Command1_Click(); }, ButtonRole::Default);
CommandButton Command2(form, "Command2", "Cancel", [] { Command2_Click(); }, ButtonRole::Cancel);

namespace {
struct Wiring {
    Wiring() {
        for (const char* t : {"Filter", "Import", "Export", "Brush", "Misc."}) TabBox.items.push_back(t);
        TabBox.ListIndex.setQuietly(0);
        TabBox.Tag = "0";
        TabBox.ToolTipText = "The plugin catagories.";
        File1.ToolTipText = "Execute a plugin";
        File1.DblClick = File1_DblClick;
        Command1.Group = Command2.Group = 1;
        form.Load = [] {
            PrefsCallBack(form);
            PluginPanelOpen = 1;
        };
        form.Unload = Form_Unload;
    }
} wiring;
}  // namespace

void TabBox_Click() {
    const int tab = std::clamp(TabBox.ListIndex.get(), 0, 4);
    TabBox.Tag = std::to_string(tab);
    File1.Pattern = FamilyPattern(tab);
    File1.Path = App.StartDirectory;
    File1.Refresh();
}

void Command1_Click() { RunSelection(); }

// A double click lets the started plug-in's first calls in at once, with the
// canvas locked meanwhile.
void File1_DblClick() {
    if (!RunSelection()) return;
    ++App.LockCount;
    host().DoEvents();
    --App.LockCount;
}

void Command2_Click() {
    PluginPanelOpen = 0;
    Unload(form);
}

void Form_Unload() { PluginPanelOpen = 0; }
}  // namespace Plugin_Options

const char* FamilyPattern(int tab) {
    static const char* const patterns[] = {"*_pf", "*_pi", "*_px", "*_pb", "*_pm"};
    return patterns[std::clamp(tab, 0, 4)];
}

void ShowPluginPanel(int tab) {
    using namespace Plugin_Options;
    TabBox.Tag = std::to_string(tab);
    Show(form, false, &MDIForm1::form);
    TabBox.ListIndex.setQuietly(tab);
    TabBox.notifyView();
    File1.Pattern = FamilyPattern(tab);
    File1.Path = App.StartDirectory;
    File1.Refresh();
    PluginPanelOpen = 1;
}

bool StartPlugin(const std::string& name) {
    ForgetEnded();
    if (name.empty() || !ProgramPresent(name)) return false;
    const ProgramId id = host().StartProgram(ProgramFile(name), {});
    if (id == 0) return false;
    Started.push_back(id);
    if (const long pid = host().ProgramProcessId(id)) host().WhenProgramEnds(id, [pid] { ProcessEnded(pid); });
    if (RerunningKeptFilter()) ServeUntilEnded(id);
    return true;
}

void StartCompanion(const std::string& name, bool undo) {
    if (!ProgramPresent(name)) {
        Kelpwick_MsgBox("The program \"" + name + "\" is not installed in " + App.StartDirectory + ".");
        return;
    }
    if (undo) SaveUndo();
    StartPlugin(name);
}

uint32_t BarRowColour(int y) {
    const double s = (std::sin((255.0 / 14) * y * 0.9 * 0.01745) + 1) / 4 + 0.5;
    return vb::RGB(vb::CInt(s * 240), vb::CInt(s * 84), vb::CInt(s * 24));
}

void DrawBar(int x1, int y1, int x2, int y2) {
    PictureBox& p = Plugin_Options::Picture1;
    for (int y = y1; y <= y2; ++y)
        for (int x = x1; x <= x2; ++x) p.PSet(x, y, BarRowColour(y));
}

void SetPluginProgress(float progress) {
    const int n = static_cast<int>(vb::Int(progress));
    if (n == LastProgress && progress > 0) return;
    LastProgress = static_cast<int16_t>(n);
    if (PluginPanelOpen != 1) return;
    PictureBox& p = Plugin_Options::Picture1;
    if (progress == 0) {
        p.Cls(Plugin_Options::form.BackColor);
        p.Text = "";
        p.Refresh();
        return;
    }
    const int bar = static_cast<int>(vb::Int(progress / 100 * p.Width));
    DrawBar(0, 0, bar, BarRows);
    for (int y = 0; y < p.Height; ++y)
        for (int x = bar + 1; x < p.Width; ++x) p.PSet(x, y, Plugin_Options::form.BackColor);
    p.Text = std::to_string(n) + "%";
    p.Refresh();
}

void TakeLock(const std::string& caller) {
    ++App.LockCount;
    ++LocksHeld[caller];
}

void ReleaseLock(const std::string& caller) {
    --App.LockCount;
    --LocksHeld[caller];
}

void CallerGone(const std::string& caller) {
    CallerPids.erase(caller);
    auto it = LocksHeld.find(caller);
    if (it == LocksHeld.end()) return;
    // Only locks really held are given back; extra unlocks stay as they were.
    if (it->second > 0) App.LockCount -= it->second;
    LocksHeld.erase(it);
}

void CallerProcess(const std::string& caller, long pid) {
    if (pid > 0) CallerPids[caller] = pid;
}

void ProcessEnded(long pid) {
    std::vector<std::string> gone;
    for (const auto& [caller, p] : CallerPids)
        if (p == pid) gone.push_back(caller);
    for (const std::string& caller : gone) CallerGone(caller);
}

int LocksHeldBy(const std::string& caller) {
    auto it = LocksHeld.find(caller);
    return it == LocksHeld.end() ? 0 : it->second;
}

bool WaitOnProgram(int ProcessID) { return host().WaitForProgram(ProcessID, 65535); }

void SetBusStatus(const std::string& text) { Plugin_Options::Label1.Caption = text; }
