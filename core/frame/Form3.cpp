// The about box: it closes on a click anywhere or when it loses the focus.
#include "core/frame/Form3.h"

#include "core/display/Display.h"
#include "core/frame/MDIForm1.h"
#include "core/framework/Host.h"
#include "core/framework/PanelLook.h"

namespace Form3 {
Form form("Form3", "About Project Kelpwick");
Label Label1(form, "Label1", "Project Kelpwick");
TextBox Text1(form, "Text1",
              "A natural-media paint and animation program for one artist and one picture.\n"
              "Planar 8-bit buffers, a swap page, an alpha selection and a whole-picture undo ring.");
Label Label2(form, "Label2", "Provided with no warranty of any kind.  Use of this software is  at your own risk.");
CommandButton Command1(form, "Command1", "Ok", [] { Command1_Click(); }, ButtonRole::Default);
namespace {
struct Wiring {
    Wiring() {
        // A page of text the user reads: read-only, never greyed out.
        Text1.MultiLine = true;
        form.Click = [] { Hide(form); };
        form.Deactivate = [] { Hide(form); };
        form.Load = [] { PrefsCallBack(form); };
    }
} wiring;
}  // namespace
void Command1_Click() { Hide(form); }
}  // namespace Form3

void about_Click() { Show(Form3::form, false, &MDIForm1::form); }
