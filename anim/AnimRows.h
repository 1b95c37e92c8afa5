// The animation's rows: its menu entries, the transport bar's controls and
// timer, and the keys that step and stop.
#pragma once

#include "core/framework/Commands.h"

Rows AnimRows();
// The frames go with the document they were made for.
void FramesGoWithDocument();
