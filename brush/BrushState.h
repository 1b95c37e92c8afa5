// The natural brush engine's state: the dab masks, the stepping along a stroke,
// the colours of the current dab and the stroke's origin and clone offset.
#pragma once

#include <cstdint>

#include "native/BrushKernels.h"

// Masks of MaskSide squared cells, (x, y) at x + y * MaskSide; 0 paints fully.
extern uint8_t BrushMask[kwbrush::MaskCells];       // built by Picture1_Paint
extern uint8_t BrushMaskXform[kwbrush::MaskCells];  // after ScaleRotate
extern uint8_t BrushMaskFine[kwbrush::FineSide * kwbrush::FineSide];
extern uint8_t DabMask[kwbrush::MaskCells];         // the mask of the segment being painted
inline uint8_t& MaskCell(uint8_t* mask, int x, int y) { return mask[x + y * kwbrush::MaskSide]; }

// The picture of Form2.Picture1: MaskSide squared greys, white beyond the stock picture.
extern uint8_t BrushPicture[kwbrush::MaskCells];

extern int16_t BrushRadius;  // HScroll5 / 4, rounded
extern int16_t BrushStep;    // slider1
extern int16_t StepCounter;  // carried from segment to segment; 0 at a press
extern int16_t LastX, LastY, CurX, CurY, PrevDabX, PrevDabY;
extern int32_t PaintR, PaintG, PaintB;  // primary colour
extern int32_t DabR, DabG, DabB;        // the current dab's colour
extern int32_t PickR, PickG, PickB;     // colour picked up for bleed; kept between calls
extern int16_t BrushOpacity;
extern kwmode::PaintMode BrushMode;  // App.PaintMode at the segment's start
extern int16_t PantoX, PantoY;    // clone offset of panto
extern int16_t PatOrgX, PatOrgY;  // the stroke's origin
extern uint8_t StrokeRefreshOff;  // 255: scripted strokes skip the per-segment screen refresh
extern uint8_t MarqueeAtDown;     // the marquee was shown at the press
