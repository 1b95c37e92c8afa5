// Bringing the program up: the one place that calls into every folder.
#pragma once

#include <string>

namespace Kelpwick {
// Shows the frame, then the tool panel, whose creation runs the start-up steps
// in their order. programDir is where the default files lie.
void Main(const std::string& programDir);
// Puts the program together: every folder's menu entries, keys and tools, and
// the hooks between the layers. Runs once, before any view of the menus is
// built; Main runs it too, and so does every test program.
void Compose();
}  // namespace Kelpwick

namespace Form2 {
void Form_Initialize();
}
