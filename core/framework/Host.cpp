// Host installation, form show/hide, and the guard around event procedures.
#include "core/framework/Host.h"

#include <chrono>
#include <thread>

#include "core/framework/controls.h"

namespace {
Host* current = nullptr;
}

Host& host() { return *current; }
void SetHost(Host* h) { current = h; }

void Host::Sleep(int milliseconds) { std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds)); }

ProgramId Host::StartProgram(const std::string&, const std::vector<std::string>&) { return 0; }
bool Host::ProgramRunning(ProgramId) { return false; }
bool Host::WaitForProgram(ProgramId, int) { return true; }
ProgramExit Host::ProgramResult(ProgramId) { return {}; }
void Host::KillProgram(ProgramId) {}
void Host::ReleaseProgram(ProgramId) {}
long Host::ProgramProcessId(ProgramId) { return 0; }
void Host::WhenProgramEnds(ProgramId, std::function<void()>) {}
std::optional<std::string> Host::ProgramOutput(const std::string&, const std::vector<std::string>&, int) {
    return std::nullopt;
}

namespace {
int unseenPanels = 0;
}  // namespace

UnseenPanels::UnseenPanels() { ++unseenPanels; }
UnseenPanels::~UnseenPanels() { --unseenPanels; }

void Show(Form& f, bool modal, Form* owner) {
    if (!f.Loaded) {
        f.Loaded = true;
        if (f.Load) f.Load();
    }
    f.Modal = modal;
    if (unseenPanels > 0 && !modal) return f.Visible.setQuietly(true);
    f.Visible = true;
    host().ShowForm(f, modal, owner);
}

void Hide(Form& f) {
    if (unseenPanels > 0 && !f.Modal) return f.Visible.setQuietly(false);
    f.Visible = false;
    host().HideForm(f);
}

void Unload(Form& f) {
    if (!f.Loaded && !f.Visible) return;
    if (f.Unload) f.Unload();
    f.Visible = false;
    f.Loaded = false;
    host().UnloadForm(f);
}
