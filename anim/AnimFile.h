// The animation file (magic "KWA1": a raw dump of the frame store with its
// padded rows and rows) and numbered Targa sequences, out and back in.
#pragma once

#include <cstdint>
#include <string>

#include "file/FileNames.h"  // SafeRemoveExt

namespace MDIForm1 {
void Ani_Save_Click();
void Ani_open_Click();
void Ani_Sequence_Click();
void Ani_sequence_Load_Click();
}  // namespace MDIForm1

// Writes the frame store as an animation file; false when it could not be written.
bool WriteAnimationFile(const std::string& path);
// Reads an animation file into a new document of its size. Messages for a file
// that is not one or that cannot be made; a short file leaves the unread frames
// holding the fresh buffer. False when nothing was loaded.
bool ReadAnimationFile(const std::string& path);

// The name of frame f of a sequence: the stem, an underscore, four digits at
// least, ".tga".
std::string SequenceFrameName(const std::string& stem, int32_t frame);
// The stem of a sequence from a name the user typed or picked: the extension,
// trailing digits and the underscore before them go.
std::string SequenceStem(const std::string& path);

std::string SafeRemoveNumeric(const std::string& name);
int16_t SafeGetNumeric(const std::string& name);
int SafeCountNumeric(const std::string& name);
