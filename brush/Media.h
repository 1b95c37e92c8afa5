// Media presets: named sets of brush control values, chosen from the two
// lists of the tool panel or from the Media popup menu, and the airbrush maker.
#pragma once

#include <cstdint>

#include "brush/BrushOptions.h"
#include "core/framework/Commands.h"
#include "core/framework/controls.h"

// One preset: the values it writes. Sliders left at 0 keep the reset's value;
// a paper strength of NoPaper keeps the strength that stood before.
struct MediaPreset {
    const char* name;   // the variant's text in Combo1
    const char* menu;   // its entry in the Media popup
    int8_t style;       // its style in Combo2
    int8_t image;       // stock brush picture
    int8_t aa;          // 0 none, 1 five taps, 2 nine taps
    int16_t size, opacity, step;
    bool bump, dry, neg;
    int16_t paper;
    int16_t options[BrushOptions::SettingCount];  // the brush options' sliders, in their table's order
    const char* other;  // nullptr, "x" for pen angle, or the painting mode's text
};
constexpr int16_t NoPaper = -1;
constexpr int MediaStyleCount = 8;
extern const char* const MediaStyles[MediaStyleCount];
constexpr int MediaPresetCount = 52;
extern const MediaPreset MediaPresets[MediaPresetCount];

// Resets the brush and writes the preset named by Combo1's text.
void SelectNewMedia();
// Fills Combo1 with the variants of Combo2's style and selects the first.
void SetupListbox();
// The media lists at start-up: the styles, and the first style's variants.
void StartupMedia();
// A round custom brush of coverage falling off by the bias curve, in matte mode.
void MakeAirbrush(int Radius, int Bias);
// The Media popup menu of a right click on the brush tool, and its rows.
MenuEntry& MediaMenu();
std::vector<MenuRow> MediaMenuRows();

namespace Menus {
// The single-pixel brush (key .).
void Default_Single_Click();
}  // namespace Menus

namespace Form2 {
void Combo2_Click();
void Combo1_Click();
}  // namespace Form2

namespace Airbrush_Options {
extern Form form;
extern Slider HScroll5;  // "Radius" 1..200
extern Slider HScroll4;  // "Bias" -99..99
extern CommandButton Command1;
}  // namespace Airbrush_Options
