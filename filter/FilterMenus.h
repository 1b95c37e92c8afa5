// The frame's menu entries whose commands live in the filter folder: the Filter
// and "Combine with swap" menus, the greyscale, invert and dynamic range entries
// of the Buffer menu, and the alpha blur. The entries themselves stand in the
// frame's menu table, in display order.
#pragma once

#include "core/framework/controls.h"

namespace MDIForm1 {
extern MenuEntry Adjust, ColorBalance2, ColorBalance, Adj_Binary_Controst, Adjust_Sat, Addjust_Hue;
extern MenuEntry Filter_Color, ColorNegative, ColorInvertValue, ColorSwapChannels, ColorRollChannels, SatXVal,
    ColorPosterize;
extern MenuEntry Blur, Simpleblur, FastGaus, Adjustableblur, BlurLightDifuse;
extern MenuEntry Combine, CombineMix, CobineOverlay, Premult, CombineAdd, CombineSub, CombineMult, CombineDiv,
    CombineScreen, CombineLuminance, CombineDifference, CombineAroundGrey, Combinelighter, CombineDarker,
    CombineTexture, Combine_binary, comp, Comp_green, comp_blue, CombineEmboss, CombineEmbTL, CombineEmbT,
    CombineEmbTR, CombineEmbR, CombineEmbBR, CombineEmbB, CombineEmbBL, CombineEmbL;
extern MenuEntry BufferValue, GrayscaleAverage, GrayscaleVideo, BufferInvert, DynamicRangeCompensate;
extern MenuEntry Alpha_Blur;
}  // namespace MDIForm1
