// Bringing the program up: the one place that calls into every folder.
#pragma once

#include <string>

namespace Kelpwick {
// Shows the frame, then the tool panel, whose creation runs the start-up steps
// in their order. programDir is where the default files lie.
void Main(const std::string& programDir);
}  // namespace Kelpwick

namespace Form2 {
void Form_Initialize();
}
