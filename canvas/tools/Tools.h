// The canvas tools, one file each, and what their procedures share. Each tool
// file holds its procedures, its state and its tool row; canvas/CanvasRows.cpp
// gathers them, and the keys that pick them stand in the program's key table.
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
// The rubber line of the linear and curve tools: the press starts it, moves stretch it.
void StartRubberLine(float X, float Y);
void StretchRubberLine(float X, float Y);
// The rubber box of the shape tools, corner to corner or centre to corner.
void StartRubberBox(float X, float Y, bool oval);
void StretchRubberBox(int16_t Button, float X, float Y, bool fromCentre);
// The rubber box's release: it hides and the crosshair comes back.
void EndRubberBox(float X, float Y);
}  // namespace canvastool

// The shape tools picked with their fill, the button's caption saying which.
void PickRectangle(bool filled);
void PickEllipse(bool filled);

Rows NaturalBrushRows();
Rows BasterRows();
Rows LineRows();
Rows CurveRows();
Rows RectangleRows();
Rows EllipseRows();
Rows LassoRows();
Rows RectAlphaRows();
Rows EllipseAlphaRows();
Rows TextRows();
Rows BrushSelectRows();
Rows FloodRows();
Rows WandRows();
