// Media presets: one table, one row a preset, written into the controls a
// user could move by hand so that every value reaches the brush engine
// through the controls' own change handlers; the lists and the popup menu that
// choose a row; and the airbrush maker.
#include "brush/Media.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <string>
#include <vector>

#include "brush/Brush.h"
#include "brush/BrushMask.h"
#include "brush/CustomBrush.h"
#include "brush/StockBrushes.h"
#include "colour/Paper.h"
#include "core/document/Buffers.h"
#include "core/framework/AppState.h"
#include "core/framework/Commands.h"
#include "core/framework/Host.h"
#include "core/framework/vb.h"
#include "core/frame/Form2.h"
#include "core/frame/MDIForm1.h"

const char* const MediaStyles[MediaStyleCount] = {"Default", "Airbrush",   "Pen",     "Pencil",
                                                  "Natural brush", "Watercolor", "Effects", "Organic fx"};

// Name, menu entry, style, image (stock brush), anti-aliasing, size, opacity,
// step, bumpiness, drybrush, negative, paper strength, the brush options'
// sliders (position, size, angle, hue, saturation, value, bleed, dryout,
// speed), and pen angle ("x") or painting mode.
const MediaPreset MediaPresets[MediaPresetCount] = {
    {"Sm. Default", "Default_Small", 0, 0, 0, 3, 255, 0, false, false, false, NoPaper, {0, 0, 0, 0, 0, 0, 0, 0, 0}, nullptr},
    {"Med. Default", "Default_Med", 0, 0, 0, 20, 255, 2, false, false, false, NoPaper, {0, 0, 0, 0, 0, 0, 0, 0, 0}, nullptr},
    {"Lrg. Default", "Default_Large", 0, 0, 0, 67, 255, 4, false, false, false, NoPaper, {0, 0, 0, 0, 0, 0, 0, 0, 0}, nullptr},
    {"Single pixel", "Default_Single", 0, 1, 0, 67, 255, 1, false, false, false, NoPaper, {0, 0, 0, 0, 0, 0, 0, 0, 0}, nullptr},
    {"Sm. airbrush", "Airbrush_Small", 1, 2, 2, 28, 80, 2, false, false, false, NoPaper, {0, 0, 0, 0, 0, 0, 0, 0, 0}, nullptr},
    {"Med. airbrush", "Airbrush_Med", 1, 2, 2, 50, 100, 5, false, false, false, NoPaper, {0, 0, 0, 0, 0, 0, 0, 0, 0}, nullptr},
    {"Lrg. airbrush", "Airbrush_Large", 1, 2, 2, 68, 132, 6, false, false, false, NoPaper, {0, 0, 0, 0, 0, 0, 0, 0, 0}, nullptr},
    {"Spatter", "Airbrush_Spatter", 1, 3, 2, 4, 120, 1, false, false, false, NoPaper, {20, 0, 0, 0, 0, 0, 0, 0, 0}, nullptr},
    {"Lrg. spatter", "Airbrush_LargeSpatter", 1, 2, 1, 30, 100, 1, false, false, false, NoPaper, {32, 16, 0, 10, 18, 14, 0, 0, 0}, nullptr},
    {"Sm. simple pen", "Pen_Small", 2, 3, 2, 3, 255, 0, false, false, false, NoPaper, {0, 0, 0, 0, 0, 0, 0, 0, 0}, "Multiply"},
    {"Lrg. simple pen", "Pen_Large", 2, 3, 2, 11, 255, 0, false, false, false, NoPaper, {0, 0, 0, 0, 0, 0, 0, 0, 0}, "Multiply"},
    {"Ball point", "Pen_Ballpoint", 2, 3, 2, 7, 180, 0, true, false, false, 32, {0, 0, 0, 0, 0, 0, 0, 0, 1}, "Multiply"},
    {"Drippy pen", "Pen_Drippy", 2, 3, 1, 6, 200, 0, true, false, false, 80, {1, 6, 0, 0, 0, 0, 0, 0, -18}, "Multiply"},
    {"Pen & ink", "Pen_AndInk", 2, 3, 1, 18, 140, 0, false, false, false, NoPaper, {0, 0, 0, 0, 0, 0, 0, 0, -18}, "Multiply"},
    {"Fine pencil", "Pencil_Fine", 3, 4, 1, 4, 160, 0, true, false, false, 40, {0, 0, 0, 0, 0, 0, 0, 0, -18}, "Multiply"},
    {"Med. pencil", "Pencil_Med", 3, 4, 1, 11, 200, 0, true, false, false, 100, {0, 0, 0, 0, 0, 0, 0, 0, -18}, "Multiply"},
    {"Heavy pencil", "Pencil_Large", 3, 4, 1, 9, 210, 1, true, false, false, 160, {0, 0, 0, 0, 0, 0, 0, 0, -18}, "Multiply"},
    {"Lrg. charcoal", "Pencil_Charcoal", 3, 4, 1, 50, 180, 3, false, true, false, 140, {0, 0, 0, 0, 0, 0, 0, 0, -18}, "Multiply"},
    {"Smudged charcoal", "Pencil_Smudged_Chrcl", 3, 4, 1, 65, 128, 4, true, true, false, 90, {0, 0, 0, 0, 0, 0, 100, 0, -18}, nullptr},
    {"Fine liner", "Natural_Fine", 4, 6, 1, 9, 170, 0, true, false, false, 30, {0, 0, 0, 0, 0, 0, 50, 0, -18}, nullptr},
    {"Med. loaded oil", "Natural_Med", 4, 6, 1, 50, 190, 3, true, false, false, 20, {0, 0, 0, 0, 0, 0, 200, 0, -18}, nullptr},
    {"Lrg. loaded oil", "Natural_Large", 4, 6, 1, 68, 180, 4, true, false, false, 30, {0, 0, 0, 0, 0, 0, 230, 0, -18}, nullptr},
    {"Wet fiberous oil", "Natural_WetFiber1", 4, 9, 1, 68, 190, 2, true, false, false, 30, {0, 0, 0, 0, 0, 0, 240, 2, -18}, "x"},
    {"Wet fiberous 2", "Natural_WetFiber2", 4, 4, 1, 68, 200, 2, true, false, false, 30, {0, 0, 0, 0, 0, 0, 250, 3, -18}, "x"},
    {"Lrg. splotches", "Natural_Splotchy", 4, 4, 0, 68, 250, 5, true, false, false, 82, {18, 18, 0, 16, 24, 20, 0, 2, 0}, nullptr},
    {"Camel hair", "Natural_Camel", 4, 7, 0, 68, 180, 2, true, true, false, 68, {2, 1, 0, 0, 0, 0, 0, 5, 0}, "x"},
    {"Dry brush", "Natural_Drybrush", 4, 10, 0, 68, 250, 2, true, true, false, 150, {0, 0, 0, 0, 0, 0, 0, 6, 0}, "x"},
    {"Lrg. tempera", "Natural_LargeTempera", 4, 3, 1, 68, 140, 3, true, false, false, 32, {0, 0, 0, 0, 0, 0, 180, 0, -18}, nullptr},
    {"Wet tempera", "Natural_WetTempera", 4, 3, 1, 68, 100, 3, true, false, false, 22, {0, 0, 0, 0, 0, 0, 230, 0, -18}, nullptr},
    {"Sm. watercolor", "Watercolor_Small", 5, 19, 1, 40, 130, 2, true, false, true, 24, {0, 0, 0, 0, 0, 0, 160, 0, -10}, nullptr},
    {"Med. watercolor", "Watercolor_Med", 5, 19, 1, 58, 140, 3, true, false, true, 26, {0, 0, 0, 0, 0, 0, 170, 0, -5}, nullptr},
    {"Lrg. watercolor", "Watercolor_Large", 5, 8, 1, 68, 150, 2, true, false, true, 24, {0, 0, 0, 0, 0, 0, 200, 0, -5}, "x"},
    {"Lrg. simple", "Watercolor_LargeSimple", 5, 3, 1, 68, 90, 4, true, false, true, 40, {0, 0, 0, 0, 0, 0, 0, 0, 0}, nullptr},
    {"Sponge dabs", "Watercolor_SpongeDabs", 5, 6, 1, 68, 140, 8, true, false, true, 60, {13, 7, 0, 0, 0, 0, 180, 0, 0}, nullptr},
    {"Sponge smear", "Watercolor_SpongeSmear", 5, 6, 0, 68, 140, 4, true, false, true, 120, {5, 3, 0, 0, 0, 0, 245, 2, 0}, "x"},
    {"Mostly water", "Watercolor_MostlyWater", 5, 8, 1, 58, 75, 3, true, false, true, 20, {0, 0, 0, 0, 0, 0, 252, 0, -5}, nullptr},
    {"Water drops", "Watercolor_WaterDrops", 5, 3, 1, 40, 90, 6, true, false, true, 30, {32, 16, 0, 10, 22, 20, 240, 0, -5}, nullptr},
    {"Smudge", "FX_Smudge", 6, 2, 2, 68, 84, 2, false, false, false, NoPaper, {0, 0, 0, 0, 0, 0, 0, 0, 0}, "Smear"},
    {"Smear", "Fx_Smear", 6, 2, 2, 68, 255, 2, false, false, false, NoPaper, {0, 0, 0, 0, 0, 0, 0, 0, 0}, "Smear"},
    {"Dodge", "FX_Dodge", 6, 2, 2, 68, 12, 4, false, false, false, NoPaper, {0, 0, 0, 0, 0, 0, 0, 0, 0}, "Additive"},
    {"Burn", "FX_Burn", 6, 2, 2, 68, 12, 4, false, false, false, NoPaper, {0, 0, 0, 0, 0, 0, 0, 0, 0}, "Subtractative"},
    {"Clone", "FX_Clone", 6, 2, 2, 68, 255, 4, false, false, false, NoPaper, {0, 0, 0, 0, 0, 0, 0, 0, 0}, "Panto"},
    {"Spotty", "Organic_Spotty", 7, 3, 1, 68, 128, 6, false, false, false, NoPaper, {32, 20, 0, 32, 54, 60, 0, 0, -5}, nullptr},
    {"Grassy", "Organic_Grassy", 7, 11, 1, 68, 240, 3, false, false, false, NoPaper, {24, 6, 0, 28, 50, 50, 90, 0, -5}, "x"},
    {"Grassy 2", "Organic_Grassy2", 7, 11, 1, 68, 240, 4, false, false, false, NoPaper, {8, 6, 30, 20, 50, 48, 90, 0, -5}, "x"},
    {"Leafy", "Organic_Leafy", 7, 12, 1, 68, 250, 6, false, false, false, NoPaper, {30, 7, 30, 30, 50, 40, 50, 0, -4}, "x"},
    {"Leafy 2", "Organic_Leafy2", 7, 17, 1, 68, 250, 8, false, false, false, NoPaper, {18, 7, 30, 40, 60, 58, 50, 0, -3}, "x"},
    {"Leafy 3", "Organic_Leafy3", 7, 18, 1, 68, 250, 10, false, false, false, NoPaper, {32, 14, 34, 32, 50, 50, 50, 0, -3}, "x"},
    {"Sticky", "Organic_Sticky", 7, 13, 1, 68, 250, 9, false, false, false, NoPaper, {9, 16, 19, 14, 30, 20, 50, 0, -4}, "x"},
    {"Ferny", "Organic_Ferny", 7, 14, 1, 68, 250, 8, false, false, false, NoPaper, {8, 16, 13, 24, 54, 58, 80, 0, -5}, "x"},
    {"Bubbly", "Organic_Bubbly", 7, 15, 1, 68, 128, 6, false, false, false, NoPaper, {32, 20, 0, 20, 40, 40, 0, 0, -10}, nullptr},
    {"Bubbly 2", "Organic_Bubbly2", 7, 16, 1, 68, 128, 6, false, false, false, NoPaper, {32, 20, 0, 10, 20, 20, 0, 0, -6}, nullptr},
};

