// "Adjust value": brightness, contrast and gamma through one table, with the
// picture's histogram drawn below the sliders (drag in it to zoom).
#pragma once

#include <cstdint>

#include "core/framework/controls.h"

// The table, built anew on every call; entry 256 takes the ramp's clamped tail.
extern uint8_t ValueLUT[257];
// Counts per value and channel: Spectrograph[value + 256 * channel].
extern int32_t Spectrograph[768];
extern int16_t SpectrumZoom;
extern uint8_t ValueSliding;
extern int16_t ValueResetting;

// Brightness and gamma 0..200 (100 neutral), contrast -100..100.
void BuildValueTable(float b, float c, float g);
void AddjustValue(float& b, float& c, float& g);
void BuildSpectrograph();
void ColorBalance_Click();

namespace AdjustOptions {
extern Form form;
extern Slider Hscroll1, hscroll2, Hscroll3;
extern PictureBox Picture1;
extern CommandButton Command1, Command2, Command3;
void callValue();
void Command1_Click();
void Command2_Click();
void Command3_Click();
void DrawSpectrograph();
}  // namespace AdjustOptions
