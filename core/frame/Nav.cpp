// The zoom panel: a slider from 25 to 600 percent and eight quick buttons.
#include "core/frame/Nav.h"

#include "core/display/Display.h"
#include "core/frame/MDIForm1.h"
#include "core/framework/AppState.h"
#include "core/framework/Host.h"
#include "core/framework/PanelLook.h"

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

namespace {
// The number and the marker, which grows with the zoom.
void ShowZoom(int percent) {
    Label1.Caption = std::to_string(percent);
    Shape1.Width = 4 + percent / 10;
    Shape1.Height = 4 + percent / 10;
}
}  // namespace

const int ZoomSteps[8] = {25, 50, 100, 200, 300, 400, 500, 600};

void HScroll1_Change() {
    App.ZoomPercent = HScroll1.Value;
    ShowZoom(HScroll1.Value);
    ResizeWindow();
    RedisplayWindow();
}

int NextZoomStep(int percent, int direction) {
    if (direction > 0) {
        for (int s : ZoomSteps)
            if (s > percent) return s;
    } else if (direction < 0) {
        for (int i = 7; i >= 0; --i)
            if (ZoomSteps[i] < percent) return ZoomSteps[i];
    }
    return percent;
}

void FollowZoom() {
    // Quietly: the zoom is already in force, and a Change would redraw it again.
    if (HScroll1.Value != App.ZoomPercent) {
        HScroll1.Value.setQuietly(App.ZoomPercent);
        HScroll1.notifyView();
    }
    ShowZoom(App.ZoomPercent);
}

void WheelZoom(int direction, double vx, double vy) {
    ZoomAbout(NextZoomStep(App.ZoomPercent, direction), vx, vy);
}
}  // namespace Nav

void Magnify_Click() {
    Nav::FollowZoom();
    Show(Nav::form, false, &MDIForm1::form);
}
