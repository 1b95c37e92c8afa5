// The panels of the brush transforms: "Rotate brush" with its preview,
// "Resample brush" with constrain, and "Make seamless".
#include <algorithm>
#include <cmath>

#include "brush/BrushTransforms.h"
#include "brush/CustomBrush.h"
#include "core/document/Buffers.h"
#include "core/framework/Boxes.h"
#include "core/framework/Host.h"
#include "core/framework/vb.h"

namespace RotateBrush_Options {
Form form("RotateBrush_Options", "Rotate brush");
Slider Hscroll1(form, "Hscroll1", -180, 180, 0, [] { Hscroll1_Change(); });
PictureBox Picture1(form, "Picture1", 76, 76);
CommandButton Command1(form, "Command1", "Ok", [] {
    RotateBrush(Hscroll1.Value);
    Hide(form);
}, ButtonRole::Default);
CommandButton Command2(form, "Command2", "Cancel", [] { Hide(form); }, ButtonRole::Cancel);

// RotateThumbnail: the brush fitted into the preview and turned about its
// centre, nearest pixel, over white.
void Hscroll1_Change() {
    Picture1.Cls(0xFFFFFF);
    if (BrushExists()) {
        const int side = Picture1.Width;
        const double scale = std::max(BrushWidth, BrushHeight) * 1.5 / side;
        const double a = Hscroll1.Value * 0.01745, c = std::cos(a), s = std::sin(a);
        for (int y = 0; y < side; ++y)
            for (int x = 0; x < side; ++x) {
                const double u = (x - side / 2.0) * scale, v = (y - side / 2.0) * scale;
                const int sx = vb::CInt(u * c + v * s + BrushWidth / 2.0), sy = vb::CInt(v * c - u * s + BrushHeight / 2.0);
                if (sx < 0 || sy < 0 || sx >= BrushWidth || sy >= BrushHeight) continue;
                const double k = BrushA(sx, sy) / 255.0;
                auto over = [&](int colour) { return vb::CInt(colour * k + (1 - k) * 255); };
                Picture1.PSet(x, y, vb::RGB(over(BrushR(sx, sy)), over(BrushG(sx, sy)), over(BrushB(sx, sy))));
            }
    }
    Picture1.Refresh();
}
namespace {
struct Wiring {
    Wiring() { Hscroll1.Caption.setQuietly("Degrees"); }
} wiring;
}  // namespace
}  // namespace RotateBrush_Options

namespace BrushResample {
namespace {
bool following = false;  // one box is being written from the other
void Follow(TextBox& from, TextBox& to, int fromSide, int toSide) {
    if (following || Check1.Value == 0 || fromSide <= 0) return;
    following = true;
    to.Text = std::to_string(vb::CInt(vb::Val(from.Text.get()) * toSide / fromSide));
    following = false;
}
}  // namespace
Form form("BrushResample", "Resample brush");
TextBox Text1(form, "Text1", "100", [] { Follow(Text1, Text2, BrushWidth, BrushHeight); });
TextBox Text2(form, "Text2", "100", [] { Follow(Text2, Text1, BrushHeight, BrushWidth); });
CheckBox Check1(form, "Check1", "Constrain");
// The scale in percent of the brush as it is: both boxes follow it.
Slider Hscroll1(form, "Hscroll1", 1, 400, 100, [] {
    following = true;
    Text1.Text = std::to_string(std::max<int>(1, vb::CInt(BrushWidth * Hscroll1.Value / 100.0)));
    Text2.Text = std::to_string(std::max<int>(1, vb::CInt(BrushHeight * Hscroll1.Value / 100.0)));
    following = false;
});
CommandButton Command1(form, "Command1", "Ok", [] { Command1_Click(); }, ButtonRole::Default);
CommandButton Command2(form, "Command2", "Cancel", [] { Hide(form); }, ButtonRole::Cancel);

void Command1_Click() {
    const double w = vb::Val(Text1.Text.get()), h = vb::Val(Text2.Text.get());
    if (w == 0 || h == 0) return;
    ResampleBrush(vb::CInt(std::clamp(w, -1.0, 32767.0)), vb::CInt(std::clamp(h, -1.0, 32767.0)));
    Hide(form);
}
namespace {
struct Wiring {
    Wiring() {
        Text1.Caption.setQuietly(" Width");
        Text2.Caption.setQuietly(" Height");
        Hscroll1.Caption.setQuietly("Scale %");
    }
} wiring;
}  // namespace
}  // namespace BrushResample

namespace Seamless {
Form form("Seamless", "Make seamless");
Slider HScroll1(form, "HScroll1", 0, 100, 20);
Slider hscroll2(form, "hscroll2", 0, 100, 20);
CommandButton Command1(form, "Command1", "Ok", [] { Command1_Click(); }, ButtonRole::Default);
CommandButton Command2(form, "Command2", "Cancel", [] { Hide(form); }, ButtonRole::Cancel);

void Command1_Click() {
    if (!BrushExists()) {
        Kelpwick_MsgBox("No custom brush");
        return;
    }
    MakeSeamless(HScroll1.Value, hscroll2.Value);
    Hide(form);
}
namespace {
struct Wiring {
    Wiring() {
        HScroll1.Caption.setQuietly("Trim x");
        hscroll2.Caption.setQuietly("Trim y");
    }
} wiring;
}  // namespace
}  // namespace Seamless
