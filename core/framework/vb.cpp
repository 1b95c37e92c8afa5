// Parsing, formatting and the shared random generator.
#include "core/framework/vb.h"

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

namespace {
// Spreads a seed over the whole state, so nearby seeds give unrelated sequences.
uint64_t SplitMix(uint64_t& x) {
    uint64_t z = (x += 0x9E3779B97F4A7C15ull);
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
    return z ^ (z >> 31);
}
RandomState Seeded(uint32_t seed) {
    RandomState r;
    uint64_t x = seed;
    for (uint64_t& v : r.s) v = SplitMix(x);
    return r;
}
}  // namespace

RandomState Random = Seeded(20261121u);

void Randomize(uint32_t seed) { Random = Seeded(seed); }

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
