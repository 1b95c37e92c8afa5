// The "Save Targa file" panel: the kind of Targa a save writes.
#pragma once

#include <cstdint>

#include "core/framework/controls.h"

extern uint8_t TargaCancelled;  // 1 when the panel was left through Cancel

namespace TargaOptions {
extern Form form;
extern OptionButton Option4;  // "8 bit (color)"       -> TargaSaveType 4
extern OptionButton Option1;  // "8 bit (grayscale)"   -> 3
extern OptionButton Option2;  // "24 bit color"        -> 1, the default
extern OptionButton Option3;  // "32 bit (24 + alpha)" -> 2
extern CheckBox Check1;       // "RLE compression": shown, read by nobody
extern CommandButton Command1, Command2;  // OK, Cancel
void Command1_Click();
void Command2_Click();
}  // namespace TargaOptions
