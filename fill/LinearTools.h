// The gradient tools of the linear tool family and the warp tool, in picture
// pixels. A drag shorter than a pixel does nothing.
#pragma once

#include "core/framework/Plane.h"

// The selected gradient along the drag, from its start to its end, over the
// whole picture: before the start its first step, past the end its last.
void LinearGradient(float X1, float Y1, float X2, float Y2);
// The same walk thins alpha: untouched at the start, cleared past the end.
void LinearAlphaFade(float X1, float Y1, float X2, float Y2);
// That walk over any plane of the picture's shape; false for a drag under a pixel.
bool FadeAlong(Plane& plane, float X1, float Y1, float X2, float Y2);
// The gradient outwards from (CX, CY): its last step from Radius on.
void CircularGradient(float CX, float CY, float Radius, float Power);
// Drags the picture as it was at the press from (X1, Y1) to (X2, Y2),
// falling off with the distance from the end by Power.
void LinearWarp(float X1, float Y1, float X2, float Y2, float Power);
