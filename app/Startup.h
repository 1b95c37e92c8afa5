// Bringing the program up: the one place that calls into every folder.
#pragma once

#include <string>

namespace Kelpwick {
// Shows the frame, then the tool panel, whose creation runs the start-up steps
// in their order. programDir is where the default files lie.
void Main(const std::string& programDir);
// Gives the menu entries of the other folders their commands. Runs before any
// view of the menus is built; Main runs it too.
void BindMenus();
}  // namespace Kelpwick

namespace Form2 {
void Form_Initialize();
}
