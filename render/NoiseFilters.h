// Colour noise and value noise: previews rebuilt from the undo planes, the
// selection scaling the strength of the noise rather than mixing it.
#pragma once

#include "core/framework/controls.h"

void RenderGrain(int amount);
void RenderValueNoise(int amount);

void AddNoise_Click();
void AddValueNoise_Click();

namespace AdjustColorNoise {
extern Form form;
extern Slider Hscroll1;
extern Label Label1;
extern CommandButton Command1, Command2;
}  // namespace AdjustColorNoise

namespace AdjustValueNoise {
extern Form form;
extern Slider Hscroll1;
extern Label Label1;
extern CommandButton Command1, Command2;
}  // namespace AdjustValueNoise
