// Extension tests: CheckforTGA and the list of formats the conversion service takes.
#include "file/FileNames.h"

#include <algorithm>
#include <iterator>
#include <cctype>
#include <optional>
#include <string_view>

namespace {

constexpr std::string_view KnownExtensions[] = {
    "avs",  "targa", "bie",  "bmp",  "cgm",  "cmyk", "dcx",  "dib",   "dicom", "epdf", "epi",  "eps",
    "eps2", "epsf",  "epsi", "ept",  "fax",  "fits", "fpx",  "gray",  "hdf",   "hpgl", "html", "jbig",
    "jpg",  "jpeg",  "ico",  "map",  "miff", "mng",  "mono", "mpeg",  "mtv",   "pbm",  "pcd",  "pcds",
    "pcl",  "pcx",   "pdf",  "pgm",  "pict", "pix",  "png",  "pnm",   "ppm",   "ps",   "psd",  "ps2",
    "rad",  "rgb",   "rgba", "rla",  "rle",  "sgi",  "shtml", "sun",  "svg",   "tga",  "tiff", "tif",
    "tim",  "ttf",   "uil",  "uyvy", "vicar", "vid", "viff", "xbm",   "xpm",   "xwd",  "yuv"};

// The characters behind the cut stem, less the point, lower-cased; none when the cut fails.
std::optional<std::string> Extension(const std::string& name) {
    std::string stem = SafeRemoveExt(name);
    if (stem.size() == name.size()) return std::nullopt;
    std::string ext = name.substr(stem.size() + 1);
    std::transform(ext.begin(), ext.end(), ext.begin(), [](unsigned char c) { return std::tolower(c); });
    return ext;
}

}  // namespace

std::string SafeRemoveExt(const std::string& name) {
    if (name.size() > 4 && name[name.size() - 4] == '.') return name.substr(0, name.size() - 4);
    return name;
}

uint8_t CheckforTGA(const std::string& name) {
    auto ext = Extension(name);
    return ext && *ext == "tga" ? 0 : 255;
}

uint8_t CheckExtention(const std::string& name) {
    auto ext = Extension(name);
    if (!ext) return 255;
    return std::find(std::begin(KnownExtensions), std::end(KnownExtensions), *ext) != std::end(KnownExtensions) ? 0 : 255;
}
