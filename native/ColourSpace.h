// Hue, saturation and value: the hexcone conversions the filters and the
// brush's colour jitter share. Components are singles; r, g, b, s, v in 0..1
// and h in degrees.
#pragma once

namespace kwfilter {
// h in 0..360 (0 for a grey), s and v in 0..1.
void RGB_To_HSV(float r, float g, float b, float& h, float& s, float& v);
// The outputs come first. h = -1 stands for no hue and gives r = g = b = v;
// any other h is taken modulo 360. s and v may lie outside 0..1 (the hexcone
// formulas take them as they are); the outputs are held to 0..1.
void HSV_To_RGB(float& r, float& g, float& b, float h, float s, float v);
// Luminance and chrominance with the weights 0.299, 0.587, 0.114: y in 0..1,
// u = 0.492 (b - y), v = 0.877 (r - y). f_yuv2rgb is its exact inverse (no clamp).
void f_rgb2yuv(float r, float g, float b, float& y, float& u, float& v);
void f_yuv2rgb(float y, float u, float v, float& r, float& g, float& b);
}  // namespace kwfilter
