// The Hermite curve of the curve tool: two end points, a bend point taken from
// the cursor, a preview over the canvas while the bend point is chosen, and
// the curve painted as one brush stroke of 17 positions.
#pragma once

#include <cstdint>

namespace curvemode {
constexpr int16_t Preview = 0, Render = 1;
}

// Stores the end points (window pixels) and runs DrawHermite.
void MyCurve(float X1, float X2, float Y1, float Y2, int16_t Mode, int16_t Button);
void GetHermiteValues(float p0x, float p0y, float p1x, float p1y, float t0x, float t0y, float t1x, float t1y,
                      float& ax, float& bx, float& cx, float& dx, float& ay, float& by, float& cy, float& dy);
float Curve_X(float T);
float Curve_Y(float T);
// Tangents from the cursor as bend point, the coefficients, then the preview or the painting.
void DrawHermite(int16_t Mode, int16_t Button);
void DrawCurve(float T0, float T1, float Step, int16_t Mode, int16_t Button);
void RenderCurve(float T0, float T1, float Step, int16_t Mode, int16_t Button);
// Waits, keeping the program responsive, until the next click on the canvas
// ends the wait (or the frame closes); the preview follows the cursor.
// Returns false when the frame closed while waiting.
bool Wait_On_hermite_Value(float X1, float X2, float Y1, float Y2, int16_t Mode, int16_t Button);
// Hides the preview.
void HideCurvePreview();
