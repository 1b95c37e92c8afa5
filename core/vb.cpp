// Parsing, formatting and the shared random generator.
#include "core/vb.h"

#include <cctype>
#include <cstdio>
#include <cstdlib>

namespace vb {

double Val(std::string_view s) {
    size_t i = 0;
    while (i < s.size() && (s[i] == ' ' || s[i] == '\t' || s[i] == '\n' || s[i] == '\r')) ++i;
    std::string digits;
    if (i < s.size() && (s[i] == '+' || s[i] == '-')) digits += s[i++];
    bool any = false;
    while (i < s.size() && std::isdigit(static_cast<unsigned char>(s[i]))) { digits += s[i++]; any = true; }
    if (i < s.size() && s[i] == '.') {
        digits += s[i++];
        while (i < s.size() && std::isdigit(static_cast<unsigned char>(s[i]))) { digits += s[i++]; any = true; }
    }
    if (!any) return 0.0;
    if (i < s.size() && (s[i] == 'e' || s[i] == 'E')) {
        std::string exp = "e";
        size_t j = i + 1;
        if (j < s.size() && (s[j] == '+' || s[j] == '-')) exp += s[j++];
        bool expDigits = false;
        while (j < s.size() && std::isdigit(static_cast<unsigned char>(s[j]))) { exp += s[j++]; expDigits = true; }
        if (expDigits) digits += exp;
    }
    return std::strtod(digits.c_str(), nullptr);
}

std::mt19937& RandomEngine() {
    static std::mt19937 engine(20261121u);
    return engine;
}

double Rnd() {
    // 53 random bits in [0, 1); never reaches 1.
    return std::generate_canonical<double, 53>(RandomEngine());
}

void Randomize(uint32_t seed) { RandomEngine().seed(seed); }

std::string Str(double v) {
    if (v == std::trunc(v) && std::fabs(v) < 1e15) {
        char buf[32];
        std::snprintf(buf, sizeof buf, "%lld", static_cast<long long>(v));
        return buf;
    }
    char buf[40];
    std::snprintf(buf, sizeof buf, "%.7g", v);
    return buf;
}

}  // namespace vb
