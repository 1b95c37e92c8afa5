// The seven store operations. A frame has the exact memory shape of a buffer
// plane, so moving one is three block copies each way.
#include "anim/FrameStore.h"

#include <cstring>
#include <new>

#include "core/display/Display.h"
#include "core/document/Buffers.h"
#include "core/frame/MDIForm1.h"
#include "core/framework/AppState.h"
#include "core/framework/Boxes.h"

int32_t AnimFrameCount = 0;
int32_t AnimCurrentFrame = 0;
int32_t AnimInterval = 0;
int16_t AnimPlaying = 0;
int16_t AnimNoDisplay = 0;
FrameArray AnimR, AnimG, AnimB;

namespace {
FrameArray* const Colours[3] = {&AnimR, &AnimG, &AnimB};
Plane* const Planes[3] = {&BufR, &BufG, &BufB};

// The current frame exists in all three arrays and has the planes' shape. The
// transport can point one past the last frame (the scroll bar reaches the
// count); such a frame is neither stored nor fetched.
bool CurrentFrameUsable() {
    if (AnimFrameCount <= 0) return false;
    for (int i = 0; i < 3; ++i)
        if (!Colours[i]->holds(AnimCurrentFrame) || Planes[i]->count() != Colours[i]->frameBytes()) return false;
    return true;
}

void AllocateFrames(int w, int h, int frames) {
    int done = 0;
    try {
        for (; done < 3; ++done) Colours[done]->resize(w, h, frames);
    } catch (const std::bad_alloc&) {
        for (int i = 0; i < done; ++i) Colours[i]->free();
        throw;
    }
}

// Grows or shrinks all three arrays by frames of their own shape, all or nothing.
void ResizeFrames(int frames) {
    const int before = AnimR.frames();
    int done = 0;
    try {
        for (; done < 3; ++done) Colours[done]->resize(AnimR.ubX(), AnimR.ubY(), frames);
    } catch (const std::bad_alloc&) {
        for (int i = 0; i < done; ++i) Colours[i]->resize(AnimR.ubX(), AnimR.ubY(), before);
        throw;
    }
}

std::string Megabytes(uint64_t bytes) {
    return std::to_string((bytes + (1u << 20) - 1) >> 20) + " MB";
}

// Fills every frame with the buffer, whole planes, with progress.
void FillFramesFromBuffer(int frames) {
    ShowStatus("Processing...");
    Bar(0);
    for (int f = 0; f < frames; ++f) {
        for (int i = 0; i < 3; ++i) std::memcpy(Colours[i]->frame(f), Planes[i]->data(), Colours[i]->frameBytes());
        Bar(static_cast<int>(100.0 / frames * f));
    }
    HideStatus();
}
}  // namespace

uint64_t AnimationBytes(int w, int h, int64_t frames) {
    if (w < 0 || h < 0 || frames <= 0) return 0;
    return 3ull * static_cast<uint64_t>(w + 1) * static_cast<uint64_t>(h + 1) * static_cast<uint64_t>(frames);
}

bool AnimationFits(uint64_t extra, bool replacingFrames) {
    uint64_t available = AvailableMemory ? AvailableMemory() : UINT64_MAX;
    if (replacingFrames && available != UINT64_MAX) available += AnimR.bytes() + AnimG.bytes() + AnimB.bytes();
    return extra <= available;
}

std::string AnimationMemoryText(int w, int h, int64_t frames) {
    const uint64_t available = AvailableMemory ? AvailableMemory() : UINT64_MAX;
    std::string text = std::to_string(frames) + " frames of " + std::to_string(w) + " by " + std::to_string(h) +
                       " pixels take " + Megabytes(AnimationBytes(w, h, frames));
    if (available != UINT64_MAX) text += "; " + Megabytes(available) + " are free";
    return text + ".";
}

CreateResult CreateAnim(int32_t Frames) {
    if (Frames <= 0) return CreateResult::Nothing;
    if (AnimFrameCount > 0 &&
        Kelpwick_QuestionBox("An animation allready exists.  Delete it?") == 2)
        return CreateResult::Declined;
    const int W = BufR.ubX(), H = BufR.ubY();
    if (BufR.empty() || W < 1 || H < 1) return CreateResult::Nothing;
    if (!AnimationFits(AnimationBytes(W, H, Frames), true)) {
        Kelpwick_MsgBox("Not enough memory for this animation: " + AnimationMemoryText(W, H, Frames));
        return CreateResult::Refused;
    }
    FreeAnim();
    try {
        AllocateFrames(W, H, Frames);
    } catch (const std::bad_alloc&) {
        FreeAnim();
        Kelpwick_MsgBox("Not enough memory for this animation: " + AnimationMemoryText(W, H, Frames));
        return CreateResult::Refused;
    }
    AnimCurrentFrame = 0;
    AnimFrameCount = Frames;
    StoreFrame();
    MDIForm1::AnimScroll.Value = 0;
    FillFramesFromBuffer(Frames);
    return CreateResult::Created;
}

