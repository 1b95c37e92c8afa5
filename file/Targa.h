// The Targa side of the file commands: the shared header record and save
// settings, the buffer's writer and 8-bit quantiser, the file loader that both
// the buffer and the brush use, and the commands of the File menu.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "core/framework/Plane.h"
#include "file/TargaFormat.h"

extern TargaFileHeader TargaHeader;  // the header of the last file read or written
extern uint8_t TargaSaveType;        // 1 = 24-bit, 2 = 32-bit, 3 = 8-bit grey, 4 = 8-bit colour
extern uint8_t TargaCancelled;       // 1 when the options panel was left through Cancel
extern std::string FileName;         // the picture path in use

// What a load did, for the caller's closing steps.
struct TargaLoadResult {
    bool finished = false;    // reached the closing steps: a supported type, or a type with nothing to read
    bool pixelsRead = false;  // a supported type was decoded (fully or in part)
    int bytesPerPixel = 0;    // 4 switches alpha on
    bool stoppedEarly = false;
};

// Status texts of a load: the true-colour one differs between buffer and brush.
struct TargaLoadTexts {
    std::string trueColour = "Loading uncomressed Image data...";
};

// Reads a Targa file into `planes`. `prepare(width, height)` runs after the type
// tests and before any pixel is stored: it sizes the target planes and returns
// false to stop. Messages for the types the program refuses are shown here; a
// file that cannot be read gives a message too.
TargaLoadResult LoadTargaFile(const std::string& path, const TargaPlanes& planes,
                              const std::function<bool(int width, int height)>& prepare,
                              const TargaLoadTexts& texts = {});

// Writes the main buffer; flags: 1 alpha, 2 one byte per pixel, 4 palette index.
// False (with a message) when the file could not be written.
bool SaveTarga(const std::string& TargaFilename, uint8_t TargaFlags);

// The popularity quantiser: indices into IndexPlane (W x H) and 256 packed colours.
void Quantize8(Plane& IndexPlane, uint32_t* Palette, int Width, int Height);

// Bytes of a whole file, or false when it cannot be read.
bool ReadWholeFile(const std::string& path, std::vector<uint8_t>& bytes);
// Writes over the start of a file without truncating it: a longer old file keeps its tail.
bool WriteOverFile(const std::string& path, const uint8_t* bytes, size_t size);

// The commands.
void Open_Click();
void Save_Click();
// The whole buffer upside down (with its alpha when `withAlpha`), without an undo step.
void FlipBufferVertical(bool withAlpha);
void vertical_Click();
void horizontal_Click();

// Frees the animation before a load, asking first; false when the user declined.
// Set by the animation folder; without it there is never an animation to free.
extern std::function<bool()> FreeAnimationForLoad;
