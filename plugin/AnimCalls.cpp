// Operations on the frames of the animation. The frame store ignores them
// when no animation exists and clamps frame numbers itself.
#include "anim/FrameStore.h"
#include "plugin/Calls.h"

namespace Automation {

QVariant Kel_InsertFrame(Call& c) {
    InsertFrame(ArgInt32(c, 0));
    return {};
}

// Asks, as the menu does, before replacing an animation that exists.
QVariant Kel_CreateAnim(Call& c) {
    const int frames = ArgInt32(c, 0);
    if (frames < 1) Refuse("An animation of " + std::to_string(frames) + " frames cannot be made.");
    CreateAnim(frames);
    return {};
}

QVariant Kel_GetFrame(Call&) {
    GetFrame();
    return {};
}

QVariant Kel_StoreFrame(Call&) {
    StoreFrame();
    return {};
}

QVariant Kel_GotoFrame(Call& c) {
    GotoFrame(ArgInt32(c, 0));
    return {};
}

QVariant Kel_DeleteFrame(Call& c) {
    DeleteFrame(ArgInt32(c, 0));
    return {};
}

QVariant Kel_GetTotalFrames(Call&) { return AnimFrameCount; }
QVariant Kel_GetCurrentFrame(Call&) { return AnimCurrentFrame; }

QVariant Kel_FreeAnim(Call&) {
    FreeAnim();
    return {};
}

}  // namespace Automation
