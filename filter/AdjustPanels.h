// "Adjust color", saturation and "Adjust hue, saturation, value": panels that
// rebuild the picture from the undo planes on every slider move.
#pragma once

#include <cstdint>

#include "core/framework/Plane.h"
#include "core/framework/controls.h"

// Per channel v := CInt(undo * factor), at most 255. The plain form works the
// selection's box with the inline alpha mix; the channel procedures use the kernel.
void ColorBalance(float r, float g, float b);
void ColorRedBalance(float f);
void ColorGreenBalance(float f);
void ColorBlueBalance(float f);
void ColorBalance2_Click();

namespace AdjustColor {
extern Form form;
extern Slider HScroll6, Hscroll5, Hscroll4;
extern CommandButton Command1, Command2, Command3;
}  // namespace AdjustColor

// new := (undo * s + grey * (255 - s)) \ 255 with grey the truncated average.
void AddjustSaturation(float s);
void Adjust_Sat_Click();
namespace AddjustSat {
extern Form form;
extern Slider HScroll1;
extern CommandButton Command1, Command2;
}  // namespace AddjustSat

// The HSV image of the undo planes while the hue panel is open.
extern Grid<float> HuePlane, SatPlane, ValPlane;
extern uint8_t HueResetting;
void InitHSV();
void AlterHue(int hue, int sat, int val);
void Addjust_Hue_Click();
namespace AdjustHue {
extern Form form;
extern Slider Hscroll1, Hscroll2, Hscroll3;
extern CommandButton Command1, Command2, Command3;
}  // namespace AdjustHue
