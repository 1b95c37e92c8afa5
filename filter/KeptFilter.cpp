// The kept filter: the command that started it, and whether it showed a panel.
// A panel's controls keep their values after Ok, so running the command again
// and pressing Ok gives the same filter with the same settings.
#include "filter/KeptFilter.h"

#include <optional>
#include <set>

#include "core/framework/Host.h"

namespace {
struct Kept {
    std::string caption;
    Command start;
};
std::optional<Kept> kept;
// Started and showing its panel, not yet kept: Ok keeps it.
std::optional<Kept> awaitingOk;
Form* awaitingPanel = nullptr;
bool rerunning = false;

std::string PlainCaption(const MenuEntry& entry) {
    std::string out;
    for (char c : entry.Caption.get())
        if (c != '&') out += c;
    while (!out.empty() && (out.back() == '.' || out.back() == ' ')) out.pop_back();
    return out;
}

// "Adjust > Color": the entry under its submenus, the menu bar's menu left out.
std::string MenuPath(const MenuEntry& entry) {
    std::string path = PlainCaption(entry);
    for (const MenuEntry* up = entry.Parent; up && up->Parent; up = up->Parent) path = PlainCaption(*up) + " > " + path;
    return path;
}

// Runs a command and returns the panel with an Ok button that it brought up.
Form* PanelShownBy(const Command& command) {
    std::vector<Form*> hidden;
    for (Form* f : AllForms())
        if (!f->Visible) hidden.push_back(f);
    command();
    for (Form* f : hidden)
        if (f->Visible && f->button(ButtonRole::Default)) return f;
    return nullptr;
}

// The panel's Ok keeps what it was showing; each Ok button is wrapped once.
void WatchOk(Form& panel) {
    static std::set<CommandButton*> watched;
    CommandButton* ok = panel.button(ButtonRole::Default);
    if (!watched.insert(ok).second) return;
    ok->Click = [was = ok->Click, &panel] {
        if (was) was();
        if (rerunning || awaitingPanel != &panel) return;
        kept = awaitingOk;
        awaitingOk.reset();
        awaitingPanel = nullptr;
    };
}

void Remember(const std::string& caption, const Command& start) {
    if (rerunning) return start();
    Form* panel = PanelShownBy(start);
    if (!panel) {
        kept = Kept{caption, start};
        return;
    }
    awaitingOk = Kept{caption, start};
    awaitingPanel = panel;
    WatchOk(*panel);
}
}  // namespace

std::vector<MenuRow> RememberedFilters(std::vector<MenuRow> rows) {
    for (MenuRow& row : rows) {
        MenuEntry* entry = row.entry;
        row.command = [entry, start = std::move(row.command)] { Remember(MenuPath(*entry), start); };
    }
    return rows;
}

void KeepFilter(const std::string& caption, Command start) {
    if (rerunning) return;
    kept = Kept{caption, std::move(start)};
    awaitingOk.reset();
    awaitingPanel = nullptr;
}

bool RerunningKeptFilter() { return rerunning; }

std::string KeptFilterCaption() { return kept ? kept->caption : std::string(); }

bool RunKeptFilter() {
    if (!kept) return false;
    const Kept filter = *kept;  // the run may not replace it, but hold a copy all the same
    UnseenPanels unseen;
    struct Rerun {
        Rerun() { rerunning = true; }
        ~Rerun() { rerunning = false; }
    } rerun;
    Form* panel = PanelShownBy(filter.start);
    if (panel) panel->button(ButtonRole::Default)->press();
    return true;
}

void ForgetKeptFilter() {
    kept.reset();
    awaitingOk.reset();
    awaitingPanel = nullptr;
}
