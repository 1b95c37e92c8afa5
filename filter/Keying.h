// Green and blue screen: a matte pulled from the undo picture, the foreground
// laid over the swap page, "Show matte", and "Matte to alpha", which puts the
// matte straight into the selection.
#pragma once

#include <cstdint>

#include "core/framework/controls.h"

extern uint8_t KeyBusy;  // not 0 while the panel sets its own sliders

// The ramp from the raw key value to the matte: 0 below lo, 255 from hi on.
void BuildKeyLUT(int lo, int hi, uint8_t lut[256]);

void DoGreenscreen();
void DoBluescreen();
void Comp_green_Click();
void comp_blue_Click();

namespace GreenScreen_Control {
extern Form form;
extern Slider HScroll5, hscroll1, hscroll2;
extern CheckBox Check1;
extern PictureBox Picture1;
extern CommandButton Command1, Command2, Command3;
void Command3_Click();  // "Matte to alpha"
}  // namespace GreenScreen_Control

namespace Bluescreen_Control {
extern Form form;
extern Slider HScroll5, hscroll1, hscroll2;
extern CheckBox Check1;
extern PictureBox Picture1;
extern CommandButton Command1, Command2, Command3;
void Command3_Click();
}  // namespace Bluescreen_Control
