#include "core/document/AlphaBounds.h"

#include "core/document/Buffers.h"

int16_t AlphaLeft = 8000, AlphaRight = 0, AlphaTop = 8000, AlphaBottom = 0;

void GetAlphaMinMax() {
    int left, top, right, bottom;
    const bool any = FindSelection(left, top, right, bottom);
    AlphaLeft = static_cast<int16_t>(any ? left : 8000), AlphaRight = static_cast<int16_t>(any ? right : 0);
    AlphaTop = static_cast<int16_t>(any ? top : 8000), AlphaBottom = static_cast<int16_t>(any ? bottom : 0);
}
