// The conversion program's error text, read for the limits it complains about.
#include "file/ConversionErrors.h"

#include <algorithm>
#include <cctype>
#include <sstream>
#include <vector>

const char* const ConversionDebugArguments[2] = {"-debug", "Exception"};

namespace {
std::string Lower(std::string s) {
    std::transform(s.begin(), s.end(), s.begin(), [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return s;
}

bool Has(const std::string& text, const char* fragment) { return text.find(fragment) != std::string::npos; }

std::string Trim(const std::string& s) {
    size_t a = s.find_first_not_of(" \t\r"), b = s.find_last_not_of(" \t\r");
    return a == std::string::npos ? std::string() : s.substr(a, b - a + 1);
}

// The program's own lines: the debug log's lines (a time stamp first, or an
// indented message) are left out, as are repeats. At most six.
std::string OwnLines(const std::string& errorText) {
    std::istringstream in(errorText);
    std::vector<std::string> kept;
    for (std::string line; std::getline(in, line);) {
        if (line.empty() || std::isdigit(static_cast<unsigned char>(line[0])) || line[0] == ' ' || line[0] == '\t')
            continue;
        line = Trim(line);
        if (!line.empty() && std::find(kept.begin(), kept.end(), line) == kept.end()) kept.push_back(line);
    }
    if (kept.size() > 6) kept.resize(6);
    std::string out;
    for (const std::string& l : kept) out += (out.empty() ? "" : "\n") + l;
    return out;
}

// "width (16KP)" or "area (128MP), memory (256MiB), map (512MiB) and disk (1GiB)".
std::string NameWithValues(const std::vector<std::string>& names, const std::string& limits) {
    std::string out;
    for (size_t i = 0; i < names.size(); ++i) {
        if (i > 0) out += i + 1 == names.size() ? " and " : ", ";
        std::string value = ResourceLimit(limits, names[i]);
        out += Lower(names[i]) + " (" + (value.empty() ? "value not known" : value) + ")";
    }
    return out;
}
}  // namespace

std::string ResourceLimit(const std::string& limits, const std::string& name) {
    std::istringstream in(limits);
    const std::string key = Lower(name) + ":";
    for (std::string line; std::getline(in, line);) {
        line = Trim(line);
        if (Lower(line).rfind(key, 0) == 0) return Trim(line.substr(key.size()));
    }
    return {};
}

std::string LimitsNamed(const std::string& errorText) {
    const std::string t = Lower(errorText);
    if (Has(t, "not authorized") || Has(t, "security policy")) return "Policy";
    if (Has(t, "width or height exceeds limit")) return "Width Height";
    if (Has(t, "width exceeds")) return "Width";
    if (Has(t, "height exceeds")) return "Height";
    if (Has(t, "cache resources exhausted") || Has(t, "pixel cache allocation failed")) return "Area Memory Map Disk";
    if (Has(t, "memory allocation failed")) return "Memory";
    if (Has(t, "time limit exceeded")) return "Time";
    return {};
}

std::string ConversionFailureReason(const std::string& errorText, const std::string& limits) {
    const std::string named = LimitsNamed(errorText);
    if (named.empty()) return OwnLines(errorText);
    if (named == "Policy")
        return "ImageMagick's security policy does not allow this kind of file (see its policy.xml).\n" +
               OwnLines(errorText);
    std::vector<std::string> names;
    std::istringstream in(named);
    for (std::string n; in >> n;) names.push_back(n);
    const std::string what = names.size() == 1 ? "limit" : "limits";
    std::string reason = "The picture is beyond ImageMagick's " + what + " on " + NameWithValues(names, limits) + ".";
    if (named == "Area Memory Map Disk")
        reason = "The picture needs more room than ImageMagick's " + what + " allow: " +
                 NameWithValues(names, limits) + ".";
    return reason + "\nThese limits are set in ImageMagick's policy.xml.";
}
