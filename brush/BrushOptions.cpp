// The brush options panel's controls and the table of its slider settings,
// which gives the panel its captions and tooltips, the engine its values and
// Esc the values to put back.
#include "brush/BrushOptions.h"

#include <algorithm>

#include "core/framework/AppState.h"

namespace BrushOptions {
Form form("BrushOptions", "Brush options");
Slider Hscroll1(form, "Hscroll1", 0, 64, 0);
Slider Hscroll4(form, "Hscroll4", 0, 35, 0);
Slider Hscroll3(form, "Hscroll3", 0, 180, 0);
Slider Hscroll2(form, "Hscroll2", 0, 360, 0);
Slider hscroll6(form, "hscroll6", 0, 100, 0);
Slider Hscroll7(form, "Hscroll7", 0, 100, 0);
Slider Hscroll5(form, "Hscroll5", 0, 255, 0);
Slider Hscroll8(form, "Hscroll8", 0, 64, 0);
Slider hscroll9(form, "hscroll9", -25, 25, 0);
CheckBox Check1(form, "Check1", "Pen angle");
Label Label1(form, "Label1", "Anti-aliasing");
OptionButton Option1(form, "Option1", "None", 1, true);
OptionButton Option2(form, "Option2", "5 tap", 1);
OptionButton Option3(form, "Option3", "9 tap", 1);
CheckBox Check2(form, "Check2", "Pressure: size", 1);
CheckBox Check3(form, "Check3", "Pressure: opacity", 1);

// The colour jitters are read as shares: hue of the whole wheel, saturation
// and value of their full range.
const SettingRow Settings[SettingCount] = {
    {&Hscroll1, "Random pos.", "Position jitter of each dab, in pixels", 1, 0},
    {&Hscroll4, "Random size", nullptr, 1, 0},
    {&Hscroll3, "Random angle", nullptr, 1, 0},
    {&Hscroll2, "Random hue", nullptr, 360, 0},
    {&hscroll6, "Random sat.", nullptr, 100, 0},
    {&Hscroll7, "Random value", nullptr, 100, 0},
    {&Hscroll5, "Bleed", "Share of the colour picked up from the picture", 1, 0},
    {&Hscroll8, "Dryout", "Opacity lost with each dab", 1, 0},
    {&hscroll9, "Scale by speed", "Dab size against mouse speed", 1, 0},
};

float PressureFactor(const CheckBox& box) {
    const float p = std::clamp(App.Pressure, 0.0f, 1.0f);
    return box.Value != 0 && p < 1 ? p : 1.0f;
}

float Scaled(Setting s) {
    const SettingRow& row = Settings[s];
    return static_cast<float>(row.slider->Value) / row.scale;
}

namespace {
struct Wiring {
    Wiring() {
        for (const SettingRow& row : Settings) {
            row.slider->Caption.setQuietly(row.caption);
            if (row.tooltip) row.slider->ToolTipText = row.tooltip;
        }
        // The pen angle and the anti-aliasing buttons are not sliders: they
        // keep their captions from above and are wired here.
        Check1.ToolTipText = "The dab turns with the stroke's direction";
        Check2.ToolTipText = "A tablet pen's pressure scales the dab";
        Check3.ToolTipText = "A tablet pen's pressure scales the opacity";
        Option1.Group = Option2.Group = Option3.Group = 1;
    }
} wiring;
}  // namespace
}  // namespace BrushOptions
