// The commands of the Buffer menu that work on the whole buffer.
#pragma once

void Clear_Click();
void swapbuffer_Click();
void CopyToSwap_Click();
void SwapToAlpha_Click();
void AlhpaToSwap_Click();
void New_Click();
void ImageInfo_Click();
// Crop to the selection and resample (ResizeCommands.cpp).
void BufferCrop_Click();
void BufferResample_Click();
