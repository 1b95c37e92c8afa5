// The zoom panel: a slider from 25 to 600 percent and eight quick buttons.
#pragma once

#include "core/framework/controls.h"

namespace Nav {
extern Form form;
extern Slider HScroll1;  // zoom percent 25..600
extern Label Label1;
extern CommandButton Image8, Image7, Image1, Image2, Image3, Image4, Image5, Image6;
extern Shape Shape1;     // marker of the zoom scale
void HScroll1_Change();
}  // namespace Nav

void Magnify_Click();
