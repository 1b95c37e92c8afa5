// The direct colour commands: no panel, one undo step each.
#pragma once

void ColorNegative_Click();
void ColorInvertValue_Click();
void ColorRollChannels_Click();
void ColorSwapChannels_Click();
void BufferInvert_Click();
void GrayscaleAverage_Click();
void GrayscaleVideo_Click();
void DynamicRangeCompensate_Click();
