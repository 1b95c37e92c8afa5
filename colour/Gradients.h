// The eight gradients: 256 steps of red, green, blue and opacity each, the
// entries a gradient is made from, and the operations that make and edit them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

constexpr int GradientSteps = 256, GradientChannels = 4, GradientCount = 8;
constexpr size_t GradientFileBytes = 8192;  // the .grd file: GradientData as it lies in memory
constexpr size_t ColourMapBytes = 768;      // red, green, blue of one gradient

// GradientData(step, channel, gradient) with the step fastest in memory, so that
// the offset of a value is gradient * 1024 + channel * 256 + step.
extern uint8_t GradientData[GradientCount][GradientChannels][GradientSteps];
inline uint8_t& Grad(int step, int channel, int gradient) { return GradientData[gradient][channel][step]; }

// Entries of each gradient's strip: packed colour at a step, -1 for none.
extern int32_t GradEntries[GradientCount][GradientSteps];
extern uint8_t GradEntryRow;

// Channel masks for the sweep and the smoothing: the "R,G,B" tab edits three.
enum : int { ChanRed = 1, ChanGreen = 2, ChanBlue = 4, ChanOpacity = 8, ChanRGB = 7 };
int ChannelMaskOfTab(int tab);  // tabs: red, green, blue, opacity, "R,G,B"

// The built-in start values, and no entries.
void InitGradientData();
// Reads a .grd file over all eight gradients. A short file gives zeros for the
// bytes it lacks. False, with nothing changed, when the file cannot be opened.
bool ReadGradientFile(const std::string& path);
bool WriteGradientFile(const std::string& path);
// The 768-byte colour map of one gradient: red, green, blue steps one after another.
bool WriteColourMap(const std::string& path, int gradient);

// "Apply" from the entries of a gradient's strip.
void ApplyLinear(int gradient);
void ApplyCubic(int gradient);
void ReverseGradient(int gradient);
// A low pass over neighbouring steps of the masked channels; the ends keep their neighbours' share.
void SmoothGradient(int gradient, int channelMask);
// Draws the masked channels along a line from (fromStep, fromValue) to (toStep, toValue),
// every step between the two getting a value; steps and values are clamped to 0..255.
void SweepGradient(int gradient, int channelMask, int fromStep, int fromValue, int toStep, int toValue);
