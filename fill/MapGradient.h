// Map to current gradient: each pixel's brightness picks its colour from the
// selected gradient, through the selection.
#pragma once

void MapToGradient();
void MapGradient_Click();
