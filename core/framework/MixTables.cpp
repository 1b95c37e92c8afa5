// The mixing tables behind layer mixing and the brush modes. The rounding of the
// divide table is done in single precision and of the screen table in double,
// both half to even, as the tables have always been built.
#include "core/framework/MixTables.h"

#include <algorithm>
#include <cmath>

uint8_t MixAdd[65536], MixSub[65536], MixMult[65536], MixDiv[65536], MixScreen[65536], MixAroundGrey[65536];

void BuildMixTables(void (*step)(int percent)) {
    auto bar = [&](int p) {
        if (step) step(p);
    };
    for (int j = 0; j < 256; ++j)
        for (int i = 0; i < 256; ++i) MixAt(MixAdd, i, j) = static_cast<uint8_t>(std::min(i + j, 255));
    // MixSub(j, i): the first index minus the second.
    for (int i = 0; i < 256; ++i)
        for (int j = 0; j < 256; ++j) MixAt(MixSub, j, i) = static_cast<uint8_t>(std::max(j - i, 0));
    bar(20);
    for (int j = 0; j < 256; ++j)
        for (int i = 0; i < 256; ++i) MixAt(MixMult, i, j) = static_cast<uint8_t>((i * j) / 255);
    bar(30);
    for (int r = 0; r < 256; ++r)
        for (int c = 0; c < 256; ++c) {
            if (r == 0) {
                MixAt(MixDiv, c, r) = 255;
                continue;
            }
            volatile float q = static_cast<float>(c) / static_cast<float>(r);  // keep single precision
            float v = q * 255.0f;
            float rounded = std::nearbyint(v);
            MixAt(MixDiv, c, r) = static_cast<uint8_t>(std::min(255.0f, rounded));
        }
    bar(40);
    for (int j = 0; j < 256; ++j)
        for (int i = 0; i < 256; ++i)
            MixAt(MixScreen, i, j) = static_cast<uint8_t>(std::nearbyint(j + (255.0 - j) / 255.0 * i));
    bar(50);
    for (int j = 0; j < 256; ++j)
        for (int i = 0; i < 256; ++i) MixAt(MixAroundGrey, i, j) = static_cast<uint8_t>(std::clamp(i - 127 + j, 0, 255));
    bar(60);
}
