// The keyboard shortcut reference, read from the program folder, and the help page.
#pragma once

#include "core/framework/controls.h"

namespace KeyboardHelp {
extern Form form;
extern TextBox RichTextBox1;
}  // namespace KeyboardHelp

void Shortcuts_Click();
void Help_Kelhelp_Click();
