// Z noise: three-dimensional noise whose depth is the picture's brightness, so
// that the image bends the noise; or the custom brush ridden as a texture over
// the same tilted surface.
#pragma once

#include "core/framework/controls.h"

void DrawZnoise();
void Combine_Znoise_Click();

namespace ZnoiseOptions {
extern Form form;
extern Slider Hscroll1, hscroll2, Hscroll3;  // scale, Z scale, gradient index
// Check1 carries "Use gradient", Check2 "Map brush", Check3 "Depth cue".
extern CheckBox Check1, Check2, Check3;
extern CommandButton Command1, Command2;
}  // namespace ZnoiseOptions
