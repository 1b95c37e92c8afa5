// The automation class on the session bus: one object whose calls are served
// from the operation table, between the events of the program's one thread.
#pragma once

#include <string>

namespace Automation {
// Claims the bus name (a second running program takes a name of its own and
// says so), registers the object and puts the name in KELPWICK_BUS_NAME for
// the plug-ins this program starts. Returns the name, "" without a session bus.
std::string StartAutomation();
void StopAutomation();
}  // namespace Automation
