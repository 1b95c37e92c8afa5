// The conversion of the main buffer to 8-bit colour for a colour-mapped save.
#pragma once

#include <cstdint>

#include "core/framework/Plane.h"

// The popularity quantiser: indices into IndexPlane (W x H) and 256 packed colours.
void Quantize8(Plane& IndexPlane, uint32_t* Palette, int Width, int Height);
