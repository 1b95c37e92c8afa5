// Running the kept filter over frames: each frame is brought into the buffer,
// filtered as if by hand (its own undo step) and stored again.
#include "anim/ApplyToFrames.h"

#include <string>

#include "anim/FrameStore.h"
#include "core/frame/MDIForm1.h"
#include "core/framework/Boxes.h"
#include "core/framework/Host.h"
#include "core/framework/vb.h"
#include "filter/KeptFilter.h"

namespace ApplyFrames {
namespace {
bool running = false;
bool stopAsked = false;

// A frame number as typed, or -1 when it names no frame.
int32_t TypedFrame(const TextBox& box) {
    const std::string& text = box.Text.get();
    const double v = vb::Val(text);
    if (text.empty() || v != vb::Int(v) || v < 0 || v > AnimFrameCount - 1) return -1;
    return static_cast<int32_t>(v);
}

void Progress(int32_t frame, int32_t done, int32_t count) {
    Label4.Caption = "Frame " + std::to_string(frame) + ": " + std::to_string(done) + " of " + std::to_string(count);
}

// Returns to the frame the artist was on, the transport bar agreeing.
void BackTo(int32_t frame) {
    GotoFrame(frame);
    MDIForm1::AnimScroll.Value.setQuietly(frame);
    MDIForm1::Anim_Label.Caption = std::to_string(frame);
}

void RunOver(int32_t first, int32_t last) {
    const int32_t was = AnimCurrentFrame;
    running = true, stopAsked = false;
    Command1.Enabled = false, Command2.Enabled = false, Command3.Enabled = true;
    const int32_t count = last - first + 1;
    for (int32_t f = first; f <= last && !stopAsked && !host().Closing(); ++f) {
        Progress(f, f - first, count);
        GotoFrame(f);
        RunKeptFilter();
        StoreFrame();
        host().DoEvents();  // a press of Stop lands here, between frames
    }
    running = false;
    Command1.Enabled = true, Command2.Enabled = true, Command3.Enabled = false;
    BackTo(was);
}
}  // namespace

Form form("ApplyFrames", "Apply to frames");
Label Label1(form, "Label1", "");
Label Label2(form, "Label2", "First frame");
TextBox Text1(form, "Text1", "0");
Label Label3(form, "Label3", "Last frame");
TextBox Text2(form, "Text2", "0");
Label Label4(form, "Label4", "");
CommandButton Command1(form, "Command1", "Ok", [] { Command1_Click(); }, ButtonRole::Default);
CommandButton Command2(form, "Command2", "Cancel", [] { Hide(form); }, ButtonRole::Cancel);
CommandButton Command3(form, "Command3", "Stop", [] { stopAsked = true; });

namespace {
struct Wiring {
    Wiring() {
        Command1.Group = Command2.Group = Command3.Group = 1;
        Command3.Enabled.setQuietly(false);
    }
} wiring;
}  // namespace

void Command1_Click() {
    if (running) return;
    if (AnimFrameCount <= 0) return Hide(form);
    const int32_t first = TypedFrame(Text1), last = TypedFrame(Text2);
    if (first < 0 || last < 0 || first > last)
        return Kelpwick_MsgBox("Type a first and a last frame from 0 to " + std::to_string(AnimFrameCount - 1) +
                               ", the first not after the last.");
    RunOver(first, last);
    Label4.Caption = stopAsked ? "Stopped." : "";
    if (!stopAsked) Hide(form);
}
}  // namespace ApplyFrames

namespace MDIForm1 {
void Ani_ApplyFrames_Click() {
    if (AnimFrameCount <= 0) return Kelpwick_MsgBox("There is no animation: create one first.");
    const std::string caption = KeptFilterCaption();
    if (caption.empty())
        return Kelpwick_MsgBox("No filter has been kept yet: apply one to the picture with Ok, then repeat it here.");
    ApplyFrames::Label1.Caption = "Repeat \"" + caption + "\" on frames:";
    ApplyFrames::Text1.Text = "0";
    ApplyFrames::Text2.Text = std::to_string(AnimFrameCount - 1);
    ApplyFrames::Label4.Caption = "";
    Show(ApplyFrames::form, true, &form);
}
}  // namespace MDIForm1
