// The panel of the natural brush's randomness, pickup, dryout, pen angle and
// anti-aliasing, and the table of its slider settings.
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
extern CheckBox Check2;  // "Pressure: size"
extern CheckBox Check3;  // "Pressure: opacity"
// The pen's pressure as a factor of the dab's size or opacity: 1 unless the
// box is on and the pen presses less than fully.
float PressureFactor(const CheckBox& box);

// The slider settings, in the order of the panel and of the table below.
enum Setting {
    RandomPosition,  // jitter of each dab's place, in pixels
    RandomSize,      // shrink of the dab, 35 = down to nothing
    RandomAngle,     // turn of the dab, in degrees either way
    RandomHue,       // hue jitter, as a share of the colour wheel
    RandomSaturation,
    RandomValue,
    BleedAmount,  // share of the picked-up colour, out of 255
    Dryout,       // opacity lost with each dab, out of 384
    SpeedScale,   // dab size against mouse speed; negative grows with speed
    SettingCount
};

// One row per slider setting: the slider, its caption and tooltip (none when
// null), what the engine divides the slider's value by, and the value Esc
// puts back.
struct SettingRow {
    Slider* slider;
    const char* caption;
    const char* tooltip;
    float scale;
    int cleared;
};
extern const SettingRow Settings[SettingCount];

// The setting as the engine reads it: the slider's value over its scale.
float Scaled(Setting s);
}  // namespace BrushOptions
