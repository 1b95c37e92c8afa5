// The mesh warp: a coarse grid dragged over a 400-pixel-wide preview of the
// picture, the preview following each move, and on Ok the whole picture
// resampled through the same grid.
#pragma once

#include <cstdint>
#include <vector>

#include "core/framework/Plane.h"
#include "core/framework/controls.h"

void TransformMeshwarp_Click();

namespace Meshwarp {
extern Form form;
extern PictureBox Picture1;      // the 400 x 400 preview square
extern Label Label1, Label2;     // the captions of the two boxes
extern TextBox Text1, Text2;     // "Grid x", "Grid y": nodes across and down, 2..32
extern CommandButton Command1, Command2;

// Node displacements in preview pixels, (column, row) with an extra column and
// row of zeros; the per-pixel vectors of the preview; the preview's colours.
extern Grid<int16_t> MeshX, MeshY, MeshVecX, MeshVecY;
extern Grid<uint32_t> MeshPreview32;
extern int16_t MeshNodeCol, MeshNodeRow, MeshOriginX, MeshOriginY;
extern bool MeshTooTall, MeshReady, MeshDragging;
extern int16_t PreviewHeight;  // ph: the preview covers rows 0..ph
int PreviewTop();              // its first row in the square

void Form_Load();
void ResampleMorphVectors();
void SelectNearest(float x, float y, int& column, int& row);
void Picture1_MouseDown(int button, int shift, float x, float y);
void Picture1_MouseMove(int button, int shift, float x, float y);
void Picture1_MouseUp(int button, int shift, float x, float y);
void Picture1_Paint();
void Text1_LostFocus();
void Text2_LostFocus();
void ApplyMorph_AA();
}  // namespace Meshwarp
