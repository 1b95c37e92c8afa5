// The filter folder's rows: its entries of the Filter, Buffer, Alpha and
// "Combine with swap" menus.
#include "filter/FilterRows.h"

#include "core/frame/MDIForm1.h"
#include "filter/AdjustPanels.h"
#include "filter/AdjustTone.h"
#include "filter/AdjustValue.h"
#include "filter/Blurs.h"
#include "filter/ColourCommands.h"
#include "filter/Combine.h"
#include "filter/CustomBlur.h"
#include "filter/FadeLast.h"
#include "filter/FilterMenus.h"
#include "filter/Keying.h"
#include "filter/KeptFilter.h"

namespace {
std::vector<MenuRow> AdjustRows() {
    using namespace MDIForm1;
    return {{&ColorBalance2, ColorBalance2_Click},
            {&MDIForm1::ColorBalance, ColorBalance_Click},
            {&Adj_Binary_Controst, Adj_Binary_Controst_Click},
            {&Adjust_Sat, Adjust_Sat_Click},
            {&Addjust_Hue, Addjust_Hue_Click},
            {&ColorNegative, ColorNegative_Click},
            {&ColorInvertValue, ColorInvertValue_Click},
            {&ColorSwapChannels, ColorSwapChannels_Click},
            {&ColorRollChannels, ColorRollChannels_Click},
            {&SatXVal, SatXVal_Click},
            {&ColorPosterize, ColorPosterize_Click},
            {&GrayscaleAverage, GrayscaleAverage_Click},
            {&GrayscaleVideo, GrayscaleVideo_Click},
            {&BufferInvert, BufferInvert_Click},
            {&DynamicRangeCompensate, DynamicRangeCompensate_Click}};
}

std::vector<MenuRow> BlurRows() {
    using namespace MDIForm1;
    return {{&Simpleblur, Simpleblur_Click},
            {&FastGaus, FastGaus_Click},
            {&Adjustableblur, Adjustableblur_Click},
            {&BlurLightDifuse, BlurLightDifuse_Click}};
}

std::vector<MenuRow> CombineRows() {
    using namespace MDIForm1;
    return {{&CombineMix, CombineMix_Click},
            {&CobineOverlay, CobineOverlay_Click},
            {&Premult, Premult_Click},
            {&CombineAdd, CombineAdd_Click},
            {&CombineSub, CombineSub_Click},
            {&CombineMult, CombineMult_Click},
            {&CombineDiv, CombineDiv_Click},
            {&CombineScreen, CombineScreen_Click},
            {&CombineLuminance, CombineLuminance_Click},
            {&CombineDifference, CombineDifference_Click},
            {&CombineAroundGrey, CombineAroundGrey_Click},
            {&Combinelighter, Combinelighter_Click},
            {&CombineDarker, CombineDarker_Click},
            {&CombineTexture, CombineTexture_Click},
            {&Combine_binary, Combine_binary_Click},
            {&Comp_green, Comp_green_Click},
            {&comp_blue, comp_blue_Click},
            {&CombineEmbTL, [] { EmbossMap(0); }},
            {&CombineEmbT, [] { EmbossMap(1); }},
            {&CombineEmbTR, [] { EmbossMap(2); }},
            {&CombineEmbR, [] { EmbossMap(3); }},
            {&CombineEmbBR, [] { EmbossMap(4); }},
            {&CombineEmbB, [] { EmbossMap(5); }},
            {&CombineEmbBL, [] { EmbossMap(6); }},
            {&CombineEmbL, [] { EmbossMap(7); }}};
}
}  // namespace

Rows FilterRows() {
    Rows rows;
    // Every filter of the picture can be kept for the frames; fading the last
    // action and blurring the selection work on what frames do not hold.
    for (auto* part : {AdjustRows, BlurRows, CombineRows})
        for (MenuRow& r : RememberedFilters(part())) rows.menus.push_back(std::move(r));
    rows.menus.push_back({&MDIForm1::FadePrevious, FadePrevious_Click});
    rows.menus.push_back({&MDIForm1::Alpha_Blur, Alpha_Blur_Click});
    return rows;
}
