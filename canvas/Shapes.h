// Rectangles and ellipses on the picture or into alpha, the selection from a
// rectangle, an ellipse or the lasso, and the small selection helpers. The
// press position is DragStartX, DragStartY (window pixels, canvas/CanvasState.h).
#pragma once

#include <cstdint>

#include "core/document/AlphaBounds.h"

// The box of non-zero alpha as FindSelection finds it (no alpha: a box no loop enters).
extern int16_t SelLeft, SelRight, SelTop, SelBottom;

// X, Y: the release, window pixels.
void DrawRectangle(int16_t Button, int16_t Shift, float X, float Y);
void DrawCircle(int16_t Button, int16_t Shift, float X, float Y);
// Value goes into alpha: 255 adds, 0 subtracts.
void RectToAlpha(float X, float Y, uint8_t Value);
void CircleToAlpha(float X, float Y, uint8_t Value);
namespace polymode {
constexpr int Replace = 0, Add = 1, Subtract = 2;
}
void PolyToAlpha(int Mode);
// 0: the primary colour, any other value the secondary, through the selection.
void ClearSelected(int Which);
void AlphaToBlack();
void FindSelection();
// Alpha becomes the selection shown: checked, masking, the marquee running.
void ShowNewSelection();
