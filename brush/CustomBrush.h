// The custom brush: a small four-plane picture cut from the canvas or loaded
// from a file and stamped along a stroke, in colour or matte mode.
#pragma once

#include <cstdint>
#include <string>

#include "core/framework/controls.h"

extern int16_t BrushMatte;     // 0 colour mode (the brush's own colours), 1 matte mode
extern int32_t BlitX, BlitY;   // top left corner of the last stamp
extern uint8_t BrushRebuild;   // 255 while a transform remakes the planes: keep the mode

// New empty planes of Width by Height; -1 (and nothing changes) when either is not above 0.
int16_t CreateEmptyBrush(int& Width, int& Height);
// The brush from the picture's rectangle X1..X2-1 by Y1..Y2-1, alpha included.
void CopyNewBrush(int X1, int Y1, int X2, int Y2);
// The selector tool's pick-up; with the key panel open the secondary colour is keyed out.
void CustomBrushSelect(int X1, int Y1, int X2, int Y2);
// 1 when any coverage byte is above 0.
int16_t CheckBrushAlpha();
// The coverage curve of the key panel: byte q (0 = the key colour itself) to coverage.
void BuildKeyCurve(int tolerance, int softness, bool invert, uint8_t curve[256]);

// One stamp centred on (X, Y); X and Y come back as the stamp's corner.
void CustomBlit(int16_t& Button, float& X, float& Y);
// The thumbnail of the brush over white, in any 38 by 38 picture box.
void PaintBrushThumbnail(PictureBox& p);
// The brush exists: planes of its size.
bool BrushExists();
// The brush's thumbnails and check marks follow a change of the planes.
void BrushChanged();

// Brush files: a Targa read into the brush (false, with a message, when the
// current brush is kept) and the brush written as a 32-bit Targa.
bool LoadBrushFile(const std::string& path);
bool SaveTargaBrush(const std::string& TargaFilename, uint8_t TargaFlags);
// The brush path: the name the brush's Load and Save dialogs start with.
void SetBrushFileName(const std::string& path);
// The brush's rows turned upside down (a top-left file, the vertical flip).
void FlipBrushRows();
// Painting goes back to the custom brush, when one exists.
void CustomBrushBack();

namespace MDIForm1 {
void Cust_Copy_Click();
void Cust_Free_Click();
void Cust_Load_Click();
void Cust_Save_Click();
void Cust_Mode_Color_Click();
void Cust_Mode_Matte_Click();
}  // namespace MDIForm1

namespace Form2 {
void Picture58_Click();
}

// The colour key of the selector tool.
namespace BrushKey {
extern Form form;
extern Slider Hscroll1;  // tolerance
extern Slider Hscroll2;  // softness
extern CheckBox Check1;  // invert
extern CheckBox Check2;  // keep the picture's alpha
}  // namespace BrushKey
