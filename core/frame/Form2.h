// The tool panel: colours, opacity, step and the info box.
#pragma once

#include "core/framework/controls.h"

namespace Form2 {
extern Form form;
// The tools: whichever button is down is the tool (one option group).
extern OptionButton Option1, Option2, Option3, Option4, Option6, Option13, Option14, Option15, Option16,
    Option17, Option18, Option19, Option20;
// The current brush picture and the palette of stock brush pictures (hidden
// until the current brush is clicked).
extern PictureBox Picture1;
extern PictureBox Picture58;  // the custom brush, shown once one exists
constexpr int StockBrushCount = 20;
extern const char* const StockBrushNames[StockBrushCount];
PictureBox& StockBrush(int i);
extern Slider HScroll5;            // "Size of the natural brush"
extern ComboBox Combo4;            // painting modes
extern ComboBox Combo2;            // "The various painting styles"
extern ComboBox Combo1;            // "Variation on the painting styles"
extern Shape Shape4;               // primary colour (FillColor, 0x00BBGGRR)
extern Shape Shape1;               // secondary colour
extern Slider HScroll1, hscroll2, hscroll3;  // primary red, green, blue
extern Slider HScroll4;            // "Opacity of brush and fill tools."
extern Slider slider1;             // "Step value for brushes in pixels."
extern Label Info1;                // written by PrintUserInfo
extern CommandButton Command1;     // clear the buffer
extern PictureBox Picture27;       // small preview of the picture
extern CommandButton LayerButton;  // opens the Layers menu

// Paper: "Bumpiness", "Drybrush", "Negative", the strength, the six stock
// papers and the current paper picture.
extern CheckBox Check1, Check2, Check3;
extern Slider HScroll6;
extern PictureBox Image1, Image2, Image3, Image4, Image5, Image6;
extern PictureBox Picture8;
// The colour pickers: the tabs "rgb", "rgb2", "sv", "wheel" and their pictures.
extern CommandButton kw_button1;  // the paint mixer
extern ListBox TabBox;
extern PictureBox Picture54, Picture56, Picture43;

// A colour well: a button whose face is its colour.
class WellButton : public CommandButton {
public:
    using CommandButton::CommandButton;
    Prop<uint32_t> Color{this};
};
// The 64 wells in the order of the well file: eight rows of eight.
constexpr int WellCount = 64;
extern const char* const WellNames[WellCount];
WellButton& Well(int i);
extern ComboBox Combo5;   // well files of the program folder
extern FileListBox File1;  // "*.wl"

void Command1_Click();
void Combo4_Click();
void Picture27_Paint();
// Listens to the display: the preview and the info box follow each redisplay.
void AfterRedisplay();
void HScroll1_Change();
uint32_t SecondaryColour();
}  // namespace Form2

void GetCurrentInfo();
void PrintUserInfo();
