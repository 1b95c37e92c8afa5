// The two paint fills: a brushed coat of the primary colour laid into the
// selection (the whole picture while alpha is off), thinning toward its edges
// in the grain of the stroke texture and the paper.
#pragma once

#include <cstdint>

#include "core/framework/Plane.h"

// The picture of brush strokes the coat takes its grain from, read at start-up.
extern Plane StrokeTexture;
// Reads "StrokeTexture.pgm" of the program folder; a missing or damaged file
// leaves a flat texture, so that the fills still work.
void StartupStrokeTexture();

// "Paint fill", key w.
void Buffer_Paint_Click();
// "Adjustable paint", key e: the user first draws a band across the canvas
// (the press is ignored, the release ends it); the coat fades along it.
void Buffer_Adjustablepaint_Click();
// Waits for the band: its start is where the cursor is now, its end follows
// the cursor until a release. False when the program closed meanwhile.
// X1..Y2 receive the band in window pixels.
bool Wait_On_PaintFill_Value(int16_t& X1, int16_t& Y1, int16_t& X2, int16_t& Y2);
