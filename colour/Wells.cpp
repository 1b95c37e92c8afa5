// The wells: the palette of the tool panel, kept in plain text files.
#include "colour/Wells.h"

#include <cctype>
#include <fstream>
#include <sstream>

#include "colour/Colour.h"
#include "core/framework/AppState.h"
#include "core/frame/Form2.h"
#include "core/framework/Host.h"
#include "core/framework/vb.h"

uint8_t WellPickFlag = 0;

namespace {
constexpr const char* WellFilter = "Wells (*.wl)|*.wl|All files (*.*)|*";

// Writes a number as the classic numeric print does: a blank for the sign of a
// non-negative number and one trailing blank.
std::string PrintNumber(int64_t v) {
    std::string text = std::to_string(v);
    if (v >= 0) text.insert(text.begin(), ' ');
    text.push_back(' ');
    return text;
}
}  // namespace

uint32_t DefaultWellColour(int i) {
    // Greys along the first row, then seven rows of eight hues going from light to dark.
    int row = i / 8, col = i % 8;
    if (row == 0) {
        int v = col * 255 / 7;
        return vb::RGB(v, v, v);
    }
    static const int hue[8][3] = {{255, 0, 0},   {255, 128, 0}, {255, 255, 0}, {0, 192, 0},
                                  {0, 192, 192}, {0, 64, 255},  {128, 0, 255}, {255, 0, 160}};
    const double light[8] = {0, 0.6, 0.35, 0, 0, 0, 0, 0};
    const double dark[8] = {0, 0, 0, 0, 0.3, 0.55, 0.75, 0};
    auto at = [&](int c) {
        double v = hue[col][c];
        if (row == 7) return vb::CInt(v * 0.5 + 96 * 0.5);  // muted
        v = v + (255 - v) * light[row];
        v = v * (1 - dark[row]);
        return vb::CInt(v);
    };
    return vb::RGB(at(0), at(1), at(2));
}

void SetDefaultWells() {
    for (int i = 0; i < Form2::WellCount; ++i) Form2::Well(i).Color = DefaultWellColour(i);
}

void SaveWell(const std::string& path) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    if (!out) return;
    for (int i = 0; i < Form2::WellCount; ++i) out << PrintNumber(Form2::Well(i).Color) << "\r\n";
}

void Loadwell(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) return;
    std::string token;
    for (int i = 0; i < Form2::WellCount && in >> token; ++i) {
        // What cannot be a number ends the read, as a failed input would.
        char first = token[0];
        if (!(std::isdigit(static_cast<unsigned char>(first)) || first == '-' || first == '+' || first == '.')) return;
        double v = vb::Val(token);
        if (!(v >= -2147483648.0 && v <= 4294967295.0)) return;
        Form2::Well(i).Color = static_cast<uint32_t>(static_cast<int64_t>(v)) & 0xFFFFFF;
    }
}

void SaveWells_Click() {
    FileDialogRequest dialog;
    dialog.Title = "Save wells";
    dialog.Filter = WellFilter;
    dialog.InitDir = App.StartDirectory;
    if (auto path = host().SaveFileDialog(dialog)) {
        SaveWell(*path);
        Form2::Combo5_GotFocus();
    }
}

void Loadwells_Click() {
    FileDialogRequest dialog;
    dialog.Title = "Load wells";
    dialog.Filter = WellFilter;
    dialog.InitDir = App.StartDirectory;
    if (auto path = host().OpenFileDialog(dialog)) Loadwell(*path);
}

void pickfromWell(int well) {
    if (well < 0 || well >= Form2::WellCount) return;
    uint32_t c = Form2::Well(well).Color;
    Form2::HScroll1.Value = vb::RedOf(c);
    Form2::hscroll2.Value = vb::GreenOf(c);
    Form2::hscroll3.Value = vb::BlueOf(c);
}

void pickfromWell2(int well) {
    if (well < 0 || well >= Form2::WellCount) return;
    WellPickFlag = 0;
    Form2::Shape1.FillColor = Form2::Well(well).Color;
}

bool DragWell(float x, float y, float width, float height) { return x < 0 || y < 0 || x >= width || y >= height; }

void WellDragDrop(int well, uint32_t colour) {
    if (well < 0 || well >= Form2::WellCount) return;
    Form2::Well(well).Color = colour & 0xFFFFFF;
}

namespace Form2 {
void Combo5_GotFocus() { ListProgramFiles(File1, Combo5); }

void Combo5_Click() {
    std::string name = Combo5.Text();
    if (!name.empty()) Loadwell(ProgramFile(name));
}
}  // namespace Form2
