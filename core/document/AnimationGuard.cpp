// The question the size-changing commands ask while an animation exists.
#include "core/document/AnimationGuard.h"

#include "core/framework/Boxes.h"

std::function<bool()> AnimationExists;
std::function<void()> FreeAnimationFrames;

bool AnimationPresent() { return AnimationExists && AnimationExists(); }

bool AskFreeAnimation() {
    if (!AnimationPresent()) return true;
    if (Kelpwick_QuestionBox("This will free the current animation.") == 2) return false;
    if (FreeAnimationFrames) FreeAnimationFrames();
    return true;
}
