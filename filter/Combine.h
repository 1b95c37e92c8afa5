// Combining the main picture with the swap page: the formulas of the menu, the
// two alpha blits, "Mix buffers..." and the emboss by the swap page.
#pragma once

#include "core/framework/controls.h"

namespace Form1 {
// Main := main + swap (held at 255) and main - swap (held at 0), with the
// after-pass; no undo step, so that a preview can run them.
void CombineAdd();
void CombineSub();
}  // namespace Form1

void CombineAdd_Click();
void CombineSub_Click();
void CombineMult_Click();
void CombineScreen_Click();
void CombineDiv_Click();
void CombineAroundGrey_Click();
void CombineLuminance_Click();
void CombineDifference_Click();
void CombineTexture_Click();
void Combinelighter_Click();
void CombineDarker_Click();
void Combine_binary_Click();
void CobineOverlay_Click();
void Premult_Click();
void CombineMix_Click();
void CombineMixBuffs(int amount);
// Lights the picture by the swap page from one of eight directions, 0 top left
// round to 7 left.
void EmbossMap(int direction);

namespace MixBufs {
extern Form form;
extern Slider HScroll1;
extern CommandButton Command1, Command2;
}  // namespace MixBufs
