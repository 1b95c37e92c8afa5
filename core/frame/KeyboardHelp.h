// The keyboard shortcut reference and the help page.
#pragma once

#include <string>

#include "core/framework/controls.h"

namespace KeyboardHelp {
// The reference the panel shows, written from the program's key table when the
// program is put together.
extern std::string KeyReferenceText;
extern Form form;
extern TextBox RichTextBox1;
}  // namespace KeyboardHelp

void Shortcuts_Click();
void Help_Kelhelp_Click();
