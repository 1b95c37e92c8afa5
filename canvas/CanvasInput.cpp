// Canvas input dispatch: the press, move and release handlers. There is no tool
// object: the tool is whichever option button of the tool panel is down, and
// each handler tests the buttons in a fixed order after its guards.
#include "canvas/CanvasInput.h"

#include <algorithm>

#include "brush/BrushState.h"
#include "brush/FormDraw.h"
#include "colour/DeliverPixel.h"
#include "core/framework/AppState.h"
#include "core/document/Buffers.h"
#include "core/display/Display.h"
#include "core/display/Form1.h"
#include "core/frame/Form2.h"
#include "core/framework/Host.h"
#include "core/frame/MDIForm1.h"
#include "core/document/Undo.h"
#include "core/framework/vb.h"

namespace {
using vb::CInt;

bool ButtonCombination(int16_t button) { return button == 3 || button == 5 || button == 6; }
float Zoom() { return static_cast<float>(App.ZoomPercent) / 100.0f; }
// Positions far outside the window are held to what 16-bit fields can keep.
int16_t Round16(float v) { return CInt(std::clamp(v, -32768.0f, 32767.0f)); }

uint8_t PantoClick = 0;  // the press in progress is a shift-click in panto mode

// The colour under the baster: left into the primary sliders, right into the secondary.
void Baster(int16_t button, float x, float y) {
    int32_t r, g, b;
    TurkeyColor(vb::CLng(std::clamp(x, -1e9f, 1e9f)), vb::CLng(std::clamp(y, -1e9f, 1e9f)), r, g, b);
    if (button == 1) {
        Form2::HScroll1.Value = r;
        Form2::hscroll2.Value = g;
        Form2::hscroll3.Value = b;
    } else if (button == 2) {
        Form2::Shape1.FillColor = vb::RGB(r, g, b);
    }
}

bool BoxTool() {
    using namespace Form2;
    return Option2.Value || Option3.Value || Option14.Value || Option15.Value || Option20.Value;
}

// The custom brush's box follows the cursor for the tools that paint with it.
void FollowWithBrushBox(float X, float Y) {
    using namespace Form2;
    if (App.CustomBrushOn == 0) {
        Form1::Brush_bounds.Visible = false;
        return;
    }
    const float z = Zoom();
    const bool paints = Option17.Value || Option1.Value || (Option2.Value && Option2.Tag != "unfilled") ||
                        (Option3.Value && Option3.Tag != "unfilled");
    Form1::Brush_bounds.Left = Round16(X - BrushWidth * z / 2);
    Form1::Brush_bounds.Top = Round16(Y - BrushHeight * z / 2);
    Form1::Brush_bounds.Width = Round16(BrushWidth * z);
    Form1::Brush_bounds.Height = Round16(BrushHeight * z);
    Form1::Brush_bounds.Visible = paints;
}

// The crosshair of the box tools: a line each way through the cursor, across the window.
void Crosshair(bool shown, float X, float Y) {
    if (!shown) {
        Form1::Line1.Visible = false;
        Form1::Line2.Visible = false;
        return;
    }
    const float z = Zoom();
    const float w = static_cast<float>(BufferWidth()) * z, h = static_cast<float>(BufferHeight()) * z;
    Form1::Line1.X1 = 0.0f;
    Form1::Line1.X2 = w;
    Form1::Line1.Y1 = Form1::Line1.Y2 = static_cast<float>(Round16(Y));
    Form1::Line2.Y1 = 0.0f;
    Form1::Line2.Y2 = h;
    Form1::Line2.X1 = Form1::Line2.X2 = static_cast<float>(Round16(X));
    Form1::Line1.Visible = true;
    Form1::Line2.Visible = true;
}

// Ctrl drags move the selection, at most every 0.03 seconds.
void CtrlDrag(float X, float Y) {
    const double now = host().Clock();
    if (now - App.CtrlDragTime < 0.03) return;
    const bool ran = Form1::Timer1.TimerEnabled;
    Form1::Timer1.TimerEnabled = false;
    NudgeAlpha(Round16(X - App.CtrlDragX), Round16(Y - App.CtrlDragY));
    RedisplayWindow();
    Form1::Timer1.TimerEnabled = ran;
    App.CtrlDragX = Round16(X);
    App.CtrlDragY = Round16(Y);
    App.CtrlDragTime = static_cast<float>(now);
}
}  // namespace

