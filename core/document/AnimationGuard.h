// The frames of an animation have the document's size, so the commands that
// change the size ask about them first, or refuse. The animation folder fills
// in the two procedures below; until it does there are never frames.
#pragma once

#include <functional>

extern std::function<bool()> AnimationExists;
// Frees the frames and puts the transport back to its start.
extern std::function<void()> FreeAnimationFrames;

bool AnimationPresent();
// With frames present asks "This will free the current animation." and frees
// them on yes. False when the user declined; true otherwise.
bool AskFreeAnimation();
