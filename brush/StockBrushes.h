// The stock brush pictures of the tool panel's palette: 35 x 35 greys, dark
// where the brush lays paint, white where it lays none.
#pragma once

#include <cstdint>
#include <vector>

constexpr int StockBrushSide = 35;
// The picture of palette entry i (0 .. Form2::StockBrushCount - 1), in the
// order of Form2::StockBrushNames: disc, dot, soft, aa-disc, grain, grain,
// mottle, hairs, rim, blots, band, grass, leaf, stems, frond, foam, bubbles,
// leaf 2, leaves, wash. Row after row, x fastest.
std::vector<uint8_t> MakeStockBrush(int i);
