// The core's own rows: the commands of its menu entries and keys. For the
// start-up composition only.
#pragma once

#include "core/framework/Commands.h"

Rows FrameRows();
