// The stock brush pictures of the tool panel's palette: 35 x 35 greys, dark
// where the brush lays paint, white where it lays none.
#pragma once

#include <cstdint>
#include <vector>

constexpr int StockBrushSide = 35;

// One stock brush: what its picture shows and how the picture is drawn (row
// after row, x fastest). The same every run.
struct StockBrush {
    const char* name;
    std::vector<uint8_t> (*make)();
};

// The stock brushes, row i being palette entry i: the tool panel's picture
// Form2::StockBrush(i) (its control names are Form2::StockBrushNames).
constexpr int StockBrushTableSize = 20;
extern const StockBrush StockBrushTable[StockBrushTableSize];

// The picture of palette entry i; a blank picture outside the table.
std::vector<uint8_t> MakeStockBrush(int i);
