// The undo memory budget, saved as a setting and used by the next new buffer.
#pragma once

#include "core/framework/controls.h"

namespace MemoryOptions {
extern Form form;
extern Label Label1;
extern Slider HScroll1;
extern Label Label4;  // "meg" / "megs"
extern Label Label2;
extern CommandButton Command1, Command2;
void Command1_Click();
void Command2_Click();
}  // namespace MemoryOptions

void Memorystuff_Click();
