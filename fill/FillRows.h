// The fill folder's rows: the paint fills' menu entries and keys, and the map to a gradient.
#pragma once

#include "core/framework/Commands.h"

Rows FillRows();
