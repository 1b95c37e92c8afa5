// The colour pickers of the tool panel: the tabs "rgb" (the three sliders),
// "rgb2" (a spectrum field), "sv" (a saturation and value square beside a hue
// strip) and "wheel" (a hue ring round a saturation and value square). Each
// turns a pointer position into a colour on the three sliders.
#pragma once

#include <cstdint>

struct Hsv {
    double h = 0;  // degrees, 0..360
    double s = 0;  // 0..1
    double v = 0;  // 0..1
};
uint32_t HsvToColour(const Hsv& c);
Hsv ColourToHsv(uint32_t colour);

// What a picker shows at a pointer position, and where it marks a colour.
enum class PickZone { None, Hue, SatVal, Spectrum };
struct PickResult {
    PickZone zone = PickZone::None;
    Hsv hsv;
};
// Picture54: hue across, white at the top through the pure hue to black at the bottom.
PickResult SpectrumAt(float x, float y, int width, int height);
// Picture56: the square on the left at `hue`, the hue strip on the right.
PickResult SvSquareAt(float x, float y, int width, int height, double hue, PickZone keep = PickZone::None);
// Picture43: the ring gives the hue, the square inside it saturation and value.
PickResult WheelAt(float x, float y, int width, int height, const Hsv& current, PickZone keep = PickZone::None);

// Puts a colour on the three primary sliders, as a pick does.
void SetPrimaryColour(uint32_t colour);
// The primary colour changed: the pickers follow it.
void PrimaryChanged();
// Paints the picker of the chosen tab.
void PaintPickers();
const Hsv& PickerHsv();

void WPickColor_Click();

namespace Form2 {
void TabBox_Click();
void Picture54_MouseDown(int button, int shift, float x, float y);
void Picture54_MouseMove(int button, int shift, float x, float y);
void Picture56_MouseDown(int button, int shift, float x, float y);
void Picture56_MouseMove(int button, int shift, float x, float y);
void Picture43_MouseDown(int button, int shift, float x, float y);
void Picture43_MouseMove(int button, int shift, float x, float y);
}  // namespace Form2
