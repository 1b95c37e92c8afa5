// The brush options panel's controls.
#include "brush/BrushOptions.h"

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

namespace {
struct Wiring {
    Wiring() {
        const std::pair<Slider*, const char*> captions[] = {
            {&Hscroll1, "Random pos."}, {&Hscroll4, "Random size"}, {&Hscroll3, "Random angle"},
            {&Hscroll2, "Random hue"},  {&hscroll6, "Random sat."}, {&Hscroll7, "Random value"},
            {&Hscroll5, "Bleed"},       {&Hscroll8, "Dryout"},      {&hscroll9, "Scale by speed"}};
        for (auto [slider, caption] : captions) slider->Caption.setQuietly(caption);
        Hscroll1.ToolTipText = "Position jitter of each dab, in pixels";
        Hscroll5.ToolTipText = "Share of the colour picked up from the picture";
        Hscroll8.ToolTipText = "Opacity lost with each dab";
        hscroll9.ToolTipText = "Dab size against mouse speed";
        Check1.ToolTipText = "The dab turns with the stroke's direction";
        Option1.Group = Option2.Group = Option3.Group = 1;
    }
} wiring;
}  // namespace
}  // namespace BrushOptions
