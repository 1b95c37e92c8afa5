// Small panels of the core: zoom, fat bits, fade, memory, about and keyboard help.
#pragma once

#include "core/controls.h"

namespace Nav {
extern Form form;
extern Slider HScroll1;  // zoom percent 25..600
extern Label Label1;
extern CommandButton Image8, Image7, Image1, Image2, Image3, Image4, Image5, Image6;
extern Shape Shape1;     // marker of the zoom scale
void HScroll1_Change();
}  // namespace Nav

namespace FatBits {
extern Form form;
extern Label Label1;
extern Slider HScroll1, VScroll1;
}  // namespace FatBits

namespace FadeLast {
extern Form form;
// Blends the picture after the last action toward the one before it by amount 0..255.
void FadeLast(int amount);
extern Slider HScroll1;
extern CommandButton Command1, Command2;
void HScroll1_Change();
void Command1_Click();
void Command2_Click();
}  // namespace FadeLast

namespace MemoryOptions {
extern Form form;
extern Label Label1;
extern Slider HScroll1;
extern Label Label4;  // "meg" / "megs"
extern Label Label2;
extern CommandButton Command1, Command2;
void Command1_Click();
void Command2_Click();
}  // namespace MemoryOptions

namespace Form3 {
extern Form form;
extern Label Label1;
extern TextBox Text1;
extern Label Label2;
extern CommandButton Command1;
void Command1_Click();
}  // namespace Form3

namespace KeyboardHelp {
extern Form form;
extern TextBox RichTextBox1;
}  // namespace KeyboardHelp

void FadePrevious_Click();
void Magnify_Click();
void Magnifier_Click();
void about_Click();
void Shortcuts_Click();
void Help_Kelhelp_Click();
void toolbar_Click();
void Window_Info_Click();
void Memorystuff_Click();
void UnlockInput_Click();
