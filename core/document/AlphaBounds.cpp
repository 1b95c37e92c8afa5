#include "core/document/AlphaBounds.h"

#include <algorithm>

#include "core/document/Buffers.h"

int16_t AlphaLeft = 8000, AlphaRight = 0, AlphaTop = 8000, AlphaBottom = 0;

void GetAlphaMinMax() {
    int left = 8000, right = 0, top = 8000, bottom = 0;
    const int w = PictureWidth({&BufA}), h = PictureHeight({&BufA});
    for (int y = 0; y < h; ++y) {
        const uint8_t* row = BufA.row(y);
        for (int x = 0; x < w; ++x) {
            if (row[x] == 0) continue;
            left = std::min(left, x), right = std::max(right, x);
            top = std::min(top, y), bottom = std::max(bottom, y);
        }
    }
    AlphaLeft = static_cast<int16_t>(left), AlphaRight = static_cast<int16_t>(right);
    AlphaTop = static_cast<int16_t>(top), AlphaBottom = static_cast<int16_t>(bottom);
}
