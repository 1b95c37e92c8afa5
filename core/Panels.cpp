// Zoom, fat bits, fade, memory options, the about box, keyboard help and the
// small commands of the Window and Help menus.
#include "core/Panels.h"

#include <fstream>
#include <sstream>

#include "core/AppState.h"
#include "core/Boxes.h"
#include "core/Buffers.h"
#include "core/Display.h"
#include "core/Form1.h"
#include "core/Form2.h"
#include "core/Host.h"
#include "core/MDIForm1.h"
#include "core/Settings.h"
#include "core/Undo.h"
#include "core/vb.h"
#include "native/kwfilter.h"

namespace Nav {
Form form("Nav", "Zoom");
Slider HScroll1(form, "HScroll1", 25, 600, 100, [] { HScroll1_Change(); });
Label Label1(form, "Label1", "100");
CommandButton Image8(form, "Image8", "25%", [] { HScroll1.Value = 25; });
CommandButton Image7(form, "Image7", "50%", [] { HScroll1.Value = 50; });
CommandButton Image1(form, "Image1", "100%", [] { HScroll1.Value = 100; });
CommandButton Image2(form, "Image2", "200%", [] { HScroll1.Value = 200; });
CommandButton Image3(form, "Image3", "300%", [] { HScroll1.Value = 300; });
CommandButton Image4(form, "Image4", "400%", [] { HScroll1.Value = 400; });
CommandButton Image5(form, "Image5", "500%", [] { HScroll1.Value = 500; });
CommandButton Image6(form, "Image6", "600%", [] { HScroll1.Value = 600; });
Shape Shape1(form, "Shape1");

namespace {
struct Wiring {
    Wiring() {
        for (Control* c : {static_cast<Control*>(&Image8), static_cast<Control*>(&Image7), static_cast<Control*>(&Image1),
                           static_cast<Control*>(&Image2), static_cast<Control*>(&Image3), static_cast<Control*>(&Image4),
                           static_cast<Control*>(&Image5), static_cast<Control*>(&Image6)})
            c->Group = 1;
        Shape1.Visible.setQuietly(false);
        form.Load = [] { PrefsCallBack(form); };
    }
} wiring;
}  // namespace

void HScroll1_Change() {
    App.ZoomPercent = HScroll1.Value;
    Label1.Caption = std::to_string(HScroll1.Value);
    // The marker grows with the zoom.
    Shape1.Width = 4 + HScroll1.Value / 10;
    Shape1.Height = 4 + HScroll1.Value / 10;
    ResizeWindow();
    RedisplayWindow();
}
}  // namespace Nav

namespace FatBits {
Form form("FatBits", "Fat bits");
Label Label1(form, "Label1", "");
Slider HScroll1(form, "HScroll1", 0, 100, 0);
Slider VScroll1(form, "VScroll1", 0, 100, 0);
namespace {
struct Wiring {
    Wiring() {
        form.Load = [] {
            PrefsCallBack(form);
            Kelpwick_MsgBox("The fatbits pannel is a work in progress.");
        };
    }
} wiring;
}  // namespace
}  // namespace FatBits

namespace FadeLast {
Form form("FadeLast", "Fade last action");
Slider HScroll1(form, "HScroll1", 0, 255, 0, [] { HScroll1_Change(); });
CommandButton Command1(form, "Command1", "OK", [] { Command1_Click(); });
CommandButton Command2(form, "Command2", "Cancel", [] { Command2_Click(); });
namespace {
struct Wiring {
    Wiring() {
        Command1.Group = Command2.Group = 1;
        HScroll1.Caption.setQuietly("Fade");
        form.Load = [] { PrefsCallBack(form); };
    }
} wiring;
}  // namespace

void HScroll1_Change() { FadeLast(HScroll1.Value); }

void Command1_Click() {
    FadeR.free();
    FadeG.free();
    FadeB.free();
    Hide(form);
}

void Command2_Click() {
    // A new document while the panel was open leaves fade planes of the old size:
    // those must not come back, or the main planes would no longer match the rest.
    if (!FadeR.empty() && FadeR.ubX() == BufR.ubX() && FadeR.ubY() == BufR.ubY()) {
        BufR.copyFrom(FadeR);
        BufG.copyFrom(FadeG);
        BufB.copyFrom(FadeB);
    }
    FadeR.free();
    FadeG.free();
    FadeB.free();
    Hide(form);
    RedisplayWindow();
}
void FadeLast(int amount) {
    if (amount <= 0 || FadeR.empty() || UndoR.empty()) return;
    int w = BufferWidth(), h = BufferHeight();
    if (FadeR.ubX() != w || FadeR.ubY() != h || UndoR.ubX() != w || UndoR.ubY() != h) return;
    kwfilter::FastMixBuffs(FadeR.data(), UndoR.data(), BufR.data(), amount, w, h);
    kwfilter::FastMixBuffs(FadeG.data(), UndoG.data(), BufG.data(), amount, w, h);
    kwfilter::FastMixBuffs(FadeB.data(), UndoB.data(), BufB.data(), amount, w, h);
    RedisplayWindow();
}
}  // namespace FadeLast

