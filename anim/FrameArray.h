// One colour of the frame store: frames of one size stacked in one block,
// (column, row, frame) with the column fastest, each frame with a buffer
// plane's exact memory shape so that it moves with one block copy.
#pragma once

#include <cstddef>
#include <cstdint>

class FrameArray {
public:
    FrameArray() = default;
    FrameArray(const FrameArray&) = delete;
    FrameArray& operator=(const FrameArray&) = delete;
    ~FrameArray() { free(); }

    // Bounds 0..ubX by 0..ubY by 0..frames-1. Keeps the frames that stay; new
    // frames are zero. Growing reallocates in place where the system can, so a
    // stack of large frames does not need twice its memory to gain one. Throws
    // std::bad_alloc and leaves the array as it was.
    void resize(int ubX, int ubY, int frames);
    void free();

    bool empty() const { return data_ == nullptr; }
    int ubX() const { return ubX_; }
    int ubY() const { return ubY_; }
    int frames() const { return frames_; }
    size_t frameBytes() const { return static_cast<size_t>(ubX_ + 1) * static_cast<size_t>(ubY_ + 1); }
    size_t bytes() const { return frameBytes() * static_cast<size_t>(frames_); }
    bool holds(int frame) const { return data_ && frame >= 0 && frame < frames_; }
    uint8_t* frame(int f) { return data_ + frameBytes() * static_cast<size_t>(f); }
    const uint8_t* frame(int f) const { return data_ + frameBytes() * static_cast<size_t>(f); }
    uint8_t* data() { return data_; }
    const uint8_t* data() const { return data_; }

private:
    uint8_t* data_ = nullptr;
    int ubX_ = -1, ubY_ = -1, frames_ = 0;
};
