// The animation's rows.
#include "anim/AnimRows.h"

#include "anim/AnimFile.h"
#include "anim/ApplyToFrames.h"
#include "anim/FrameStore.h"
#include "anim/Transport.h"
#include "core/frame/MDIForm1.h"
#include "core/framework/Codes.h"

void FramesGoWithDocument() {
    if (AnimFrameCount > 0) MDIForm1::ResetAnimation();
}

Rows AnimRows() {
    using namespace MDIForm1;
    Rows rows;
    rows.menus = {{&Ani_Create, Ani_Create_Click},
                  {&Ani_open, Ani_open_Click},
                  {&Ani_Save, Ani_Save_Click},
                  {&Ani_sequence_Load, Ani_sequence_Load_Click},
                  {&Ani_sequence, Ani_Sequence_Click},
                  {&Ani_ApplyFrames, Ani_ApplyFrames_Click},
                  {&Ani_Free, Ani_Free_Click},
                  {&Ani_Interface, Ani_Interface_Click},
                  {&Menus::Anim_ClearFrames, Menus::Anim_ClearFrames_Click}};
    rows.controls = {OnEvent(AnimScroll, ControlEvent::Change, AnimScroll_Change),
                     OnEvent(Anim_Framerate, ControlEvent::Change, Anim_Framerate_Change),
                     OnEvent(Anim_Play, ControlEvent::Click, Anim_Play_Click),
                     OnEvent(Anim_Stop, ControlEvent::Click, Anim_Stop_Click),
                     OnEvent(Anim_Next, ControlEvent::Click, Anim_Next_Click),
                     OnEvent(Anim_Previous, ControlEvent::Click, Anim_Previous_Click),
                     OnEvent(Anim_Insert, ControlEvent::Click, Anim_Insert_Click),
                     OnEvent(Anim_Delete, ControlEvent::Click, Anim_Delete_Click),
                     OnEvent(Anim_Timer, ControlEvent::Timer, Anim_Timer_Timer)};
    return rows;
}