namespace {
// Writes a list's position for a text; false when the list has no such text.
bool SetListText(ComboBox& list, const std::string& text) {
    for (int i = 0; i < list.ListCount(); ++i)
        if (list.items[static_cast<size_t>(i)] == text) {
            list.ListIndex.setQuietly(i);
            return true;
        }
    return false;
}

void WriteImageAndPaper(const MediaPreset& p) {
    SetBrushPicture(MakeStockBrush(p.image), StockBrushSide);
    App.CustomBrushOn = 0;
    OptionButton* aa[] = {&BrushOptions::Option1, &BrushOptions::Option2, &BrushOptions::Option3};
    aa[p.aa]->Value = true;
    Form2::Check1.Value = p.bump ? 1 : 0;
    if (p.paper != NoPaper) Form2::HScroll6.Value = p.paper;
    Form2::Check2.Value = p.dry ? 1 : 0;
    Form2::Check3.Value = p.neg ? 1 : 0;
}

// The fields in their order: image, anti-aliasing, paper, size, opacity, step,
// the brush options, then pen angle or the painting mode.
void WritePreset(const MediaPreset& p) {
    WriteImageAndPaper(p);
    Form2::HScroll5.Value = p.size;
    Form2::HScroll4.Value = p.opacity;
    Form2::slider1.Value = p.step;
    for (int s = 0; s < BrushOptions::SettingCount; ++s) BrushOptions::Settings[s].slider->Value = p.options[s];
    if (!p.other) return;
    if (std::string(p.other) == "x") {
        BrushOptions::Check1.Value = 1;
    } else if (SetListText(Form2::Combo4, p.other)) {
        Form2::Combo4_Click();
    }
}
}  // namespace

