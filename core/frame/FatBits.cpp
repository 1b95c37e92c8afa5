// The fat bits panel, still a work in progress.
#include "core/frame/FatBits.h"

#include "core/display/Display.h"
#include "core/frame/MDIForm1.h"
#include "core/framework/Boxes.h"
#include "core/framework/Host.h"
#include "core/framework/PanelLook.h"

namespace FatBits {
Form form("FatBits", "Fat bits");
Label Label1(form, "Label1", "");
Slider HScroll1(form, "HScroll1", 0, 100, 0);
Slider VScroll1(form, "VScroll1", 0, 100, 0);
namespace {
struct Wiring {
    Wiring() {
        form.Load = [] {
            PrefsCallBack(form);
            Kelpwick_MsgBox("The fatbits pannel is a work in progress.");
        };
    }
} wiring;
}  // namespace
}  // namespace FatBits

void Magnifier_Click() { Show(FatBits::form, false, &MDIForm1::form); }
