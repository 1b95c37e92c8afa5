// File name tests of the file commands. Only three-letter extensions are ever
// cut off, so four-letter ones never match.
#pragma once

#include <cstdint>
#include <string>

// The name without a three-letter extension; otherwise the name as given.
std::string SafeRemoveExt(const std::string& name);
// 0 when the extension is "tga" (any case), else 255.
uint8_t CheckforTGA(const std::string& name);
// 0 when the extension is one the conversion service knows, else 255.
uint8_t CheckExtention(const std::string& name);
