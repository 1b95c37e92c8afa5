// The canvas tools' shared state.
#include "canvas/CanvasState.h"

float DragStartX = -1.0f, DragStartY = -1.0f;
uint8_t LineActive = 0;
int16_t LineStartX = 0, LineStartY = 0;
int16_t LassoActive = 0;
int16_t LassoCount = 0;
int16_t LassoPoints[canvasstate::LassoMax + 1][2] = {};
uint8_t MaskFromShape = 0;
