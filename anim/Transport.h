// The transport of the frame window: the animation menu's commands and the
// procedures of the transport bar and its timer.
#pragma once

namespace MDIForm1 {
void Ani_Create_Click();
void Ani_Free_Click();
void Ani_Interface_Click();
void Anim_Insert_Click();
void Anim_Delete_Click();
void Anim_Next_Click();
void Anim_Previous_Click();
void AnimScroll_Change();
void Anim_Play_Click();
void Anim_Stop_Click();
void Anim_Timer_Timer();
void Anim_Framerate_Change();
// The transport bar shows, and its menu entry is checked.
void ShowAnimTools();
// The frames are freed and the scroll bar is back at its start.
void ResetAnimation();
}  // namespace MDIForm1

namespace Menus {
void Anim_ClearFrames_Click();
}  // namespace Menus
