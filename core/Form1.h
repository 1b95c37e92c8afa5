// The canvas window: its timer, keys and the entry points of canvas events.
#pragma once

#include "core/controls.h"

namespace Form1 {
extern Form form;
extern Timer Timer1;  // marches the marquee
extern Prop<uint32_t>& BackColor;

void Form_Load();
void Form_Resize();
void Timer1_Timer();
// Keys of every panel land here.
void Form_KeyDown(int16_t& keyCode, int16_t shift);
void Form_KeyPress(int16_t& keyAscii);
void Form_KeyUp(int16_t& keyCode, int16_t shift);
// The view was scrolled or resized: a new visible part needs its screen image.
void ViewportChanged();
}  // namespace Form1
