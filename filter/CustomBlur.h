// "Custom blur": a 2-D mask from a radial profile with a bias, cut in lobes by
// the "Edges" and "intensity" sliders; the panel draws the mask, Ok runs it.
#pragma once

#include <cstdint>
#include <vector>

#include "core/framework/controls.h"

extern uint8_t BlurProfile[257];      // entry 256 is always 255
extern std::vector<uint8_t> BlurKernel;  // (0..n, 0..n), stride n + 1
extern int BlurKernelSide;               // n + 1

void BuildBlurProfile(int bias);
// The mask for radius r with e lobe pairs cut to strength s; without the
// angular term when s is 0.
void BuildGuassBuffer_Oct(double r, double e, double s);
// Blurs the undo planes into the main planes with the mask turned into weights.
void megablur(int r, int32_t sum);
void Adjustableblur_Click();

namespace BlurOptions {
extern Form form;
extern Slider HScroll1, hscroll2, hscroll4, hscroll5, hscroll3;
extern CheckBox Check1;
extern PictureBox Picture1, Picture2;
extern CommandButton Command1, Command2;
void Command1_Click();
}  // namespace BlurOptions
