// The keyboard shortcut reference and the help page.
#include "core/frame/KeyboardHelp.h"

#include <filesystem>

#include "core/display/Display.h"
#include "core/frame/MDIForm1.h"
#include "core/framework/AppState.h"
#include "core/framework/Boxes.h"
#include "core/framework/Host.h"
#include "core/framework/PanelLook.h"

namespace KeyboardHelp {
std::string KeyReferenceText;
Form form("KeyboardHelp", "Keyboard shortcut reference");
TextBox RichTextBox1(form, "RichTextBox1");
namespace {
struct Wiring {
    Wiring() {
        RichTextBox1.MultiLine = true;
        form.Load = [] {
            PrefsCallBack(form);
            RichTextBox1.Text = KeyReferenceText;
        };
    }
} wiring;
}  // namespace
}  // namespace KeyboardHelp

void Shortcuts_Click() { Show(KeyboardHelp::form, false, &MDIForm1::form); }

// Without a browser the user is told where the page is, so that it can be opened by hand.
void Help_Kelhelp_Click() {
    const std::string page = ProgramFile("Kelhelp.html");
    if (!host().OpenDocument(page))
        Kelpwick_MsgBox(
            "Can't locate the default browser.  The help file may be found in the directory where this software is "
            "installed.\n" + std::filesystem::absolute(page).string());
}
