// The brush options' settings table against the panel it describes, and the
// stock brush table against the palette it fills.
#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <vector>

#include "brush/Brush.h"
#include "brush/BrushOptions.h"
#include "brush/StockBrushes.h"
#include "core/frame/Form2.h"

namespace O = BrushOptions;

TEST(BrushSettings, EverySliderOfThePanelHasOneRowThatEscPutsBackInRange) {
    std::set<const Control*> rows;
    for (const O::SettingRow& row : O::Settings) {
        EXPECT_TRUE(rows.insert(row.slider).second) << row.caption << " has two rows";
        EXPECT_EQ(&row.slider->form, &O::form) << row.caption;
        EXPECT_EQ(row.slider->Caption.get(), row.caption);
        EXPECT_GE(row.cleared, row.slider->Min.get()) << row.caption;
        EXPECT_LE(row.cleared, row.slider->Max.get()) << row.caption;
        EXPECT_GT(row.scale, 0) << row.caption;
    }
    for (const Control* c : O::form.controls) {
        if (c->Kind == ControlKind::Slider) {
            EXPECT_TRUE(rows.count(c)) << c->Name << " has no row";
        }
    }

    // Esc brings every setting back, whatever it was moved to, and the engine
    // then reads nothing from the panel.
    for (const O::SettingRow& row : O::Settings) row.slider->Value = row.slider->Max;
    O::Check1.Value = 1;
    O::Option3.Value = true;
    ClearAllGads();
    for (int s = 0; s < O::SettingCount; ++s) {
        const O::SettingRow& row = O::Settings[s];
        EXPECT_EQ(row.slider->Value.get(), row.cleared) << row.caption;
        EXPECT_EQ(O::Scaled(static_cast<O::Setting>(s)), 0.0f) << row.caption;
    }
    EXPECT_EQ(O::Check1.Value.get(), 0);
    EXPECT_TRUE(O::Option1.Value);
}

TEST(BrushSettings, TheColourJittersReadAsSharesOfTheirRange) {
    // Full hue jitter is the whole wheel; saturation and value their whole range.
    for (O::Setting s : {O::RandomHue, O::RandomSaturation, O::RandomValue}) {
        Slider& slider = *O::Settings[s].slider;
        slider.Value = slider.Max;
        EXPECT_FLOAT_EQ(O::Scaled(s), 1.0f) << O::Settings[s].caption;
        slider.Value = 0;
    }
    O::Hscroll1.Value = 17;  // the position jitter is in pixels
    EXPECT_EQ(O::Scaled(O::RandomPosition), 17.0f);
    O::hscroll9.Value = -18;  // and the speed keeps its sign
    EXPECT_EQ(O::Scaled(O::SpeedScale), -18.0f);
    O::Hscroll1.Value = 0;
    O::hscroll9.Value = 0;
}

TEST(StockBrushes, OneDistinctPaintedPictureForEachPaletteEntry) {
    ASSERT_EQ(StockBrushTableSize, Form2::StockBrushCount);
    std::vector<std::vector<uint8_t>> seen;
    for (int i = 0; i < StockBrushTableSize; ++i) {
        const std::vector<uint8_t> p = MakeStockBrush(i);
        ASSERT_EQ(p.size(), static_cast<size_t>(StockBrushSide * StockBrushSide)) << i;
        EXPECT_LT(*std::min_element(p.begin(), p.end()), 255) << StockBrushTable[i].name << " paints nothing";
        EXPECT_EQ(p, StockBrushTable[i].make()) << StockBrushTable[i].name << " differs from run to run";
        EXPECT_EQ(std::count(seen.begin(), seen.end(), p), 0) << StockBrushTable[i].name << " repeats a picture";
        seen.push_back(p);
    }
    // Outside the table a blank picture: a brush that lays no paint.
    for (int i : {-1, StockBrushTableSize})
        EXPECT_EQ(MakeStockBrush(i), std::vector<uint8_t>(StockBrushSide * StockBrushSide, 255)) << i;
}
