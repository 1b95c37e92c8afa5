// The frame store: an animation is a stack of frames of the canvas's size, and
// the main buffer is the working copy of the current frame. The transport
// moves pictures between the buffer planes and the store.
#pragma once

#include <cstdint>
#include <string>

#include "anim/FrameArray.h"

extern int32_t AnimFrameCount;    // 0: no animation
extern int32_t AnimCurrentFrame;  // from 0
extern int32_t AnimInterval;      // the timer's interval, milliseconds
extern int16_t AnimPlaying;       // 255 while the timer's GetFrame runs
extern int16_t AnimNoDisplay;     // non-zero: GetFrame does not redraw
extern FrameArray AnimR, AnimG, AnimB;

enum class CreateResult { Created, Nothing, Declined, Refused };

// n copies of the current buffer. Asks before replacing an animation; refuses
// with a message when the machine cannot hold the frames.
CreateResult CreateAnim(int32_t Frames);
void FreeAnim();
void InsertFrame(int32_t Frame);
void DeleteFrame(int32_t Frame);
void GotoFrame(int32_t Frame);
void StoreFrame();
void GetFrame();

// Bytes that `frames` frames of a w by h canvas take in the store.
uint64_t AnimationBytes(int w, int h, int64_t frames);
// A sentence on what `frames` frames of w by h take against what the machine
// has free, for the panel and the refusals.
std::string AnimationMemoryText(int w, int h, int64_t frames);
// True when the machine can hold `extra` more bytes; the current frames count
// as free when they are about to be replaced.
bool AnimationFits(uint64_t extra, bool replacingFrames);
