// The Gaussian blur (a two-pass raised-cosine window), the simple 3 x 3 blur
// with its fade, light diffusion and the blur of the alpha plane.
#pragma once

#include <cstdint>
#include <vector>

#include "core/framework/controls.h"

extern int16_t BlurRadius;              // always even
extern std::vector<float> BlurWeights;  // half the window, entry 0 the centre

// The window for a radius r: entries 0..Int(r / 2) of the raised cosine, the
// constant 0.0174 kept, so the last weight is not quite 0.
void BuildFastGaussBuff(int r);

namespace Form1 {
// Blurs the undo planes into the main planes with the window, half taps a side.
void FastGaussian(int half);
// The same over the alpha plane in place, whatever AlphaOff says.
void FastGaussianAlpha(int half);
}  // namespace Form1

void FastGaus_Click();
void Simpleblur_Click();
void BlurLightDifuse_Click();
void Alpha_Blur_Click();
void Build_LD_Gauss(int radius, int curve, int level);
void Light_Diffusion(int radius);

namespace FastGaussian {
extern Form form;
extern Slider HScroll1;
extern PictureBox Picture1;
extern CommandButton Command1, Command2;
extern Timer Timer1;  // runs the blur once a drag leaves the program idle
void Picture1_Paint();
}  // namespace FastGaussian

namespace SimpleBlur_Options {
extern Form form;
extern Slider HScroll1;
extern CommandButton Command1, Command2;
}  // namespace SimpleBlur_Options

namespace Adjust_LightDiffusion {
extern Form form;
extern Slider HScroll1, HScroll2, Hscroll3;
extern CommandButton Command1, Command2;
extern Timer Timer1;
}  // namespace Adjust_LightDiffusion
