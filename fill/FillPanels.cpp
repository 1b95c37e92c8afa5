// The panels "Flood" and "Warp": their controls and the state they set.
#include "fill/FillPanels.h"

#include "core/frame/MDIForm1.h"
#include "core/framework/Host.h"
#include "core/framework/PanelLook.h"

float WarpStrength = 1.0f;
int16_t WarpAntiAliased = 0;

namespace Form4 {
Form form("Form4", "Flood");
Slider HScroll1(form, "HScroll1", 0, 255, 32);
CheckBox Check1(form, "Check1", "Anti-aliased");
namespace {
struct Wiring {
    Wiring() {
        HScroll1.Caption.setQuietly("Tolerance");
        HScroll1.ToolTipText = "How far a colour may lie from the pressed one and still be filled.";
        Check1.ToolTipText = "The boundery of the fill is smoothed outward.";
        form.Load = [] { PrefsCallBack(form); };
    }
} wiring;
}  // namespace
}  // namespace Form4

namespace Warp {
Form form("Warp", "Warp");
Slider HScroll4(form, "HScroll4", 1, 50, 10, [] { HScroll4_Change(); });
CheckBox Check1(form, "Check1", "Anti-aliased", 0, [] { Check1_Click(); });
namespace {
struct Wiring {
    Wiring() {
        HScroll4.Caption.setQuietly("Bias");
        HScroll4.ToolTipText = "How the drag falls off from its end: low values move a wide area, high values a small one.";
        Check1.ToolTipText = "Samples between pixels, inside the drag's reach only.";
        form.Load = [] { PrefsCallBack(form); };
    }
} wiring;
}  // namespace

void HScroll4_Change() { WarpStrength = static_cast<float>(HScroll4.Value) / 10.0f; }
void Check1_Click() { WarpAntiAliased = Check1.Value ? -1 : 0; }
}  // namespace Warp

void Flood_Settings_Click() { Show(Form4::form, false, &MDIForm1::form); }
void Warp_Settings_Click() { Show(Warp::form, false, &MDIForm1::form); }
