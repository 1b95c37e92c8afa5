// The tool panel's colours, sliders, clear button, preview and info box.
#include "core/frame/Form2.h"

#include <algorithm>
#include <cctype>
#include <memory>
#include <vector>

#include "core/framework/AppState.h"
#include "core/document/Buffers.h"
#include "core/display/Display.h"
#include "core/display/Form1.h"
#include "core/framework/Host.h"
#include "core/frame/MDIForm1.h"
#include "core/document/Undo.h"
#include "core/framework/vb.h"
#include "native/kwpaint.h"

namespace Form2 {
Form form("Form2", "Tools");
OptionButton Option1(form, "Option1", "Brush", 1, true);
OptionButton Option2(form, "Option2", "Rect", 1);
OptionButton Option3(form, "Option3", "Ellipse", 1);
OptionButton Option4(form, "Option4", "Fill", 1);
OptionButton Option6(form, "Option6", "Baster", 1);
OptionButton Option13(form, "Option13", "Lasso", 1);
OptionButton Option14(form, "Option14", "Rect alpha", 1);
OptionButton Option15(form, "Option15", "Ellipse alpha", 1);
OptionButton Option16(form, "Option16", "Wand", 1);
OptionButton Option17(form, "Option17", "Curve", 1);
OptionButton Option18(form, "Option18", "Line", 1);
OptionButton Option19(form, "Option19", "Text", 1);
OptionButton Option20(form, "Option20", "Cut brush", 1);
PictureBox Picture1(form, "Picture1", 38, 38);
PictureBox Picture58(form, "Picture58", 38, 38);
const char* const StockBrushNames[StockBrushCount] = {
    "Picture33", "Picture41", "Picture10", "Picture11", "Picture12", "Picture14", "Picture13",
    "Picture15", "Picture16", "Picture17", "Picture19", "Picture20", "Picture21", "Picture22",
    "Picture24", "Picture25", "Picture26", "Picture39", "Picture40", "Picture45"};
namespace {
std::vector<std::unique_ptr<PictureBox>> MakeStockBrushes() {
    std::vector<std::unique_ptr<PictureBox>> pictures;
    for (const char* name : StockBrushNames) pictures.push_back(std::make_unique<PictureBox>(form, name, 35, 35));
    return pictures;
}
std::vector<std::unique_ptr<PictureBox>> StockBrushes = MakeStockBrushes();
}  // namespace
Slider HScroll5(form, "HScroll5", 1, 68, 20);
Shape Shape4(form, "Shape4");
Shape Shape1(form, "Shape1");
// The primary colour's sliders; their Change is a row of the colour folder,
// which runs HScroll1_Change and then lets the pickers follow.
Slider HScroll1(form, "HScroll1", 0, 255, 0);
Slider hscroll2(form, "hscroll2", 0, 255, 0);
Slider hscroll3(form, "hscroll3", 0, 255, 0);
Slider HScroll4(form, "HScroll4", 0, 255, 255);
Slider slider1(form, "slider1", 0, 64, 2);
ComboBox Combo4(form, "Combo4", [] { Combo4_Click(); });
// The media lists; the brush folder fills them and handles their clicks.
ComboBox Combo2(form, "Combo2");
ComboBox Combo1(form, "Combo1");
CommandButton Command1(form, "Command1", "Clear", [] { Command1_Click(); });
PictureBox Picture27(form, "Picture27", 96, 72);
// Opens the layer mixing menu.
CommandButton LayerButton(form, "LayerButton", "Layers...", [] { host().PopupMenu(Menus::Layers); });
// Starts the paint mixer, a companion program; its row lives with the plug-in host.
CommandButton kw_button1(form, "kw_button1", "Mixer");
Label Info1(form, "Info1");
// Paper, pickers and wells; their procedures are rows of the colour folder.
CheckBox Check1(form, "Check1", "Bumpiness");
CheckBox Check2(form, "Check2", "Drybrush");
CheckBox Check3(form, "Check3", "Negative");
Slider HScroll6(form, "HScroll6", 1, 255, 128);
PictureBox Image1(form, "Image1", 40, 40);
PictureBox Image2(form, "Image2", 40, 40);
PictureBox Image3(form, "Image3", 40, 40);
PictureBox Image4(form, "Image4", 40, 40);
PictureBox Image5(form, "Image5", 40, 40);
PictureBox Image6(form, "Image6", 40, 40);
PictureBox Picture8(form, "Picture8", 160, 160);
ListBox TabBox(form, "TabBox");
PictureBox Picture54(form, "Picture54", 200, 100);
PictureBox Picture56(form, "Picture56", 126, 100);
PictureBox Picture43(form, "Picture43", 160, 160);
const char* const WellNames[WellCount] = {
    "Command11", "Command12", "Command13", "Command14", "Command15", "Command30", "Command39", "Command40",
    "Command16", "Command17", "Command18", "Command19", "Command20", "Command35", "Command41", "Command42",
    "Command5",  "Command6",  "Command7",  "Command8",  "Command9",  "Command36", "Command43", "Command44",
    "Command10", "Command22", "Command23", "Command24", "Command25", "Command37", "Command46", "Command48",
    "Command26", "Command27", "Command28", "Command29", "Command32", "Command38", "Command45", "Command47",
    "Command68", "Command67", "Command66", "Command65", "Command64", "Command53", "Command50", "Command49",
    "Command63", "Command62", "Command61", "Command60", "Command59", "Command52", "Command70", "Command72",
    "Command58", "Command57", "Command56", "Command55", "Command54", "Command51", "Command69", "Command71"};
namespace {
std::vector<std::unique_ptr<WellButton>> MakeWells() {
    std::vector<std::unique_ptr<WellButton>> wells;
    for (const char* name : WellNames) wells.push_back(std::make_unique<WellButton>(form, name, ""));
    return wells;
}
std::vector<std::unique_ptr<WellButton>> Wells = MakeWells();
}  // namespace
ComboBox Combo5(form, "Combo5");
FileListBox File1(form, "File1", "*.wl");

WellButton& Well(int i) { return *Wells.at(static_cast<size_t>(i)); }
PictureBox& StockBrush(int i) { return *StockBrushes.at(static_cast<size_t>(i)); }

namespace {
// The tool buttons: one option group, and the tips of the buttons without a row.
void SetUpToolButtons() {
    // A tool's row brings its own tip and shows its button.
    const std::pair<OptionButton*, const char*> tools[] = {
        {&Option2, "Upper left, unfilled rectangle.  Lower right, filled rectangle.  Right click for settings.  Keyboard r/R"},
        {&Option3, "Upper left, unfilled ellipse.  Lower right, filled ellipse.  Right click for settings"},
        {&Option4, "Flood fill..  Right click for settings."},
        {&Option13, "Lasso to alpha.  Yee-haw!"},
        {&Option14, "Rectangle to Alpha.  Alt to add or subtract."},
        {&Option15, "Ellipse to Alpha.  Alt to add or subtract."},
        {&Option16, "Magic wand.  Right click for settings.  Alt for add or subtract."},
        {&Option17, "The curve tool."},
        {&Option18, "Linear tool.  Right click for tools.  Keyboard v"},
        {&Option19, "Text.  Right click for options."},
        {&Option20, "Custom brush selector tool.  Right click for options.  Keyboard  'b'"}};
    for (auto [tool, tip] : tools) tool->ToolTipText = tip;
    for (OptionButton* tool : {&Option1, &Option2, &Option3, &Option4, &Option6, &Option13, &Option14, &Option15,
                               &Option16, &Option17, &Option18, &Option19, &Option20})
        tool->Group = 10;
}

// The current brush, its palette, the size and the painting modes.
void SetUpBrushControls() {
    Picture1.ToolTipText = "Current brush.  Left click for more brushes.  Right click for options";
    Picture1.Cls(0xFFFFFF);
    Picture58.ToolTipText = "Custom brush when available.";
    Picture58.Cls(0xFFFFFF);
    Picture58.Visible.setQuietly(false);
    for (int i = 0; i < StockBrushCount; ++i) {
        StockBrush(i).Visible.setQuietly(false);
        StockBrush(i).Group = 20 + i / 5;  // the palette in rows of five
    }
    HScroll5.Caption.setQuietly("Size");
    HScroll5.ToolTipText = "Size of the natural brush";
    for (const char* mode : {"Default", "Additive", "Subtractative", "Multiply", "Divide", "Screen", "Around grey",
                             "Rubthrough", "Panto", "Smear", "Pattern", "Offset pattern"})
        Combo4.items.push_back(mode);
    Combo4.ListIndex.setQuietly(0);
    Combo4.ToolTipText = "Painting mode";
    Combo2.ToolTipText = "The various painting styles";
    Combo1.ToolTipText = "Variation on the painting styles";
}

// The colours, opacity, step and the buttons under them.
void SetUpColourControls() {
    Shape4.Caption.setQuietly("Primary");
    Shape4.FillColor.setQuietly(0x000000);
    Shape1.Caption.setQuietly("Secondary");
    Shape1.FillColor.setQuietly(0xFFFFFF);
    HScroll1.Caption.setQuietly("Red");
    hscroll2.Caption.setQuietly("Green");
    hscroll3.Caption.setQuietly("Blue");
    HScroll4.Caption.setQuietly("Opacity");
    HScroll4.ToolTipText = "Opacity of brush and fill tools.";
    slider1.Caption.setQuietly("Step");
    slider1.ToolTipText = "Step value for brushes in pixels.";
    Command1.ToolTipText = "Clear the buffer to the secondary colour (K).  Right click to clear the selection";
    Command1.Group = LayerButton.Group = 1;
    LayerButton.ToolTipText = "Layer mixing of the main and swap buffers";
    Shape4.Group = Shape1.Group = 2;
}

// The paper, the pickers' tabs and the wells' file list.
void SetUpPaperAndPickers() {
    Check1.ToolTipText = "paint recievies an embossed effect";
    Check2.ToolTipText = "Paint is applied rouphly to the paper like dry paint.";
    Check3.ToolTipText = "inverts the paper texture.";
    Check1.Group = Check2.Group = Check3.Group = 3;
    HScroll6.Caption.setQuietly("Paper");
    HScroll6.ToolTipText = "Strength of the paper texture.";
    const char* paperTips[] = {"A watercolor paper", "Canvass", "A cold pressed rouph surface",
                               "Plaster like surface", "Rouph paper", "More rouph paper"};
    PictureBox* papers[] = {&Image1, &Image2, &Image3, &Image4, &Image5, &Image6};
    for (int i = 0; i < 6; ++i) {
        papers[i]->ToolTipText = paperTips[i];
        papers[i]->Group = 4;
    }
    Picture8.Visible.setQuietly(false);
    for (const char* tab : {"rgb", "rgb2", "sv", "wheel"}) TabBox.items.push_back(tab);
    TabBox.ListIndex.setQuietly(0);
    Combo5.ToolTipText = "Load a well file.";
    File1.Visible.setQuietly(false);
}

struct Wiring {
    Wiring() {
        SetUpToolButtons();
        SetUpBrushControls();
        SetUpColourControls();
        SetUpPaperAndPickers();
    }
} wiring;
}  // namespace

void Combo4_Click() {
    // The text is compared, not the position: the stored number is not the list position.
    std::string t = Combo4.Text();
    std::transform(t.begin(), t.end(), t.begin(), [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    using kwmode::PaintMode;
    static const std::pair<const char*, PaintMode> modes[] = {
        {"DEFAULT", PaintMode::Default},       {"ADDITIVE", PaintMode::Additive},
        {"SUBTRACTATIVE", PaintMode::Subtract}, {"MULTIPLY", PaintMode::Multiply},
        {"RUBTHROUGH", PaintMode::Rubthrough}, {"PANTO", PaintMode::Panto},
        {"SMEAR", PaintMode::Smear},           {"PATTERN", PaintMode::Pattern},
        {"OFFSET PATTERN", PaintMode::OffsetPattern},
        {"DIVIDE", PaintMode::Divide},         {"SCREEN", PaintMode::Screen},
        {"AROUND GREY", PaintMode::AroundGrey}};
    for (auto [literal, mode] : modes)
        if (t == literal) App.PaintMode = mode;
    // The info box names the mode the next stroke will paint with, from now on.
    GetCurrentInfo();
    PrintUserInfo();
}
uint32_t SecondaryColour() { return Shape1.FillColor; }

void HScroll1_Change() { Shape4.FillColor = vb::RGB(HScroll1.Value, hscroll2.Value, hscroll3.Value); }

void Command1_Click() {
    SaveUndo();
    int w = std::min(BufferWidth(), BufR.ubX()), h = std::min(BufferHeight(), BufR.ubY());
    uint32_t c = Shape1.FillColor;
    Form1::form.BackColor = c;
    for (int y = 0; y < h; ++y) {
        std::fill_n(BufR.row(y), std::max(w, 0), vb::RedOf(c));
        std::fill_n(BufG.row(y), std::max(w, 0), vb::GreenOf(c));
        std::fill_n(BufB.row(y), std::max(w, 0), vb::BlueOf(c));
    }
    RedisplayWindow();
}

void AfterRedisplay() {
    if (App.Silent == 0) Picture27_Paint();
    if (App.NoTitle == 0) {
        GetCurrentInfo();
        PrintUserInfo();
    }
}

void Picture27_Paint() {
    // A small picture of the whole document, nearest pixel; its view repaints
    // only when a pixel of it changed (a scroll or zoom leaves it as it was).
    int W = std::min(BufferWidth(), BufR.ubX()), H = std::min(BufferHeight(), BufR.ubY());
    if (BufR.empty() || W <= 0 || H <= 0) return;
    int pw = Picture27.Width, ph = Picture27.Height;
    if (pw <= 0 || ph <= 0) return;
    Picture27.pixels.resize(static_cast<size_t>(pw) * static_cast<size_t>(ph));
    if (kwpaint::NearestThumbnail(Picture27.pixels.data(), pw, ph, BufR.data(), BufG.data(), BufB.data(), W, H,
                                  BufR.stride()))
        Picture27.Refresh();
}
}  // namespace Form2

namespace {
std::string PaintModeText, FillModeText = "Default", BrushModeText = "Color";

// The name the info box gives a fill mode; alpha and unknown numbers have none.
const char* FillModeName(kwmode::FillMode mode) {
    using kwmode::FillMode;
    switch (mode) {
        case FillMode::Default: return "Default";
        case FillMode::Add: return "Add";
        case FillMode::Subtract: return "Subtract";
        case FillMode::Multiply: return "Multiply";
        case FillMode::Divide: return "Divide";
        case FillMode::Screen: return "Screen";
        case FillMode::Rubthrough: return "Rubthrough";
        case FillMode::Alpha: return nullptr;
    }
    return nullptr;
}
}  // namespace

void GetCurrentInfo() {
    PaintModeText = Form2::Combo4.Text();
    // A mode without a name keeps the last text.
    if (const char* name = FillModeName(App.FillMode)) FillModeText = name;
}

void PrintUserInfo() {
    Form2::Info1.Caption = "Paint mode = " + PaintModeText + "\nFill mode = " + FillModeText +
                           "\nBrush mode = " + BrushModeText + "\nX = " + vb::Str(App.CursorX) +
                           "\nY = " + vb::Str(App.CursorY);
}
