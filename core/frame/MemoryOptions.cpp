// The undo memory budget, saved as a setting and used by the next new buffer.
#include "core/frame/MemoryOptions.h"

#include "core/display/Display.h"
#include "core/frame/MDIForm1.h"
#include "core/framework/AppState.h"
#include "core/framework/Boxes.h"
#include "core/framework/Host.h"
#include "core/framework/Settings.h"
#include "core/framework/PanelLook.h"

namespace MemoryOptions {
Form form("MemoryOptions", "Memory options");
Label Label1(form, "Label1", "Undo memory");
Slider HScroll1(form, "HScroll1", 1, 2047, 14, [] {
    Label4.Caption = HScroll1.Value == 1 ? "meg" : "megs";
});
Label Label4(form, "Label4", "megs");
Label Label2(form, "Label2", "Settings will take effect next time a buffer is allocated.");
CommandButton Command1(form, "Command1", "OK", [] { Command1_Click(); }, ButtonRole::Default);
CommandButton Command2(form, "Command2", "Cancel", [] { Command2_Click(); }, ButtonRole::Cancel);
namespace {
struct Wiring {
    Wiring() {
        Command1.Group = Command2.Group = 1;
        HScroll1.Group = Label4.Group = 2;
        form.Load = [] { PrefsCallBack(form); };
    }
} wiring;
}  // namespace

void Command1_Click() {
    App.UndoMegs = static_cast<int16_t>(HScroll1.Value);
    SaveSetting("mem_MaxUndo", std::to_string(App.UndoMegs));
    Hide(form);
    Kelpwick_MsgBox("Settings saved.");
}

void Command2_Click() {
    HScroll1.Value = App.UndoMegs;
    Hide(form);
}
}  // namespace MemoryOptions

void Memorystuff_Click() {
    MemoryOptions::HScroll1.Value = App.UndoMegs;
    MemoryOptions::Label4.Caption = App.UndoMegs == 1 ? "meg" : "megs";
    Show(MemoryOptions::form, false, &MDIForm1::form);
}
