// The panel "Fill": the gradient strip and its entries, the sweep editor, the
// gradient files, and the fill settings (style, mode, noise).
#pragma once

#include <cstdint>
#include <string>

#include "core/framework/controls.h"

namespace Gradient {
extern Form form;
extern Slider HScroll1;        // GradientIndex 0..7
extern PictureBox Picture2;    // the gradient, swept with the mouse
extern PictureBox Picture3;    // the entries; wells are dropped here
extern ListBox TabBox;         // red, green, blue, opacity, "R,G,B"
extern ComboBox Combo1;        // "Linear", "Cubic"
extern CommandButton Command4, Command2, Command3, Command6;
extern CheckBox Check3;        // auto smooth while sweeping
extern ComboBox Combo2;        // open a gradient file
extern FileListBox File1;      // "*.grd"
// The fill styles in their order: colour, horizontal, fit horizontal, vertical,
// circular, tile brush, fit brush.
extern OptionButton Option5, Option6, Option7, Option8, Option9, Option10, Option11;
extern ComboBox Combo3;        // fill mode
extern Slider HScroll2;        // NoiseAmount
extern CheckBox Check1;        // NoiseMode: colour (on) or value noise
extern Timer Timer1;           // smoothing while the mouse is down

void HScroll1_Change();
void Picture2_Paint();
void Picture2_MouseDown(int button, int shift, float x, float y);
void Picture2_MouseMove(int button, int shift, float x, float y);
void Picture2_MouseUp(int button, int shift, float x, float y);
void Picture3_MouseDown(int button, int shift, float x, float y);
// A colour dropped on the entry strip at picture position x.
void Picture3_DragDrop(float x, uint32_t colour);
void RedrawGradEntries();
void Command4_Click();
void Command2_Click();
void Command3_Click();
void Command6_Click();
void Combo2_GotFocus();
void Combo2_Click();
void Combo3_Click();
void HScroll2_Change();
void Check1_Click();
void Timer1_Timer();
void Form_DblClick();
// Repaints both strips after the store changed behind the panel's back.
void Refresh();
}  // namespace Gradient

void win_Gradient_Click();
// The gradient colour keys ] and [: step through the current gradient into the primary colour.
void NextGradientColour();
void PreviousGradientColour();
// Where the colour map back door writes: a file in the user's home folder.
std::string ColourMapPath();
