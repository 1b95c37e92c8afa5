// The about box: it closes on a click anywhere or when it loses the focus.
#pragma once

#include "core/framework/controls.h"

namespace Form3 {
extern Form form;
extern Label Label1;
extern TextBox Text1;
extern Label Label2;
extern CommandButton Command1;
void Command1_Click();
}  // namespace Form3

void about_Click();
