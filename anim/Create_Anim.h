// The panel that makes a new animation: a frame count, and what it will cost.
#pragma once

#include "core/framework/controls.h"

namespace Create_Anim {
extern Form form;
extern Label Label1;
extern TextBox Text1;  // the number of frames
extern Label Label2;   // the memory the frames take, against what is free
extern CommandButton Command1, Command2;
void Command1_Click();
void Command2_Click();
void Text1_Change();
}  // namespace Create_Anim