void FreeAnim() {
    for (FrameArray* a : Colours) a->free();
    AnimCurrentFrame = 0;
    AnimFrameCount = 0;
}

void StoreFrame() {
    if (!CurrentFrameUsable()) return;
    // One byte short of the plane: the last element (column W of row H) stays as it was.
    for (int i = 0; i < 3; ++i)
        std::memcpy(Colours[i]->frame(AnimCurrentFrame), Planes[i]->data(), Colours[i]->frameBytes() - 1);
}

void GetFrame() {
    if (!CurrentFrameUsable()) return;
    for (int i = 0; i < 3; ++i)
        std::memcpy(Planes[i]->data(), Colours[i]->frame(AnimCurrentFrame), Colours[i]->frameBytes() - 1);
    if (AnimNoDisplay != 0) return;
    if (AnimPlaying == 0) return RedisplayWindow();
    // During playback the tool panel's preview and the title are left alone.
    App.Silent = 255;
    App.NoTitle = 255;
    RedisplayWindow();
    App.Silent = 0;
    App.NoTitle = 0;
}

void GotoFrame(int32_t Frame) {
    if (AnimFrameCount <= 0) return;
    StoreFrame();
    if (Frame < 0) Frame = 0;
    if (Frame > AnimFrameCount) Frame = AnimFrameCount;  // the count, not the last index
    AnimCurrentFrame = Frame;
    GetFrame();
}

void InsertFrame(int32_t Frame) {
    if (AnimFrameCount <= 0) return;
    if (Frame < 0) Frame = 0;
    if (Frame > AnimFrameCount) Frame = AnimFrameCount;
    const int W = AnimR.ubX(), H = AnimR.ubY();
    try {
        if (!AnimationFits(AnimationBytes(W, H, 1), false)) throw std::bad_alloc();
        ResizeFrames(AnimFrameCount + 1);
    } catch (const std::bad_alloc&) {
        Kelpwick_MsgBox("Not enough memory for one more frame: " + AnimationMemoryText(W, H, AnimFrameCount + 1));
        return;
    }
    // Frames Frame..last move up by one; frame Frame stays, so it is doubled.
    const size_t per = AnimR.frameBytes();
    const size_t moved = per * static_cast<size_t>(AnimFrameCount - Frame);
    for (FrameArray* a : Colours)
        if (moved > 0) std::memmove(a->frame(Frame + 1), a->frame(Frame), moved);
    AnimFrameCount = AnimFrameCount + 1;
    MDIForm1::AnimScroll.Max = MDIForm1::AnimScroll.Max + 1;
    AnimCurrentFrame = AnimCurrentFrame + 1;
    MDIForm1::AnimScroll.Value = MDIForm1::AnimScroll.Value + 1;
    GetFrame();
}

void DeleteFrame(int32_t Frame) {
    if (AnimFrameCount < 2 || MDIForm1::AnimScroll.Max < 2) return;
    if (Frame < 0) Frame = 0;
    const size_t per = AnimR.frameBytes();
    if (Frame < AnimFrameCount - 1) {
        const size_t moved = per * static_cast<size_t>(AnimFrameCount - 1 - Frame);
        for (FrameArray* a : Colours) std::memmove(a->frame(Frame), a->frame(Frame + 1), moved);
    }
    try {
        ResizeFrames(AnimFrameCount - 1);
    } catch (const std::bad_alloc&) {
        // A shrink that cannot move keeps the block; the last frame is simply unused.
    }
    AnimFrameCount = AnimFrameCount - 1;
    MDIForm1::AnimScroll.Max = MDIForm1::AnimScroll.Max - 1;
    if (AnimCurrentFrame > AnimFrameCount - 1) AnimCurrentFrame = AnimFrameCount - 1;
    GetFrame();
    if (MDIForm1::AnimScroll.Value > MDIForm1::AnimScroll.Max) MDIForm1::AnimScroll.Value = MDIForm1::AnimScroll.Max;
}
