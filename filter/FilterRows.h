// The filter folder's rows. For the start-up composition only.
#pragma once

#include "core/framework/Commands.h"

Rows FilterRows();
