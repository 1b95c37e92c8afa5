// The linear gradient, the alpha fader, the circular gradient and the warp:
// the walk of the drag worked out here, the pixels by the kernels.
#include "fill/LinearTools.h"

#include <cmath>

#include "brush/Geometry.h"
#include "core/display/Display.h"
#include "core/document/Buffers.h"
#include "fill/FillPanels.h"
#include "fill/FillShared.h"
#include "native/LinearFill.h"

namespace {
// The walk along a drag: steps 255 / d apart in its direction, step 0 at its start.
struct Walk {
    float start, cx, cy;
};
bool WalkOf(float X1, float Y1, float X2, float Y2, Walk& w) {
    int16_t d = 0;
    Distance(X1, Y1, X2, Y2, d);
    if (d < 1) return false;
    const float s = static_cast<float>(d) / 255.0f;
    // The angle of the drag back toward its start with y pointing up, which is
    // what the sine's sign below assumes: the rows' step then runs with the drag.
    const float a = CalculateAngle(X1, Y2, X2, Y1);
    w.cx = std::cos(a * 0.017453292f) / s;
    w.cy = -std::sin(a * 0.017453292f) / s;
    w.start = -(X1 * w.cx + Y1 * w.cy);
    return true;
}
}  // namespace

void LinearGradient(float X1, float Y1, float X2, float Y2) {
    const FillArea area = FillSize();
    Walk w;
    if (area.empty() || !WalkOf(X1, Y1, X2, Y2, w)) return;
    kwlinear::LinearGradient(MainPlanes(), area.W, area.H, w.start, w.cx, w.cy, SelectedGradient());
    RedisplayWindow();
}

bool FadeAlong(Plane& plane, float X1, float Y1, float X2, float Y2) {
    const FillArea area = FillSize();
    Walk w;
    if (area.empty() || plane.ubX() != BufA.ubX() || plane.ubY() != BufA.ubY() || !WalkOf(X1, Y1, X2, Y2, w))
        return false;
    kwlinear::LinearAlphaFade(plane.data(), plane.stride(), area.W, area.H, w.start, w.cx, w.cy);
    return true;
}

void LinearAlphaFade(float X1, float Y1, float X2, float Y2) {
    if (FadeAlong(BufA, X1, Y1, X2, Y2)) ShowFillSelection();
}

void CircularGradient(float CX, float CY, float Radius, float Power) {
    const FillArea area = FillSize();
    if (area.empty() || Radius == 0) return;
    kwlinear::CircularGradient(MainPlanes(), area.W, area.H, CX, CY, Radius, Power, SelectedGradient());
    RedisplayWindow();
}

void LinearWarp(float X1, float Y1, float X2, float Y2, float Power) {
    const FillArea area = FillSize();
    int16_t d = 0;
    Distance(X1, Y1, X2, Y2, d);
    // The press's picture is the source: it must be the main planes' shape.
    if (area.empty() || d < 1 || UndoR.ubX() != BufR.ubX() || UndoR.ubY() != BufR.ubY()) return;
    const uint8_t* const src[3] = {UndoR.data(), UndoG.data(), UndoB.data()};
    const kwlinear::WarpLine line{X1, Y1, X2, Y2, static_cast<float>(d), Power, WarpAntiAliased == -1};
    kwlinear::LinearWarp(MainPlanes(), src, area.W, area.H, line);
    RedisplayWindow();
}
