// The state the canvas tools keep between the press, the moves and the release:
// the rubber bands' start, the line and curve tools' start, the lasso's points.
#pragma once

#include <cstdint>

namespace canvasstate {
constexpr int LassoMax = 2000;  // the list has room for LassoMax + 1 points
}

extern float DragStartX, DragStartY;  // press of the box tools, window pixels; -1 when none
extern uint8_t LineActive;            // 255 from press to release of the line and curve tools
extern int16_t LineStartX, LineStartY;
extern int16_t LassoActive;  // 255 from press to release of the lasso
extern int16_t LassoCount;
extern int16_t LassoPoints[canvasstate::LassoMax + 1][2];  // (n, 0) is x, (n, 1) is y
// Non-zero: a shape in the alpha fill mode writes pure coverage into alpha;
// zero: it writes the brightness of the delivered colour.
extern uint8_t MaskFromShape;
