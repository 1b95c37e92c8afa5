// The 64 colour wells of the tool panel, their files, and picking from them.
#pragma once

#include <cstdint>
#include <string>

// The colours the wells have before any file is read.
uint32_t DefaultWellColour(int i);
void SetDefaultWells();

// The .wl file: 64 lines of one decimal colour each, in the wells' order.
void SaveWell(const std::string& path);
// Reads up to 64 numbers into the wells in order; a short file leaves the rest.
void Loadwell(const std::string& path);
void SaveWells_Click();
void Loadwells_Click();

// Left button: the well's colour becomes the primary, through the three sliders.
void pickfromWell(int well);
// Right button: the well's colour becomes the secondary.
void pickfromWell2(int well);
extern uint8_t WellPickFlag;  // reset to 0 by a secondary pick
// True when the pointer (x, y, relative to the well) has left the well, so a drag begins.
bool DragWell(float x, float y, float width, float height);
// A colour dropped on a well.
void WellDragDrop(int well, uint32_t colour);

namespace Form2 {
void Combo5_GotFocus();
void Combo5_Click();
}  // namespace Form2
