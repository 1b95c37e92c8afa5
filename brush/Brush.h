// The brush folder's doors for the start-up sequence and the tool panel.
#pragma once

#include <cstdint>

// Start-up: the stock pictures into the palette and the first brush's mask.
void StartupBrushes();
// The brush options panel (key o, a right click on the current brush).
void ShowBrushOptions();
// All brush settings back to their neutral state (Esc).
void ClearAllGads();
// The size slider's value as ClearAllGads found it.
extern int16_t ClearedBrushSize;
// Palette entry i becomes the current brush: picture, natural brush, mask.
void PickStockBrush(int i);

namespace Form2 {
void Picture1_MouseDown(int button, int shift, float x, float y);
void HScroll5_Change();
}  // namespace Form2
