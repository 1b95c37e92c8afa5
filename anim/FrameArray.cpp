// The frame store's block: malloc and realloc rather than new, so that adding
// or dropping one frame of a long animation can resize the block in place.
#include "anim/FrameArray.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>

void FrameArray::resize(int ubX, int ubY, int frames) {
    if (ubX < 0 || ubY < 0 || frames <= 0) return free();
    const size_t per = static_cast<size_t>(ubX + 1) * static_cast<size_t>(ubY + 1);
    if (static_cast<size_t>(frames) > SIZE_MAX / per) throw std::bad_alloc();
    const size_t count = per * static_cast<size_t>(frames);
    const bool sameShape = data_ && ubX == ubX_ && ubY == ubY_;
    if (!sameShape) {
        auto* fresh = static_cast<uint8_t*>(std::calloc(count, 1));
        if (!fresh) throw std::bad_alloc();
        std::free(data_);
        data_ = fresh;
    } else {
        auto* grown = static_cast<uint8_t*>(std::realloc(data_, count));
        if (!grown) throw std::bad_alloc();
        data_ = grown;
        if (frames > frames_) std::memset(data_ + per * static_cast<size_t>(frames_), 0, per * (frames - frames_));
    }
    ubX_ = ubX;
    ubY_ = ubY;
    frames_ = frames;
}

void FrameArray::free() {
    std::free(data_);
    data_ = nullptr;
    ubX_ = ubY_ = -1;
    frames_ = 0;
}
