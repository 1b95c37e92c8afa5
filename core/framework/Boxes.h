// Message, question and value boxes, and the progress window.
#pragma once

#include <string>

#include "core/framework/controls.h"

extern int16_t DialogResult;
extern int32_t GenericValue;
extern int16_t BarPosition;

namespace MessageBox {
extern Form form;
extern Label Label1;
extern CommandButton Command1;
}  // namespace MessageBox

namespace QuestionBox {
extern Form form;
extern Label Label1;
extern CommandButton Command1, Command2;
}  // namespace QuestionBox

namespace GenericOptions {
extern Form form;
extern Label Label1;
extern Slider HScroll1;
extern CommandButton Command1, Command2;
}  // namespace GenericOptions

namespace Status {
extern Form form;
extern Label Frame1;        // "Initializing..." or "Processing..."
extern PictureBox Picture1;  // the bar
extern PictureBox Picture2;  // the percentage text
}  // namespace Status

void Kelpwick_MsgBox(const std::string& text);
int16_t Kelpwick_QuestionBox(const std::string& text);
int32_t GetGenericValue(const std::string& caption, int min, int max, int value);
void Bar(int percent);
// The colour of column i of the bar: blue with a slow shimmer.
uint32_t BarColumnColour(int i);
void ShowStatus(const std::string& caption);
void HideStatus();
