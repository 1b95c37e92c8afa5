// The sky: octave noise seen through a projection that presses the clouds
// towards a horizon at the bottom row, coloured by a gradient, fogged and
// optionally raised into columns.
#pragma once

#include <cstdint>

#include "core/framework/controls.h"

void RenderPerlinSky();
void Render_Sky_Click();

namespace RenderSky {
extern Form form;
extern Slider HScroll7, Hscroll2, Hscroll1, Hscroll3;  // iterations, scale, gradient index, cloud depth
extern CommandButton Command5;                        // "Fog color": its back colour is the fog
extern CommandButton Command1, Command3, Command2;
// A colour dropped on the fog button.
void Command5_DragDrop(uint32_t colour);
}  // namespace RenderSky

// Where the sky's row y (of rows 0..H1) samples the noise, and how much its
// columns widen; the horizon is the bottom row.
struct SkyRow {
    float v;      // the noise row
    double widen; // factor on the distance from the middle column
};
SkyRow SkyProjection(int y, int H1);
