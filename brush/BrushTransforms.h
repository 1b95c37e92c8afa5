// Changes of the custom brush in place: flips, quarter turns, rotation by any
// angle, resampling and making it tile without a seam. The brush keeps its mode.
#pragma once

#include "core/framework/controls.h"

// The brush turned by Degrees about its centre, the box round it the new size.
void RotateBrush(int Degrees);
// The brush resampled bilinearly to Width by Height.
void ResampleBrush(int Width, int Height);
// The brush trimmed by TrimX, TrimY percent, the trimmed part faded into the
// opposite edge; false when the trim leaves no overlap.
bool MakeSeamless(int TrimX, int TrimY);

namespace MDIForm1 {
void Cust_flipx_Click();
void Cust_Flipy_Click();
void Cust_Rotate_Click();
void Cust_RotateCC_Click();
void Cust_RotateArbitrary_Click();
void Cust_Scale_Click();
void brush_Seamless_Click();
}  // namespace MDIForm1

namespace RotateBrush_Options {
extern Form form;
extern Slider Hscroll1;          // degrees
extern PictureBox Picture1;      // preview
extern CommandButton Command1;   // Ok
extern CommandButton Command2;   // Cancel
void Hscroll1_Change();
}  // namespace RotateBrush_Options

namespace BrushResample {
extern Form form;
extern TextBox Text1, Text2;  // width, height
extern CheckBox Check1;       // "Constrain"
extern Slider Hscroll1;       // scale in percent, writing both boxes
extern CommandButton Command1, Command2;
void Command1_Click();
}  // namespace BrushResample

namespace Seamless {
extern Form form;
extern Slider HScroll1, hscroll2;  // trim x, trim y (percent)
extern CommandButton Command1, Command2;
void Command1_Click();
}  // namespace Seamless
