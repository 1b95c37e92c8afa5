// The small panels of the fills: "Flood" (Form4), the tolerance and the
// anti-aliasing of the flood fill and the magic wand, and "Warp", the bias and
// anti-aliasing of the warp tool.
#pragma once

#include <cstdint>

#include "core/framework/controls.h"

namespace Form4 {
extern Form form;
extern Slider HScroll1;  // "Tolerance"
extern CheckBox Check1;  // "Anti-aliased"
}  // namespace Form4

namespace Warp {
extern Form form;
extern Slider HScroll4;  // "Bias": the warp strength in tenths
extern CheckBox Check1;  // "Anti-aliased"
void HScroll4_Change();
void Check1_Click();
}  // namespace Warp

// The warp tool's settings, kept by the panel's controls.
extern float WarpStrength;       // the power of the fall-off; 1.0 at start-up
extern int16_t WarpAntiAliased;  // -1: bilinear sampling over the drag's box

// The Flood popup's "Flood settings..." and the Warp panel, shown over the frame.
void Flood_Settings_Click();
void Warp_Settings_Click();
