// Fields grown by doubling (the plasma and the recursive Bumpy toy) and the
// multi-octave Perlin Bumpy toy, with their two panels.
#pragma once

#include <cstdint>

#include "core/framework/Plane.h"
#include "core/framework/controls.h"

// The doubling's work plane; the field being grown (0..w, 0..h) is the
// document's TempPlane.
extern Plane DoublePlane;

// Adds noise of amplitude amp to TempPlane(0..w, 0..h), reflected at 0, held at 255.
void DoNoise(int w, int h, int amp);
// TempPlane (0..w, 0..h) doubled into (0..2w, 0..2h).
void DoubleSwapBuffer(int w, int h);

void RenderPlasma(int W, int H, int K);
void RenderColorPlasma(int W, int H, int K);
void RenderBumpy(int W, int H, int K, int slot);
void RenderBumpyPerlin(int W, int H, int K, int scale, int slot);

void Plasma_Click();
void BumpyToy_Click();

namespace PlasmaOptions {
extern Form form;
extern Slider Hscroll7;  // iterations
extern CheckBox Check1;  // colour plasma
extern CommandButton Command1, Command2;
}  // namespace PlasmaOptions

namespace BumpyOptions {
extern Form form;
extern Slider HScroll7, Hscroll2, Hscroll1;  // iterations, scale, gradient index
extern Label Label1;                         // the gradient index as the user counts, from 1
extern Label Label2;                         // the caption of the algorithm list
extern ComboBox Combo3;                      // "Multi-Perlin" or "Recursive subdivision"
extern CommandButton Command1, Command2, Command3;
}  // namespace BumpyOptions
