// The text tool: a box floating over the canvas takes the text, Enter burns
// it into the picture through DeliverPixel, or into alpha.
#pragma once

#include <cstdint>

#include "core/framework/Host.h"
#include "core/framework/controls.h"

extern FontChoice TextFont;  // the font settings, at 100 % zoom
extern uint8_t TextToAlpha;  // 255: the letters become the selection

namespace Form1 {
// All the work happens for Enter (13); the key is then set to 0.
void TextTool_KeyPress(int16_t& KeyAscii);
// The box fits the text plus one blank and 8 pixels.
void TextTool_Change();
}  // namespace Form1

// The font the box shows: the settings scaled by the zoom.
FontChoice TextToolFont();

// The panel that moves the text box by a pixel.
namespace Nudge {
extern Form form;
extern CommandButton Command1, Command2, Command3, Command4;  // up, down, left, right
}  // namespace Nudge
