// The animation menu, the transport bar and its timer, and the panel that
// makes an animation.
#include "anim/Transport.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "anim/Create_Anim.h"
#include "anim/FrameStore.h"
#include "core/document/Buffers.h"
#include "core/frame/Form2.h"
#include "core/frame/MDIForm1.h"
#include "core/framework/Boxes.h"
#include "core/framework/Host.h"
#include "core/framework/vb.h"

namespace Create_Anim {
Form form("Create_Anim", "Create animation");
Label Label1(form, "Label1", "Number of frames");
TextBox Text1(form, "Text1", "10", [] { Text1_Change(); });
Label Label2(form, "Label2", "");
CommandButton Command1(form, "Command1", "OK", [] { Command1_Click(); }, ButtonRole::Default);
CommandButton Command2(form, "Command2", "Cancel", [] { Command2_Click(); }, ButtonRole::Cancel);

namespace {
// The count as typed, or -1 when it is not a whole number the store can hold.
int64_t TypedFrames() {
    double v = vb::RoundEven(vb::Val(Text1.Text.get()));
    return v >= 0 && v <= 2147483647.0 ? static_cast<int64_t>(v) : -1;
}
}  // namespace

void Text1_Change() {
    int64_t n = TypedFrames();
    Label2.Caption = n > 0 ? AnimationMemoryText(BufferWidth(), BufferHeight(), n) : "Type a number of frames.";
}

void Command1_Click() {
    int64_t n = TypedFrames();
    if (n < 1) return Kelpwick_MsgBox("Type a number of frames of 1 or more.");
    switch (CreateAnim(static_cast<int32_t>(n))) {
        case CreateResult::Refused:
        case CreateResult::Nothing: return;  // the panel stays for another number
        case CreateResult::Declined: return Hide(form);
        case CreateResult::Created: break;
    }
    MDIForm1::AnimScroll.Max = static_cast<int>(n);
    Hide(form);
    MDIForm1::ShowAnimTools();
}

void Command2_Click() { Hide(form); }
}  // namespace Create_Anim

namespace MDIForm1 {
void ShowAnimTools() {
    Anim_Tools.Visible = true;
    Ani_Interface.Checked = true;
}

void ResetAnimation() {
    FreeAnim();
    AnimScroll.Value = 0;
    AnimScroll.Max = 1;
}

void Ani_Create_Click() {
    Create_Anim::Text1_Change();  // the memory figure for the size the document has now
    Show(Create_Anim::form, true, &form);
}

void Ani_Free_Click() {
    if (Kelpwick_QuestionBox("Are you sure you want to free this animation?") != 1) return;
    ResetAnimation();
}

void Ani_Interface_Click() {
    Anim_Tools.Visible = !Anim_Tools.Visible;
    Ani_Interface.Checked = Anim_Tools.Visible;
}

void Anim_Insert_Click() {
    if (AnimFrameCount <= 0) return;
    Anim_Insert.Enabled = false;  // held down while the frames move
    InsertFrame(AnimCurrentFrame);
    Anim_Insert.Enabled = true;
}

void Anim_Delete_Click() {
    if (AnimFrameCount <= 0) return;
    Anim_Delete.Enabled = false;
    DeleteFrame(AnimCurrentFrame);
    Anim_Delete.Enabled = true;
}

void Anim_Next_Click() {
    if (AnimScroll.Value < AnimFrameCount - 1) AnimScroll.Value = AnimScroll.Value + 1;
}

void Anim_Previous_Click() {
    if (AnimScroll.Value > 0) AnimScroll.Value = AnimScroll.Value - 1;
}

void AnimScroll_Change() {
    GotoFrame(AnimScroll.Value);
    Anim_Label.Caption = std::to_string(AnimScroll.Value.get());
}

namespace {
// Milliseconds between frames for a rate: Int(1000 / rate), at least 1.
int IntervalFor(double rate) { return std::max(1, static_cast<int>(vb::Int(1000.0 / rate))); }
}  // namespace

void Anim_Play_Click() {
    StoreFrame();
    double v = std::clamp(vb::Val(Anim_Framerate.Text.get()), 0.0, 1000.0);
    int interval = v > 0 ? IntervalFor(v) : 0;  // 0: the timer never fires
    AnimInterval = interval;
    Anim_Timer.Interval = interval;
    Anim_Timer.TimerEnabled = true;
}

void Anim_Framerate_Change() {
    const std::string& text = Anim_Framerate.Text.get();
    double v = vb::Val(text);
    if (text.empty() || !(v > 0)) return;
    AnimInterval = IntervalFor(v);
    Anim_Timer.Interval = AnimInterval;
}

void Anim_Stop_Click() { Anim_Timer.TimerEnabled = false; }

void Anim_Timer_Timer() {
    int32_t next = AnimCurrentFrame + 1;
    if (next > AnimFrameCount - 1) next = 0;
    AnimCurrentFrame = next;
    AnimPlaying = 255;
    GetFrame();
    AnimPlaying = 0;
}
}  // namespace MDIForm1

namespace Menus {
namespace {
void FillBuffer(uint8_t r, uint8_t g, uint8_t b) {
    for (auto [plane, v] : {std::pair{&BufR, r}, std::pair{&BufG, g}, std::pair{&BufB, b}})
        std::memset(plane->data(), v, plane->count());
}
}  // namespace

void Anim_ClearFrames_Click() {
    if (AnimFrameCount <= 0) return;
    if (Kelpwick_QuestionBox("Clear all frames of animation?") == 2) return;
    ShowStatus("Clearing frames to secondary color");
    const uint32_t colour = Form2::SecondaryColour();
    const int32_t remembered = AnimCurrentFrame;
    for (int32_t f = 0; f < AnimFrameCount; ++f) {
        AnimNoDisplay = 255;
        GotoFrame(f);
        AnimNoDisplay = 0;
        FillBuffer(vb::RedOf(colour), vb::GreenOf(colour), vb::BlueOf(colour));
        StoreFrame();
        Bar(static_cast<int>(static_cast<double>(f) / AnimFrameCount * 100));
    }
    AnimCurrentFrame = remembered;
    GotoFrame(remembered);
    HideStatus();
    Status::Frame1.Caption = "Processing...";
}
}  // namespace Menus
