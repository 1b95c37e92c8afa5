// The lasso: a held button collects the outline, drawn over the screen image
// in inverted colours as it grows; the release fills it into alpha by the
// even-odd rule, adding to the selection, or with Alt and the right button subtracting.
#include <algorithm>
#include <cmath>

#include "canvas/CanvasState.h"
#include "canvas/Shapes.h"
#include "canvas/tools/Tools.h"
#include "core/display/Display.h"
#include "core/document/Buffers.h"
#include "core/frame/Form2.h"
#include "core/framework/Codes.h"
#include "core/framework/Host.h"

namespace {
using canvastool::Round16;

// One segment in window pixels inverted on the screen image; the next redisplay
// puts the picture back.
void InvertSegment(int x1, int y1, int x2, int y2) {
    if (DisplayBits != 32 || RefreshBuff32.empty()) return;
    const int n = std::max(std::abs(x2 - x1), std::abs(y2 - y1));
    const int w = std::min(ScreenBitmap.Width, RefreshStride32), h = std::min(ScreenBitmap.Height, RefreshRows32);
    for (int i = 0; i <= n; ++i) {
        const double t = n == 0 ? 0.0 : static_cast<double>(i) / n;
        const int x = static_cast<int>(std::lround(x1 + (x2 - x1) * t)) - ScreenBitmap.OriginX;
        const int y = static_cast<int>(std::lround(y1 + (y2 - y1) * t)) - ScreenBitmap.OriginY;
        if (x >= 0 && y >= 0 && x < w && y < h) RefreshBuff32[static_cast<size_t>(y) * RefreshStride32 + x] ^= 0xFFFFFFu;
    }
    const int ox = ScreenBitmap.OriginX, oy = ScreenBitmap.OriginY;
    host().CanvasImageChanged(std::min(x1, x2) - ox, std::min(y1, y2) - oy, std::max(x1, x2) - ox + 1,
                              std::max(y1, y2) - oy + 1);
}

void Down(int16_t, int16_t, float, float) {
    LassoActive = 255;
    LassoCount = 0;
}

// The list holds LassoMax + 1 points: once full, each new point replaces the last.
void Move(int16_t, int16_t, float X, float Y) {
    if (LassoActive != 255) return;
    LassoPoints[LassoCount][0] = Round16(X);
    LassoPoints[LassoCount][1] = Round16(Y);
    if (LassoCount > 0)
        InvertSegment(LassoPoints[LassoCount - 1][0], LassoPoints[LassoCount - 1][1], LassoPoints[LassoCount][0],
                      LassoPoints[LassoCount][1]);
    LassoCount = static_cast<int16_t>(std::min(LassoCount + 1, canvasstate::LassoMax));
}

void Up(int16_t Button, int16_t Shift, float, float) {
    if (LassoActive != 255) return;
    LassoActive = 0;
    RedisplayWindow();
    // The lasso adds to the selection in force; with none in force (alpha off,
    // the plane all through) adding would select everything, so it starts one.
    const bool subtract = (Shift & ShiftState::Alt) != 0 && Button == MouseButton::Right;
    PolyToAlpha(subtract ? polymode::Subtract : (AlphaOn() ? polymode::Add : polymode::Replace));
}
}  // namespace

Rows LassoRows() {
    Rows rows;
    ToolRow tool{&Form2::Option13, "Lasso to alpha.  Yee-haw!"};
    tool.down = Down;
    tool.move = Move;
    tool.up = Up;
    rows.tools = {tool};
    return rows;
}
