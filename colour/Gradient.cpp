// The panel "Fill": gradient index, sweep strip, entry strip, apply, reverse,
// smooth, open and save, and the fill style, mode and noise settings.
#include "colour/Gradient.h"

#include <QDir>
#include <algorithm>
#include <cmath>

#include "colour/Colour.h"
#include "colour/Gradients.h"
#include "core/framework/AppState.h"
#include "core/framework/Boxes.h"
#include "core/framework/Codes.h"
#include "core/display/Display.h"
#include "core/frame/Form2.h"
#include "core/framework/Host.h"
#include "core/frame/MDIForm1.h"
#include "core/framework/vb.h"
#include "core/framework/PanelLook.h"

namespace Gradient {
using kwmode::FillMode;
using kwmode::FillStyle;

Form form("Gradient", "Fill");
Slider HScroll1(form, "HScroll1", 0, 7, 0, [] { HScroll1_Change(); });
PictureBox Picture2(form, "Picture2", 256, 64);
PictureBox Picture3(form, "Picture3", 256, 14);
ListBox TabBox(form, "TabBox", [] { Picture2_Paint(); });
ComboBox Combo1(form, "Combo1");
CommandButton Command4(form, "Command4", "Apply", [] { Command4_Click(); });
CommandButton Command2(form, "Command2", "Reverse", [] { Command2_Click(); });
CommandButton Command3(form, "Command3", "Smooth", [] { Command3_Click(); });
CheckBox Check3(form, "Check3", "Auto smooth");
ComboBox Combo2(form, "Combo2", [] { Combo2_Click(); });
CommandButton Command6(form, "Command6", "Save...", [] { Command6_Click(); });
FileListBox File1(form, "File1", "*.grd");
Label Label1(form, "Label1", "Fill style");
OptionButton Option5(form, "Option5", "Color", 1, true, [] { App.FillStyle = FillStyle::Colour; });
OptionButton Option6(form, "Option6", "Horizontal", 1, false, [] { App.FillStyle = FillStyle::Horizontal; });
OptionButton Option7(form, "Option7", "Fit horizontal", 1, false, [] { App.FillStyle = FillStyle::FitHorizontal; });
OptionButton Option8(form, "Option8", "Vertical", 1, false, [] { App.FillStyle = FillStyle::Vertical; });
OptionButton Option9(form, "Option9", "Circular", 1, false, [] { App.FillStyle = FillStyle::Circular; });
OptionButton Option10(form, "Option10", "Tile brush", 1, false, [] { App.FillStyle = FillStyle::TileBrush; });
OptionButton Option11(form, "Option11", "Fit brush", 1, false, [] { App.FillStyle = FillStyle::FitBrush; });
Label Label2(form, "Label2", "Fill mode");
ComboBox Combo3(form, "Combo3", [] { Combo3_Click(); });
Slider HScroll2(form, "HScroll2", 0, 255, 0, [] { HScroll2_Change(); });
CheckBox Check1(form, "Check1", "Color noise", 0, [] { Check1_Click(); });
Timer Timer1(form, "Timer1", 60, [] { Timer1_Timer(); });

namespace {
bool Sweeping = false;
int LastStep = 0, LastValue = 0;
int16_t GradientColourIndex = 0;  // the ] and [ keys keep their own place

struct Wiring {
    Wiring() {
        HScroll1.Caption.setQuietly("Index");
        HScroll1.ToolTipText = "Index of 8 possible gradients";
        Picture2.ToolTipText = "Sweep edit R,G,B channels of the gradient with the mouse.";
        Picture3.ToolTipText = "Dragdrop color well to add gradient entry.";
        TabBox.ToolTipText = "Red, green, blue and opacity channels of the gradient.";
        for (const char* t : {"Red", "Green", "Blue", "Opacity", "R,G,B"}) TabBox.items.push_back(t);
        TabBox.ListIndex.setQuietly(4);
        for (const char* t : {"Linear", "Cubic"}) Combo1.items.push_back(t);
        Combo1.ListIndex.setQuietly(0);
        Combo1.ToolTipText = "Type of gradient interpolation.";
        Command4.ToolTipText = "Create a gradient from the gradient entries";
        Command2.ToolTipText = "Reverse the gradient";
        Command3.ToolTipText = "Smooth the gradient.";
        Check3.ToolTipText = "Auto smooth the gradient.";
        Combo2.ToolTipText = "Load a gradient from a pre-exiting file.";
        Combo2.Caption.setQuietly("Open");
        Command6.ToolTipText = "Save the current gradient to a file.";
        Combo1.Group = Command4.Group = 1;
        Command2.Group = Command3.Group = Check3.Group = 2;
        Combo2.Group = Command6.Group = 3;
        File1.Visible.setQuietly(false);
        Option5.ToolTipText = "Plain old color.";
        Option6.ToolTipText = "Horizontal Gradient";
        Option7.ToolTipText = "Shape fitting horizontal gradient";
        Option8.ToolTipText = "Vertical gradient";
        Option9.ToolTipText = "Circular gradient";
        Option10.ToolTipText = "Fill pattern from custom brush";
        Option11.ToolTipText = "Custom brush is wapred to the fill a shape.";
        Option5.Group = Option6.Group = Option7.Group = Option8.Group = 4;
        Option9.Group = Option10.Group = Option11.Group = 5;
        for (const char* t : {"Default", "Additive", "Subtractative", "Multiply", "Divide", "Screen", "Rubthrough", "Alpha"})
            Combo3.items.push_back(t);
        Combo3.ListIndex.setQuietly(0);
        Combo3.ToolTipText = "Fill mode";
        Label2.Group = Combo3.Group = 6;
        HScroll2.Caption.setQuietly("Noise");
        HScroll2.ToolTipText = "Adds noise to a fill.";
        Check1.ToolTipText = "Color or luminance noise.";
        Picture2.MouseDown = Picture2_MouseDown;
        Picture2.MouseMove = Picture2_MouseMove;
        Picture2.MouseUp = Picture2_MouseUp;
        Picture3.MouseDown = Picture3_MouseDown;
        form.DblClick = Form_DblClick;
        form.Load = [] {
            PrefsCallBack(form);
            Combo2_GotFocus();
            Refresh();
        };
    }
} wiring;

int Row() { return App.GradientIndex & 7; }
int StepAt(float x) { return std::clamp(static_cast<int>(std::floor(x * 256.0f / Picture2.Width)), 0, 255); }
int ValueAt(float y) {
    return std::clamp(255 - static_cast<int>(std::lround(y * 255.0f / (Picture2.Height - 1))), 0, 255);
}

uint32_t Checker(int x, int y) { return ((x / 8 + y / 8) & 1) ? 0xC0C0C0 : 0x808080; }
}  // namespace

void Refresh() {
    RedrawGradEntries();
    Picture2_Paint();
}

void HScroll1_Change() {
    App.GradientIndex = static_cast<uint8_t>(HScroll1.Value);
    GradEntryRow = App.GradientIndex;
    Refresh();
}

void Picture2_Paint() {
    const int g = Row(), w = Picture2.Width, h = Picture2.Height;
    // The colours over a checker, so that opacity shows.
    for (int x = 0; x < w; ++x) {
        int s = std::min(x * 256 / w, 255);
        int a = Grad(s, 3, g);
        for (int y = 0; y < h; ++y) {
            uint32_t under = Checker(x, y);
            auto mix = [&](int c, int u) { return (c * a + u * (255 - a)) / 255; };
            Picture2.PSet(x, y, vb::RGB(mix(Grad(s, 0, g), vb::RedOf(under)), mix(Grad(s, 1, g), vb::GreenOf(under)),
                                        mix(Grad(s, 2, g), vb::BlueOf(under))));
        }
    }
    // The channels being edited, as curves.
    const uint32_t ink[4] = {0x0000FF, 0x00C000, 0xFF0000, 0xFFFFFF};
    int mask = ChannelMaskOfTab(TabBox.ListIndex);
    for (int c = 0; c < 4; ++c) {
        if (!(mask & (1 << c))) continue;
        for (int x = 0; x < w; ++x) {
            int s = std::min(x * 256 / w, 255);
            int y = (h - 1) - Grad(s, c, g) * (h - 1) / 255;
            Picture2.PSet(x, y, ink[c]);
            Picture2.PSet(x, y + 1, 0x000000);
        }
    }
    Picture2.Refresh();
}

void Picture2_MouseDown(int button, int shift, float x, float y) {
    Sweeping = true;
    LastStep = StepAt(x);
    LastValue = ValueAt(y);
    if (Check3.Value != 0) Timer1.TimerEnabled = true;
    Picture2_MouseMove(button, shift, x, y);
}

void Picture2_MouseMove(int button, int, float x, float y) {
    if (button == MouseButton::None || !Sweeping) return;
    int step = StepAt(x), value = ValueAt(y);
    SweepGradient(Row(), ChannelMaskOfTab(TabBox.ListIndex), LastStep, LastValue, step, value);
    LastStep = step;
    LastValue = value;
    Picture2_Paint();
}

void Picture2_MouseUp(int, int, float, float) {
    Sweeping = false;
    Timer1.TimerEnabled = false;
}

void Timer1_Timer() {
    if (!Sweeping) {
        Timer1.TimerEnabled = false;
        return;
    }
    SmoothGradient(Row(), ChannelMaskOfTab(TabBox.ListIndex));
    Picture2_Paint();
}

void RedrawGradEntries() {
    const int w = Picture3.Width, h = Picture3.Height;
    Picture3.Cls(0xA0A0A0);
    for (int p = 0; p < GradientSteps; ++p) {
        int32_t e = GradEntries[GradEntryRow & 7][p];
        if (e < 0) continue;
        int cx = p * w / 256;
        for (int y = 1; y < h - 1; ++y)
            for (int x = cx - 3; x <= cx + 3; ++x) {
                bool rim = y == 1 || y == h - 2 || x == cx - 3 || x == cx + 3;
                Picture3.PSet(x, y, rim ? 0x000000 : static_cast<uint32_t>(e));
            }
    }
    Picture3.Refresh();
}

void Picture3_DragDrop(float x, uint32_t colour) {
    int p = std::clamp(static_cast<int>(std::floor(x * 256.0f / Picture3.Width)), 0, 255);
    GradEntries[GradEntryRow & 7][p] = static_cast<int32_t>(colour & 0xFFFFFF);
    RedrawGradEntries();
}

void Picture3_MouseDown(int button, int, float x, float) {
    // A right click takes away the nearest entry.
    if (button != MouseButton::Right) return;
    int p = std::clamp(static_cast<int>(std::floor(x * 256.0f / Picture3.Width)), 0, 255);
    for (int d = 0; d <= 4; ++d)
        for (int q : {p - d, p + d})
            if (q >= 0 && q < GradientSteps && GradEntries[GradEntryRow & 7][q] >= 0) {
                GradEntries[GradEntryRow & 7][q] = -1;
                RedrawGradEntries();
                return;
            }
}

void Command4_Click() {
    std::string kind = Combo1.Text();
    if (kind == "Cubic") ApplyCubic(Row());
    else if (kind == "Linear") ApplyLinear(Row());
    Picture2_Paint();
}

void Command2_Click() {
    ReverseGradient(Row());
    Picture2_Paint();
}

void Command3_Click() {
    SmoothGradient(Row(), ChannelMaskOfTab(TabBox.ListIndex));
    Picture2_Paint();
}

void Combo2_GotFocus() { ListProgramFiles(File1, Combo2); }

void Combo2_Click() {
    std::string name = Combo2.Text();
    if (name.empty()) return;
    ReadGradientFile(ProgramFile(name));
    Refresh();
}

void Command6_Click() {
    FileDialogRequest dialog;
    dialog.Title = "Save gradient";
    dialog.Filter = "Gradients (*.grd)|*.grd";
    dialog.InitDir = App.StartDirectory;
    dialog.FileName = "";
    // Any failure ends in the same closing steps, silently.
    if (auto path = host().SaveFileDialog(dialog)) {
        WriteGradientFile(*path);
        Combo2_GotFocus();
    }
    host().DoEvents();
}

void Combo3_Click() {
    std::string mode = Combo3.Text();
    static const struct {
        const char* text;
        FillMode mode;
    } modes[] = {{"Default", FillMode::Default},       {"Additive", FillMode::Add},
                 {"Subtractative", FillMode::Subtract}, {"Multiply", FillMode::Multiply},
                 {"Divide", FillMode::Divide},          {"Screen", FillMode::Screen},
                 {"Rubthrough", FillMode::Rubthrough},  {"Alpha", FillMode::Alpha}};
    for (const auto& m : modes)
        if (mode == m.text) App.FillMode = m.mode;
    GetCurrentInfo();  // the info box shows the new fill mode at once
    PrintUserInfo();
}

void HScroll2_Change() { App.NoiseAmount = static_cast<uint8_t>(HScroll2.Value); }

void Check1_Click() { App.NoiseMode = static_cast<uint8_t>(Check1.Value != 0 ? 1 : 0); }

void Form_DblClick() {
    if (Kelpwick_QuestionBox("This is a hack.  Would you like to save the colormap?") != 1) return;
    std::string path = ColourMapPath();
    if (!WriteColourMap(path, Row())) return;
    Kelpwick_MsgBox("Colormap saved as '" + path + "'");
}
}  // namespace Gradient

std::string ColourMapPath() { return QDir(QDir::homePath()).filePath("ColorMapHack.lcm").toStdString(); }

void win_Gradient_Click() { Show(Gradient::form, false, &MDIForm1::form); }

namespace {
void GradientColourToPrimary(int16_t index) {
    int g = App.GradientIndex & 7;
    Form2::Shape4.FillColor = vb::RGB(Grad(index, 0, g), Grad(index, 1, g), Grad(index, 2, g));
}
}  // namespace

void NextGradientColour() {
    using Gradient::GradientColourIndex;
    GradientColourIndex = static_cast<int16_t>(GradientColourIndex + 1 > 255 ? 0 : GradientColourIndex + 1);
    GradientColourToPrimary(GradientColourIndex);
}

void PreviousGradientColour() {
    using Gradient::GradientColourIndex;
    GradientColourIndex = static_cast<int16_t>(GradientColourIndex - 1 < 0 ? 255 : GradientColourIndex - 1);
    GradientColourToPrimary(GradientColourIndex);
}
