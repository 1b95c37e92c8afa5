// Animation > "Apply to frames...": the kept filter run again on a range of
// frames, one undo step each, with a way to stop between frames.
#pragma once

#include "core/framework/controls.h"

namespace ApplyFrames {
extern Form form;
extern Label Label1;         // the filter that will run
extern TextBox Text1, Text2;  // the first and last frame, numbered as the transport bar shows them
extern Label Label4;         // progress while the frames are worked
extern CommandButton Command1, Command2, Command3;  // Ok, Cancel, Stop
void Command1_Click();
}  // namespace ApplyFrames

namespace MDIForm1 {
void Ani_ApplyFrames_Click();
}  // namespace MDIForm1