void SelectNewMedia() {
    PaperHold = 1;
    ClearAllGads();
    const std::string text = Form2::Combo1.Text();
    for (const MediaPreset& p : MediaPresets)
        if (text == p.name) {
            WritePreset(p);
            // Dodge and burn work from a mid grey.
            if (text == "Dodge" || text == "Burn") {
                Form2::HScroll1.Value = 128;
                Form2::hscroll2.Value = 128;
                Form2::hscroll3.Value = 128;
            }
            break;
        }
    PaperHold = 0;
    RefreshPaperBuff();
}

void SetupListbox() {
    Form2::Combo1.Clear();
    const std::string style = Form2::Combo2.Text();
    for (const MediaPreset& p : MediaPresets)
        if (p.style >= 0 && style == MediaStyles[p.style]) Form2::Combo1.AddItem(p.name);
    Form2::Combo1.ListIndex.setQuietly(Form2::Combo1.ListCount() > 0 ? 0 : -1);
}

void StartupMedia() {
    Form2::Combo2.Clear();
    for (const char* s : MediaStyles) Form2::Combo2.AddItem(s);
    Form2::Combo2.ListIndex.setQuietly(0);
    SetupListbox();
}

namespace Form2 {
void Combo2_Click() { SetupListbox(); }

void Combo1_Click() {
    SelectNewMedia();
    // No change event came from an unchanged size: the mask is rebuilt here.
    if (HScroll5.Value == ClearedBrushSize) Picture1_Paint();
}
}  // namespace Form2

