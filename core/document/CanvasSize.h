// The buffer size dialog. Its two text fields hold the size state of the document.
#pragma once

#include "core/framework/controls.h"

namespace CanvasSize {
extern Form form;
extern Label Label1, Label2;
extern TextBox Text1, Text2;       // width and height: the size state
extern CheckBox Check1;            // keep the aspect ratio (resample only)
extern Label Label3;
extern ListBox List1;              // "Buffer size presets"
extern Label Label4;
extern ListBox List2;              // resample methods
extern CommandButton Command1, Command2;

extern float SavedWidth, SavedHeight;
extern int16_t SizeCancelled;
extern int ConstrainFlag;          // 1 while the aspect constraint may apply
struct Preset { int16_t width, height; };
extern std::vector<Preset> Presets;  // entry i + 1 of the classic table is Presets[i]

void Form_Load();
void List1_Click();
void Text1_KeyUp();
void Text2_KeyUp();
void Command1_Click();
void Command2_Click();
// Reads "Def_Res.txt" from the program folder: name, width, height per line.
void ReadPresets(const std::string& path);
}  // namespace CanvasSize
