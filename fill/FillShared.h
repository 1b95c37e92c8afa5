// What the fill commands share: the picture size they walk, the planes as the
// kernels take them, the selected gradient, and the ending of a command that
// changed alpha.
#pragma once

#include "native/LinearFill.h"

struct FillArea {
    int W = 0, H = 0;
    bool empty() const { return W <= 0 || H <= 0; }
};
// The size state, held to the main and alpha planes.
FillArea FillSize();
// The main planes and alpha, alpha read as the AlphaOff byte says.
kwlinear::Planes MainPlanes();
kwlinear::GradientSteps SelectedGradient();
// Alpha is the selection shown: checked, masking, the marquee running, redisplayed.
void ShowFillSelection();
