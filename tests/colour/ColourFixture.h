// What the colour tests share: files in the temp folder and the picture's pixels.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "core/document/Buffers.h"
#include "core/framework/vb.h"
#include "tests/support/ScriptedHost.h"

namespace colourtest {
namespace fs = std::filesystem;

inline std::string TempFile(const std::string& name) { return (fs::temp_directory_path() / name).string(); }

inline std::string ReadAll(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

inline void WriteAll(const std::string& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}

inline uint32_t PixelAt(int x, int y) { return vb::RGB(BufR(x, y), BufG(x, y), BufB(x, y)); }
}  // namespace colourtest
