// The Flip entries of the Buffer menu, and the upright turn a load uses.
#pragma once

// The whole buffer upside down (with its alpha when `withAlpha`), without an undo step.
void FlipBufferVertical(bool withAlpha);
void vertical_Click();
void horizontal_Click();
