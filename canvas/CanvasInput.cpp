// Canvas input dispatch: the press, move and release handlers. Each runs the
// shared guards in their fixed order, then the procedure of the tool whose
// button is down (its row in the installed tables).
#include "canvas/CanvasInput.h"

#include "brush/BrushState.h"
#include "brush/Spraxel.h"
#include "canvas/tools/Tools.h"
#include "core/framework/AppState.h"
#include "core/document/Buffers.h"
#include "core/display/Display.h"
#include "core/display/Form1.h"
#include "core/frame/Form2.h"
#include "core/framework/Codes.h"
#include "core/framework/Commands.h"
#include "core/framework/Host.h"
#include "core/document/Undo.h"

namespace {
using canvastool::Round16;
using canvastool::Zoom;

// Two or more buttons at once are ignored.
bool ButtonCombination(int16_t button) {
    using namespace MouseButton;
    return button == Left + Right || button == Left + Middle || button == Right + Middle;
}

uint8_t PantoClick = 0;  // the press in progress is a shift-click in panto mode

// The custom brush's box follows the cursor, shown for the tools that paint with it.
void FollowWithBrushBox(bool paints, float X, float Y) {
    if (App.CustomBrushOn == 0) {
        Form1::Brush_bounds.Visible = false;
        return;
    }
    const float z = Zoom();
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

// The stroke state of a press: the marquee pauses, the stroke and the pattern start here.
void BeginStroke(float X, float Y) {
    App.MarqueeWasOn = Form1::Timer1.TimerEnabled ? 255 : 0;
    Form1::Timer1.TimerEnabled = false;
    MarqueeAtDown = App.MarqueeWasOn;
    PatOrgX = Round16(X / Zoom());
    PatOrgY = Round16(Y / Zoom());
}

// A shift-click in panto marks the clone source with a cross until the release.
void CloneSourceClick(int16_t Button, float X, float Y) {
    PantoClick = 0;
    if (Button == MouseButton::None) return;
    if (App.PaintMode == kwmode::PaintMode::Panto) {
        PantoClick = 255;
        Form1::CloneCross.Left = Round16(X);
        Form1::CloneCross.Top = Round16(Y);
        Form1::CloneCross.Visible = true;
    }
}

// The release of a panto shift-click: the clone offset, and the cross goes.
void CloneOffsetRelease(int16_t Button, float X, float Y) {
    if (Button == MouseButton::Left && PantoClick == 255) {
        PantoX = static_cast<int16_t>(Round16(X / Zoom()) - PatOrgX);
        PantoY = static_cast<int16_t>(Round16(Y / Zoom()) - PatOrgY);
        Form1::CloneCross.Visible = false;
    }
    PantoClick = 0;
}
}  // namespace

namespace Form1 {
void Form_MouseDown(int16_t Button, int16_t Shift, float X, float Y) {
    if (ButtonCombination(Button)) return;
    // A ctrl press starts a drag of the selection, which is one undo step.
    if (Shift == ShiftState::Ctrl) {
        App.CtrlDragX = Round16(X);
        App.CtrlDragY = Round16(Y);
        SaveUndo();
        return;
    }
    App.BrushFlow = static_cast<float>(Form2::HScroll4.Value);
    if (App.WaitingForClick == 255) return;
    SpraxelMouseDown(X, Y);
    if (!host().CanvasIsActive()) return;
    if (App.LockCount > 0) return;
    BeginStroke(X, Y);
    if (Shift == ShiftState::Shift) {
        CloneSourceClick(Button, X, Y);
    } else {
        PantoClick = 0;
        const ToolRow* tool = Commands().toolDown();
        // A tool that only reads the picture has the press to itself: no undo step, no mark.
        if (tool && !tool->marksPicture) {
            if (tool->down) tool->down(Button, Shift, X, Y);
            return;
        }
        SaveUndo();
        StepCounter = 0;  // the brush counts its steps afresh from the press
        if (tool && tool->down) tool->down(Button, Shift, X, Y);
    }
    // The first mark comes from the same code as all the others.
    Form_MouseMove(Button, Shift, X, Y);
}

void Form_MouseMove(int16_t Button, int16_t Shift, float X, float Y) {
    if (ButtonCombination(Button)) return;
    App.CursorX = X;
    App.CursorY = Y;
    PrintUserInfo();
    if (Shift == ShiftState::Ctrl && Button > MouseButton::None) {
        CtrlDrag(X, Y);
        return;
    }
    if (App.WaitingForClick == 255 || App.LockCount > 0) return;
    const ToolRow* tool = Commands().toolDown();
    FollowWithBrushBox(tool && tool->brushBox, X, Y);
    if (!Form2::Option19.Value) TextTool.Visible = false;  // the text box belongs to the text tool
    if (Shift == ShiftState::Shift) return;  // shift-moves never paint
    // The baster keeps picking; otherwise a held button draws particles or bristles when they are on.
    const bool baster = tool && tool->button == &Form2::Option6;
    if (!baster && SpraxelMouseMove(Button, X, Y)) return;
    if (tool && tool->move) tool->move(Button, Shift, X, Y);
    Crosshair(tool && tool->crosshair && Button == MouseButton::None, X, Y);
}

void Form_MouseUp(int16_t Button, int16_t Shift, float X, float Y) {
    if (ButtonCombination(Button)) return;
    // A ctrl drag ends here.
    if (Shift == ShiftState::Ctrl) {
        RedisplayWindow();
        return;
    }
    SpraxelMouseUp();
    // A procedure waiting for a click sees the cleared flag and goes on.
    if (App.WaitingForClick == 255) {
        App.WaitingForClick = 0;
        return;
    }
    if (App.LockCount > 0) return;
    // The stroke is over.
    StepCounter = 0;
    Form2::Picture27_Paint();
    if (const ToolRow* tool = Commands().toolDown(); tool && tool->up) tool->up(Button, Shift, X, Y);
    CloneOffsetRelease(Button, X, Y);
    // The finishing blit, and the marquee as it was at the press.
    BlitOnly = 1;
    RedisplayWindow();
    BlitOnly = 0;
    Timer1.TimerEnabled = App.MarqueeWasOn != 0;
}
}  // namespace Form1
