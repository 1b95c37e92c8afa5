// Threshold, power curve and posterize: one-slider panels rebuilt from the undo planes.
#pragma once

#include <cstdint>

#include "core/framework/controls.h"

// All three channels 255 where the undo pixel's truncated average is above
// level, else 0 (swapped when invert is not 0); alpha is not honoured.
void Threashold(int level, int invert);
// Saturation scaled by a bias curve of the luminance: f in 0.01..0.99.
void PowerC(float f);
// Each channel down to a multiple of step: the slider is the size of a step.
void posterfy(int step);

void Adj_Binary_Controst_Click();
void SatXVal_Click();
void ColorPosterize_Click();

namespace BinaryEnhance {
extern Form form;
extern Slider HScroll1;
extern CheckBox Check1;
extern CommandButton Command1, Command2;
}  // namespace BinaryEnhance

namespace PowerCurve {
extern Form form;
extern Slider Hscroll1;
extern CommandButton Command1, Command2;
}  // namespace PowerCurve

namespace Poster {
extern Form form;
extern Slider HScroll1;
extern CommandButton Command1, Command2;
}  // namespace Poster
