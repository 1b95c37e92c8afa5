// The canvas tools, one file each, and what their procedures share. Each tool
// file holds its procedures, its state and its rows (the tool row and the key
// that picks it); canvas/CanvasRows.cpp gathers them.
#pragma once

#include <algorithm>
#include <cstdint>

#include "core/framework/AppState.h"
#include "core/framework/Commands.h"
#include "core/framework/vb.h"

namespace canvastool {
// Window pixels per picture pixel.
inline float Zoom() { return static_cast<float>(App.ZoomPercent) / 100.0f; }
// Positions far outside the window are held to what 16-bit fields can keep.
inline int16_t Round16(float v) { return vb::CInt(std::clamp(v, -32768.0f, 32767.0f)); }
}  // namespace canvastool

Rows NaturalBrushRows();
Rows BasterRows();
Rows BrushSelectRows();