namespace {
// A popup entry: the style, then the variant, as a user would pick them.
void PickPreset(const MediaPreset& p) {
    if (SetListText(Form2::Combo2, MediaStyles[p.style])) Form2::Combo2_Click();
    if (SetListText(Form2::Combo1, p.name)) Form2::Combo1_Click();
}

struct MediaEntries {
    MenuEntry root{Menus::form, "Media", "Media", nullptr};
    std::vector<std::unique_ptr<MenuEntry>> entries;
    std::vector<MenuRow> rows;
    void Add(const std::string& name, const std::string& caption, MenuEntry* parent, Command command) {
        entries.push_back(std::make_unique<MenuEntry>(Menus::form, name, caption, parent));
        if (command) rows.push_back({entries.back().get(), std::move(command)});
    }
    MediaEntries() {
        std::vector<MenuEntry*> groups;
        for (const char* style : MediaStyles) {
            Add(std::string("Media_") + style, style, &root, {});
            groups.push_back(entries.back().get());
        }
        for (const MediaPreset& p : MediaPresets)
            Add(p.menu, p.name, groups[static_cast<size_t>(p.style)], [&p] { PickPreset(p); });
        Add("Airbrush_Custom", "Custom airbrush...", &root, [] { Show(Airbrush_Options::form); });
        Add("BrushSettings", "Brush Settings...", &root, ShowBrushOptions);
        Add("ClearSettings", "Clear settings", &root, ClearAllGads);
    }
};

// Made once, on first use, after the popup window exists.
MediaEntries& Media() {
    static MediaEntries media;
    return media;
}
}  // namespace

MenuEntry& MediaMenu() { return Media().root; }

void Menus::Default_Single_Click() {
    for (const MediaPreset& p : MediaPresets)
        if (std::string(p.menu) == "Default_Single") PickPreset(p);
}
std::vector<MenuRow> MediaMenuRows() { return Media().rows; }

void MakeAirbrush(int Radius, int Bias) {
    if (Radius <= 0) return;
    // The panel's bias -99..99 as the curve's a in 0..1: 0 is the straight fall-off.
    const double a = 0.5 - Bias / 200.0, scale = 255.0 / Radius;
    int w = 2 * Radius, h = 2 * Radius;
    if (CreateEmptyBrush(w, h) != 0) return;
    for (int y = 0; y < BrushHeight; ++y)
        for (int x = 0; x < BrushWidth; ++x) {
            const double d = std::sqrt(double(x - Radius) * (x - Radius) + double(y - Radius) * (y - Radius));
            const double t = std::min(255.0, d * scale) / 255;
            const double g = t / ((1 / a - 2) * (1 - t) + 1);  // the bias curve
            BrushA(x, y) = static_cast<uint8_t>(std::clamp<int>(vb::CInt(255 - 255 * g), 0, 255));
            BrushR(x, y) = BrushG(x, y) = BrushB(x, y) = 0;
        }
    MDIForm1::Cust_Mode_Matte_Click();
    Form2::slider1.Value = std::clamp<int>(vb::CInt(0.25 * Radius), 1, 64);
    App.CustomBrushOn = -1;
    BrushChanged();
}

namespace Airbrush_Options {
Form form("Airbrush_Options", "Airbrush");
Slider HScroll5(form, "HScroll5", 1, 200, 20);
Slider HScroll4(form, "HScroll4", -99, 99, 0);
CommandButton Command1(form, "Command1", "Make", [] {
    MakeAirbrush(HScroll5.Value, HScroll4.Value);
    Hide(form);
}, ButtonRole::Default);
namespace {
struct Wiring {
    Wiring() {
        HScroll5.Caption.setQuietly("Radius");
        HScroll4.Caption.setQuietly("Bias");
    }
} wiring;
}  // namespace
}  // namespace Airbrush_Options
