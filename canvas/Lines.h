// The line drawers on the picture; the geometry helpers the tools share come
// with them. W and H are the canvas size the caller read; the drawers never
// reach beyond the planes whatever they are given.
#pragma once

#include <cstdint>

#include "brush/Geometry.h"  // Distance and CalculateAngle

void MidPointLine(int32_t X1, int32_t Y1, int32_t X2, int32_t Y2, int32_t R, int32_t G, int32_t B, int32_t W,
                  int32_t H);
void AALine(int32_t X1, int32_t Y1, int32_t X2, int32_t Y2, int32_t R, int32_t G, int32_t B, int32_t W, int32_t H);
void AAFloatLine(float X1, float Y1, float X2, float Y2, int32_t R, int32_t G, int32_t B, int32_t W, int32_t H);
void GradAALine(int32_t X1, int32_t Y1, int32_t X2, int32_t Y2, int32_t R1, int32_t G1, int32_t B1, int32_t R2,
                int32_t G2, int32_t B2, int32_t W, int32_t H);

