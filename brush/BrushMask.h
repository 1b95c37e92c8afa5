// The dab mask: built from the current brush picture at the panel's size and
// anti-aliasing, and turned and scaled for a segment.
#pragma once

#include <cstdint>
#include <vector>

// Paint event of Form2.Picture1: sets BrushRadius, rebuilds BrushMask and shows
// it in the picture.
void Picture1_Paint();
// Writes BrushMaskXform from BrushMask; Angle in whole degrees.
void ScaleRotate(int32_t Angle, float Scale, int16_t Smooth);
// Makes a stock picture (StockBrushSide squared greys) the current brush
// picture, on white, without rebuilding the mask.
void SetBrushPicture(const std::vector<uint8_t>& grey, int side);
