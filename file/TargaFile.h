// Targa files on disk: the loader that both the buffer and the brush use, the
// buffer's writer, the header of the last file read or written, and whole-file
// reads and writes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "file/TargaFormat.h"

extern TargaFileHeader TargaHeader;  // the header of the last file read or written
extern uint8_t TargaSaveType;        // 1 = 24-bit, 2 = 32-bit, 3 = 8-bit grey, 4 = 8-bit colour

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

// Bytes of a whole file, or false when it cannot be read.
bool ReadWholeFile(const std::string& path, std::vector<uint8_t>& bytes);
// Writes over the start of a file without truncating it: a longer old file keeps its tail.
bool WriteOverFile(const std::string& path, const uint8_t* bytes, size_t size);
