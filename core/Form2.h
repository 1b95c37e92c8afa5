// The tool panel: colours, opacity, step and the info box.
#pragma once

#include "core/controls.h"

namespace Form2 {
extern Form form;
extern Shape Shape4;               // primary colour (FillColor, 0x00BBGGRR)
extern Shape Shape1;               // secondary colour
extern Slider HScroll1, hscroll2, hscroll3;  // primary red, green, blue
extern Slider HScroll4;            // "Opacity of brush and fill tools."
extern Slider slider1;             // "Step value for brushes in pixels."
extern Label Info1;                // written by PrintUserInfo
extern CommandButton Command1;     // clear the buffer
extern PictureBox Picture27;       // small preview of the picture
extern CommandButton LayerButton;  // opens the Layers menu

void Command1_Click();
void Picture27_Paint();
void HScroll1_Change();
uint32_t PrimaryColour();
uint32_t SecondaryColour();
}  // namespace Form2

void GetCurrentInfo();
void PrintUserInfo();
