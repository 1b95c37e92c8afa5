// The "Save Targa file" panel. OK takes the chosen kind into TargaSaveType;
// Cancel leaves it and marks the save as cancelled.
#include "file/TargaOptions.h"

#include "core/display/Display.h"
#include "core/framework/Host.h"
#include "core/framework/PanelLook.h"
#include "file/TargaFile.h"

uint8_t TargaCancelled = 0;

namespace TargaOptions {
Form form("TargaOptions", "Save Targa file");
OptionButton Option4(form, "Option4", "8 bit (color)", 1);
OptionButton Option1(form, "Option1", "8 bit (grayscale)", 1);
OptionButton Option2(form, "Option2", "24 bit color", 1, true);
OptionButton Option3(form, "Option3", "32 bit (24 + alpha)", 1);
CheckBox Check1(form, "Check1", "RLE compression");
CommandButton Command1(form, "Command1", "OK", [] { Command1_Click(); }, ButtonRole::Default);
CommandButton Command2(form, "Command2", "Cancel", [] { Command2_Click(); }, ButtonRole::Cancel);

namespace {
struct Wiring {
    Wiring() {
        Option2.ToolTipText = "Saves a true color targa.";
        Option3.ToolTipText = "saves a true color  targa with alpha channel";
        Check1.ToolTipText = "Targa file is compressed with Run Length encoding";
        Command1.Group = Command2.Group = 1;
        form.Load = [] { PrefsCallBack(form); };
    }
} wiring;
}  // namespace

void Command1_Click() {
    if (Option4.Value) TargaSaveType = 4;
    if (Option1.Value) TargaSaveType = 3;
    if (Option2.Value) TargaSaveType = 1;
    if (Option3.Value) TargaSaveType = 2;
    TargaCancelled = 0;
    Hide(form);
}

void Command2_Click() {
    TargaCancelled = 1;
    Hide(form);
}
}  // namespace TargaOptions
