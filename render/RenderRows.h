// The render folder's rows: its entries of the Filter menu.
#pragma once

#include "core/framework/Commands.h"

Rows RenderRows();
