// Fade last action: blends the picture after the last action back toward the one before it.
#pragma once

#include "core/framework/controls.h"

namespace FadeLast {
extern Form form;
// Blends the picture after the last action toward the one before it by amount 0..255.
void FadeLast(int amount);
extern Slider HScroll1;
extern CommandButton Command1, Command2;
void HScroll1_Change();
void Command1_Click();
void Command2_Click();
}  // namespace FadeLast

void FadePrevious_Click();