namespace Form1 {
void Form_MouseDown(int16_t Button, int16_t Shift, float X, float Y) {
    // 1, 2. Combinations of buttons are ignored; a ctrl press starts a drag of the selection.
    if (ButtonCombination(Button)) return;
    if (Shift == 2) {
        App.CtrlDragX = Round16(X);
        App.CtrlDragY = Round16(Y);
        SaveUndo();
        return;
    }
    // 3, 4.
    App.MouseButton = Button;
    App.BrushFlow = static_cast<float>(Form2::HScroll4.Value);
    if (App.WaitingForClick == 255) return;
    // 5. The bristle brush starts its bristles here.
    // 6.
    if (!host().CanvasIsActive()) return;
    if (App.LockCount > 0) return;
    // 7. The stroke state.
    App.MarqueeWasOn = Timer1.TimerEnabled ? 255 : 0;
    Timer1.TimerEnabled = false;
    App.StrokeX = Round16(X);
    App.StrokeY = Round16(Y);
    MarqueeAtDown = App.MarqueeWasOn;
    PatOrgX = Round16(X / Zoom());
    PatOrgY = Round16(Y / Zoom());
    // 8. A shift-click sets the clone source; in panto a cross marks it.
    PantoClick = 0;
    if (Shift == 1 && Button != 0) {
        if (App.PaintMode == 5) {
            PantoClick = 255;
            CloneCross.Left = Round16(X);
            CloneCross.Top = Round16(Y);
            CloneCross.Visible = true;
        }
        App.CloneSourceX = Round16(X - BrushWidth / 2.0f);
        App.CloneSourceY = Round16(Y - BrushHeight / 2.0f);
    }
    // 9.
    if (Shift != 1) {
        // 10. The line and curve tools remember their start.
        if (Form2::Option17.Value || Form2::Option18.Value) {
            App.LineActive = 255;
            App.LineStartX = Round16(X);
            App.LineStartY = Round16(Y);
            Line3.X1 = Line3.X2 = App.LineStartX;
            Line3.Y1 = Line3.Y2 = App.LineStartY;
            Line3.Visible = true;
        }
        // 11. The baster reads the picture and takes no undo step.
        if (Form2::Option6.Value) {
            if (X >= BufferWidth() || Y >= BufferHeight()) return;
            Baster(Button, X, Y);
            return;
        }
        // 12. Every other press is one undo step.
        SaveUndo();
        // 13 - 16. The fill, lasso, wand and box tools start here.
        // 17. The brush starts counting its steps afresh, where the press is.
        StepCounter = 0;
        if (Form2::Option1.Value) {
            LastX = Round16(X / Zoom());
            LastY = Round16(Y / Zoom());
        }
    }
    // 18. The first dab comes from the same code as all others.
    Form_MouseMove(Button, Shift, X, Y);
}

void Form_MouseMove(int16_t Button, int16_t Shift, float X, float Y) {
    if (ButtonCombination(Button)) return;
    // 2.
    App.CursorX = X;
    App.CursorY = Y;
    PrintUserInfo();
    // 3.
    if (Shift == 2 && Button > 0) {
        CtrlDrag(X, Y);
        return;
    }
    // 4, 5.
    if (App.WaitingForClick == 255 || App.LockCount > 0) return;
    FollowWithBrushBox(X, Y);
    // 6. Shift-moves never paint.
    if (Shift == 1) return;
    // 7. The baster follows the held button.
    if (Form2::Option6.Value) {
        const float z = Zoom();
        X = X / z;
        Y = Y / z;
        if (X >= 0 && Y >= 0 && X < BufferWidth() && Y < BufferHeight() && (Button == 1 || Button == 2))
            Baster(Button, X, Y);
        return;
    }
    // 8, 9. The particle and bristle brushes take the move here.
    // 10, 11. The natural brush paints, or only follows the cursor.
    if (Form2::Option1.Value && Button > 0 && host().CanvasIsActive()) {
        int16_t b = Button, s = Shift;
        Form_Draw(b, s, X, Y);
    } else if (Form2::Option1.Value && Button == 0) {
        LastX = Round16(X / Zoom());
        LastY = Round16(Y / Zoom());
    }
    // 12 - 14. The lasso, text and line tools follow here.
    // 15. The crosshair of the box tools, while no button is held.
    Crosshair(BoxTool() && Button == 0, X, Y);
}

void Form_MouseUp(int16_t Button, int16_t Shift, float X, float Y) {
    if (ButtonCombination(Button)) return;
    // 2. A ctrl drag ends here.
    App.MouseButton = Button;
    if (Shift == 2) {
        RedisplayWindow();
        return;
    }
    // 3. The particle brush sets itself up again here.
    // 4. A waiting procedure sees the cleared flag and goes on.
    if (App.WaitingForClick == 255) {
        App.WaitingForClick = 0;
        return;
    }
    if (App.LockCount > 0) return;
    // 6. The stroke is over.
    App.LastStrokeX = App.LastStrokeY = -1.0f;
    StepCounter = 0;
    Form2::Picture27_Paint();
    // 7 - 15. The line, curve, lasso, selector, shape and alpha tools finish here.
    // 16. A panto shift-click: the clone offset, and the cross goes.
    if (Button == 1 && PantoClick == 255) {
        App.CloneDestX = Round16(X - BrushWidth / 2.0f);
        App.CloneDestY = Round16(Y - BrushHeight / 2.0f);
        PantoX = static_cast<int16_t>(Round16(X / Zoom()) - PatOrgX);
        PantoY = static_cast<int16_t>(Round16(Y / Zoom()) - PatOrgY);
        CloneCross.Visible = false;
    }
    PantoClick = 0;
    // 17. The finishing blit, and the marquee as it was at the press.
    BlitOnly = 1;
    RedisplayWindow();
    BlitOnly = 0;
    Timer1.TimerEnabled = App.MarqueeWasOn != 0;
}
}  // namespace Form1

void BindCanvasMenus() {
    Form1::NudgeAlphaKey = NudgeAlpha;
    // A right click on the baster chooses its size.
    Form2::Option6.MouseUp = [](int button, int, float, float) {
        if (button == 2) host().PopupMenu(Menus::TBaster);
    };
}
