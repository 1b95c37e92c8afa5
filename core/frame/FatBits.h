// The fat bits panel, still a work in progress.
#pragma once

#include "core/framework/controls.h"

namespace FatBits {
extern Form form;
extern Label Label1;
extern Slider HScroll1, VScroll1;
}  // namespace FatBits

void Magnifier_Click();