void FadePrevious_Click() {
    if (!DocumentExists()) return;
    // The fade planes hold the picture after the last action; the undo planes before it.
    FadeR.copyFrom(BufR);
    FadeG.copyFrom(BufG);
    FadeB.copyFrom(BufB);
    FadeLast::HScroll1.Value.setQuietly(0);
    Show(FadeLast::form, false, &MDIForm1::form);
    FadeLast::HScroll1_Change();
}

namespace MemoryOptions {
Form form("MemoryOptions", "Memory options");
Label Label1(form, "Label1", "Undo memory");
Slider HScroll1(form, "HScroll1", 1, 2047, 14, [] {
    Label4.Caption = HScroll1.Value == 1 ? "meg" : "megs";
});
Label Label4(form, "Label4", "megs");
Label Label2(form, "Label2", "Settings will take effect next time a buffer is allocated.");
CommandButton Command1(form, "Command1", "OK", [] { Command1_Click(); });
CommandButton Command2(form, "Command2", "Cancel", [] { Command2_Click(); });
namespace {
struct Wiring {
    Wiring() {
        Command1.Group = Command2.Group = 1;
        HScroll1.Group = Label4.Group = 2;
        form.Load = [] { PrefsCallBack(form); };
    }
} wiring;
}  // namespace

void Command1_Click() {
    App.UndoMegs = static_cast<int16_t>(HScroll1.Value);
    SaveSetting("mem_MaxUndo", std::to_string(App.UndoMegs));
    Hide(form);
    Kelpwick_MsgBox("Settings saved.");
}

void Command2_Click() {
    HScroll1.Value = App.UndoMegs;
    Hide(form);
}
}  // namespace MemoryOptions

void Memorystuff_Click() {
    MemoryOptions::HScroll1.Value = App.UndoMegs;
    MemoryOptions::Label4.Caption = App.UndoMegs == 1 ? "meg" : "megs";
    Show(MemoryOptions::form, false, &MDIForm1::form);
}

namespace Form3 {
Form form("Form3", "About Project Kelpwick");
Label Label1(form, "Label1", "Project Kelpwick");
TextBox Text1(form, "Text1",
              "A natural-media paint and animation program for one artist and one picture.\n"
              "Planar 8-bit buffers, a swap page, an alpha selection and a whole-picture undo ring.");
Label Label2(form, "Label2", "Provided with no warranty of any kind.  Use of this software is  at your own risk.");
CommandButton Command1(form, "Command1", "Ok", [] { Command1_Click(); });
namespace {
struct Wiring {
    Wiring() {
        Text1.MultiLine = true;
        Text1.Enabled.setQuietly(false);
        form.Click = [] { Hide(form); };
        form.Deactivate = [] { Hide(form); };
        form.Load = [] { PrefsCallBack(form); };
    }
} wiring;
}  // namespace
void Command1_Click() { Hide(form); }
}  // namespace Form3

namespace KeyboardHelp {
Form form("KeyboardHelp", "Keyboard shortcut reference");
TextBox RichTextBox1(form, "RichTextBox1");
namespace {
std::string ReadText(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) return {};
    std::ostringstream s;
    s << in.rdbuf();
    return s.str();
}
struct Wiring {
    Wiring() {
        RichTextBox1.MultiLine = true;
        form.Load = [] {
            PrefsCallBack(form);
            std::string text = ReadText(ProgramFile("Keyboard_Document.rtf"));
            RichTextBox1.Text = text.empty() ? "The keyboard reference \"Keyboard_Document.rtf\" was not found." : text;
        };
        form.KeyPress = [](int16_t& k) { Form1::Form_KeyPress(k); };
    }
} wiring;
}  // namespace
}  // namespace KeyboardHelp

void Magnify_Click() {
    Nav::HScroll1.Value.setQuietly(App.ZoomPercent);
    Nav::Label1.Caption = std::to_string(App.ZoomPercent);
    Show(Nav::form, false, &MDIForm1::form);
}
void Magnifier_Click() { Show(FatBits::form, false, &MDIForm1::form); }
void about_Click() { Show(Form3::form, false, &MDIForm1::form); }
void Shortcuts_Click() { Show(KeyboardHelp::form, false, &MDIForm1::form); }

void Help_Kelhelp_Click() {
    if (!host().OpenDocument(ProgramFile("Kelhelp.html")))
        Kelpwick_MsgBox(
            "Can't locate the default browser.  The help file may be found in the directory where this software is "
            "installed.");
}

void toolbar_Click() { Show(Form2::form, false, &MDIForm1::form); }

void Window_Info_Click() {
    MDIForm1::Window_Info.Checked = !MDIForm1::Window_Info.Checked;
    Form2::Info1.Visible = MDIForm1::Window_Info.Checked.get();
}

void UnlockInput_Click() {
    if (App.LockCount > 0) --App.LockCount;
}
