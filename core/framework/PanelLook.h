// The look every panel shares: its colours and the tile of its background.
#pragma once

#include <cstdint>
#include <vector>

#include "core/framework/controls.h"

// The tile every panel's background is drawn with (Draw_Pattern).
struct PatternTile { int size = 0; std::vector<uint32_t> pixels; };  // 0x00BBGGRR
const PatternTile& Draw_Pattern(Form& panel);
void PrefsCallBack(Form& panel);
