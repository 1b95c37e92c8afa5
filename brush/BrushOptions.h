// The panel of the natural brush's randomness, pickup, dryout, pen angle and
// anti-aliasing.
#pragma once

#include "core/framework/controls.h"

namespace BrushOptions {
extern Form form;
extern Slider Hscroll1;  // "Random pos." 0..64
extern Slider Hscroll4;  // "Random size" 0..35
extern Slider Hscroll3;  // "Random angle" 0..180
extern Slider Hscroll2;  // "Random hue" 0..360
extern Slider hscroll6;  // "Random sat." 0..100
extern Slider Hscroll7;  // "Random value" 0..100
extern Slider Hscroll5;  // "Bleed" 0..255
extern Slider Hscroll8;  // "Dryout" 0..64
extern Slider hscroll9;  // "Scale by speed" -25..25
extern CheckBox Check1;  // "Pen angle"
extern Label Label1;     // "Anti-aliasing"
extern OptionButton Option1, Option2, Option3;  // none, 5-tap, 9-tap
}  // namespace BrushOptions
