// The plug-in host's menu entries, key and button.
#pragma once

#include "core/framework/Commands.h"

Rows PluginRows();
