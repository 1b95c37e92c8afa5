// The brush folder's procedures of the tool panel: the current brush and its
// palette, the size slider, and the brush options panel.
#include "brush/Brush.h"

#include "brush/BrushMask.h"
#include "brush/BrushOptions.h"
#include "brush/Media.h"
#include "brush/StockBrushes.h"
#include "core/framework/AppState.h"
#include "core/framework/Codes.h"
#include "core/frame/Form2.h"
#include "core/framework/Host.h"
#include "core/framework/vb.h"

int16_t ClearedBrushSize = 0;

namespace {
void ShowPalette(bool on) {
    for (int i = 0; i < Form2::StockBrushCount; ++i) Form2::StockBrush(i).Visible = on;
}

void PaintPaletteEntry(int i) {
    PictureBox& p = Form2::StockBrush(i);
    std::vector<uint8_t> grey = MakeStockBrush(i);
    for (int y = 0; y < p.Height && y < StockBrushSide; ++y)
        for (int x = 0; x < p.Width && x < StockBrushSide; ++x) {
            uint8_t g = grey[static_cast<size_t>(y * StockBrushSide + x)];
            p.PSet(x, y, vb::RGB(g, g, g));
        }
    p.Refresh();
}
}  // namespace

void ShowBrushOptions() { Show(BrushOptions::form); }

void PickStockBrush(int i) {
    if (i < 0 || i >= Form2::StockBrushCount) return;
    SetBrushPicture(MakeStockBrush(i), StockBrushSide);
    App.CustomBrushOn = 0;  // the custom brush's planes stay, so it can come back
    ShowPalette(false);
    Picture1_Paint();
}

void ClearAllGads() {
    ClearedBrushSize = static_cast<int16_t>(Form2::HScroll5.Value);
    BrushOptions::Option1.Value = true;
    for (const BrushOptions::SettingRow& row : BrushOptions::Settings) row.slider->Value = row.cleared;
    BrushOptions::Check1.Value = 0;
    Form2::Check1.Value = 0;
    Form2::Check2.Value = 0;
    Form2::Check3.Value = 0;
    if (Form2::Combo4.ListIndex != 0) Form2::Combo4.ListIndex = 0;  // "Default": its click runs
    else Form2::Combo4_Click();
}

namespace Form2 {
void Picture1_MouseDown(int button, int, float, float) {
    if (button == MouseButton::Right) {
        ShowBrushOptions();
        return;
    }
    ShowPalette(!StockBrush(0).Visible);
}

void HScroll5_Change() { Picture1_Paint(); }
}  // namespace Form2

void StartupBrushes() {
    for (int i = 0; i < Form2::StockBrushCount; ++i) PaintPaletteEntry(i);
    SetBrushPicture(MakeStockBrush(0), StockBrushSide);  // the hard disc
    Picture1_Paint();
    StartupMedia();
}
