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
// The zooms of the quick buttons, smallest first: the steps the wheel goes through.
extern const int ZoomSteps[8];
// The next step above (direction > 0) or below the zoom given; the same zoom at either end.
int NextZoomStep(int percent, int direction);
// Listens to the display: the slider and its number show App.ZoomPercent.
void FollowZoom();
// One wheel notch with the zoom key held: a step in or out about the view
// position (vx, vy).
void WheelZoom(int direction, double vx, double vy);
}  // namespace Nav

void Magnify_Click();
