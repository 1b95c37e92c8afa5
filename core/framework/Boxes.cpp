// Message, question and value boxes, the progress window, and the report of
// errors that escape an event procedure.
#include "core/framework/Boxes.h"

#include <cmath>

#include "core/framework/Guard.h"
#include "core/framework/Host.h"
#include "core/framework/vb.h"
#include "core/framework/PanelLook.h"

int16_t DialogResult = 0;
int32_t GenericValue = 0;
int16_t BarPosition = 0;

namespace MessageBox {
Form form("MessageBox", "kelpwick");
Label Label1(form, "Label1");
CommandButton Command1(form, "Command1", "OK", [] { Hide(form); }, ButtonRole::Default);
}  // namespace MessageBox

namespace QuestionBox {
Form form("QuestionBox", "kelpwick");
Label Label1(form, "Label1");
CommandButton Command1(form, "Command1", "Yes", [] {
    DialogResult = 1;
    Hide(form);
}, ButtonRole::Default);
CommandButton Command2(form, "Command2", "No", [] {
    DialogResult = 2;
    Hide(form);
}, ButtonRole::Cancel);
}  // namespace QuestionBox

namespace GenericOptions {
Form form("GenericOptions", "Options");
Label Label1(form, "Label1");
Slider HScroll1(form, "HScroll1", 0, 255, 0);
CommandButton Command1(form, "Command1", "OK", [] {
    GenericValue = HScroll1.Value;
    DialogResult = 0;
    Hide(form);
}, ButtonRole::Default);
CommandButton Command2(form, "Command2", "Cancel", [] {
    DialogResult = -1;
    Hide(form);
}, ButtonRole::Cancel);
}  // namespace GenericOptions

namespace Status {
Form form("Status", "Processing...");
Label Frame1(form, "Frame1", "Processing...");
PictureBox Picture1(form, "Picture1", 300, 18);
PictureBox Picture2(form, "Picture2", 300, 18);
}  // namespace Status

namespace {
// Every panel takes the common colours when it is created.
struct Wiring {
    Wiring() {
        MessageBox::form.Load = [] { PrefsCallBack(MessageBox::form); };
        QuestionBox::form.Load = [] { PrefsCallBack(QuestionBox::form); };
        GenericOptions::form.Load = [] { PrefsCallBack(GenericOptions::form); };
        Status::form.Load = [] { PrefsCallBack(Status::form); };
        QuestionBox::Command1.Group = QuestionBox::Command2.Group = 1;
        GenericOptions::Command1.Group = GenericOptions::Command2.Group = 1;
    }
} wiring;
}  // namespace

void Kelpwick_MsgBox(const std::string& text) {
    MessageBox::Label1.Caption = text;
    Show(MessageBox::form, true);
}

int16_t Kelpwick_QuestionBox(const std::string& text) {
    QuestionBox::Label1.Caption = text;
    DialogResult = 2;  // closing the box any other way answers no
    Show(QuestionBox::form, true);
    return DialogResult;
}

int32_t GetGenericValue(const std::string& caption, int min, int max, int value) {
    GenericOptions::Label1.Caption = caption;
    GenericOptions::HScroll1.Min = static_cast<uint8_t>(min);
    GenericOptions::HScroll1.Max = static_cast<uint8_t>(max);
    GenericOptions::HScroll1.Value = static_cast<uint8_t>(value);
    DialogResult = -1;
    Show(GenericOptions::form, true);
    return DialogResult == -1 ? -1 : GenericValue;
}

uint32_t BarColumnColour(int i) {
    double a = i / 15.0 * 0.9 * 0.01745;
    double f = (std::sin(a) + 1) / 4 + 0.5;
    return vb::RGB(static_cast<int>(vb::RoundEven(24 * f)), static_cast<int>(vb::RoundEven(84 * f)),
                   static_cast<int>(vb::RoundEven(240 * f)));
}

void Bar(int percent) {
    using Status::Picture1;
    int w = Picture1.Width;
    int n = static_cast<int>(vb::Int(w / 100.0 * percent));
    int from = static_cast<int>(vb::Int(w / 100.0 * BarPosition));
    if (percent < BarPosition) {
        Picture1.Cls(0xFFFFFF);
        from = 0;
    }
    for (int i = from; i <= n && i < w; ++i) Picture1.VLine(i, BarColumnColour(i));
    Status::Picture2.Text = std::to_string(percent) + "%";
    BarPosition = static_cast<int16_t>(percent);
    Picture1.Refresh();
    // Painted at once while the work keeps the thread; no command runs in between.
    if (Status::form.Visible) host().PaintPending();
}

void ShowStatus(const std::string& caption) {
    Status::Frame1.Caption = caption;
    Status::form.Caption = caption;
    BarPosition = 0;
    Status::Picture1.Cls(0xFFFFFF);
    Status::Picture2.Text = "";
    Show(Status::form);
    host().DoEvents();
}

void HideStatus() { Hide(Status::form); }

void ReportEscapedError(const std::string& what) {
    try {
        Kelpwick_MsgBox(what);
    } catch (...) {
        // Nothing more can be said safely; the program goes on.
    }
}
