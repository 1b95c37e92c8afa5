// The Hermite curve: coefficients, sampling, the preview lines and the brush stroke.
#include "canvas/Curve.h"

#include "brush/BrushState.h"
#include "brush/FormDraw.h"
#include "core/display/Display.h"
#include "core/display/Form1.h"
#include "core/framework/AppState.h"
#include "core/framework/Host.h"

namespace {
float P0X = 0, P0Y = 0, P1X = 0, P1Y = 0;  // end points, window pixels
float AX = 0, BX = 0, CX = 0, DX = 0, AY = 0, BY = 0, CY = 0, DY = 0;

// One position of the curve through the brush engine, which may change its arguments.
void DrawAt(int16_t button, float T) {
    int16_t b = button, shift = 0;
    float x = Curve_X(T), y = Curve_Y(T);
    Form1::Form_Draw(b, shift, x, y);
}

void PreviewSegment(int i, float T0, float T1) {
    LineControl& l = Form1::CurveSegment(i);
    l.X1 = Curve_X(T0);
    l.Y1 = Curve_Y(T0);
    l.X2 = Curve_X(T1);
    l.Y2 = Curve_Y(T1);
    l.Visible = true;
}
}  // namespace

void MyCurve(float X1, float X2, float Y1, float Y2, int16_t Mode, int16_t Button) {
    P0X = X1;
    P0Y = Y1;
    P1X = X2;
    P1Y = Y2;
    DrawHermite(Mode, Button);
}

void GetHermiteValues(float p0x, float p0y, float p1x, float p1y, float t0x, float t0y, float t1x, float t1y,
                      float& ax, float& bx, float& cx, float& dx, float& ay, float& by, float& cy, float& dy) {
    ax = 2 * p0x - 2 * p1x + t0x + t1x;
    bx = 3 * p1x - 3 * p0x - 2 * t0x - t1x;
    cx = t0x;
    dx = p0x;
    ay = 2 * p0y - 2 * p1y + t0y + t1y;
    by = 3 * p1y - 3 * p0y - 2 * t0y - t1y;
    cy = t0y;
    dy = p0y;
}

float Curve_X(float T) { return AX * T * T * T + BX * T * T + CX * T + DX; }
float Curve_Y(float T) { return AY * T * T * T + BY * T * T + CY * T + DY; }

void DrawHermite(int16_t Mode, int16_t Button) {
    const float bx = App.CursorX, by = App.CursorY;
    const float t0x = (bx - P0X) * 2.5f, t0y = (by - P0Y) * 2.5f;
    const float t1x = -(bx - P1X) * 2.5f, t1y = -(by - P1Y) * 2.5f;
    GetHermiteValues(P0X, P0Y, P1X, P1Y, t0x, t0y, t1x, t1y, AX, BX, CX, DX, AY, BY, CY, DY);
    if (Mode == curvemode::Preview) DrawCurve(0, 1, 1.0f / 16, Mode, Button);
    else RenderCurve(0, 1, 1.0f / 16, Mode, Button);
}

// The preview is drawn over the picture, never into it: one line per segment.
void DrawCurve(float T0, float T1, float Step, int16_t, int16_t) {
    int i = 0;
    float T = T0;
    for (; T + Step < T1 && i < Form1::CurveSegments - 1; T += Step) PreviewSegment(i++, T, T + Step);
    PreviewSegment(i++, T, T1);
    for (; i < Form1::CurveSegments; ++i) Form1::CurveSegment(i).Visible = false;
}

void RenderCurve(float T0, float T1, float Step, int16_t, int16_t Button) {
    DrawAt(0, T0);
    for (float T = T0 + Step; T < T1; T += Step) DrawAt(Button, T);
    DrawAt(Button, T1);
}

void HideCurvePreview() {
    for (int i = 0; i < Form1::CurveSegments; ++i) Form1::CurveSegment(i).Visible = false;
}

bool Wait_On_hermite_Value(float X1, float X2, float Y1, float Y2, int16_t Mode, int16_t Button) {
    App.WaitingForClick = 255;
    // Other input (plug-ins) keeps away while the events are pumped here.
    ++App.LockCount;
    float seenX = App.CursorX + 1, seenY = App.CursorY;
    while (App.WaitingForClick == 255 && !host().Closing()) {
        host().DoEvents();
        if (App.CursorX != seenX || App.CursorY != seenY) {
            seenX = App.CursorX;
            seenY = App.CursorY;
            MyCurve(X1, X2, Y1, Y2, Mode, Button);
        } else {
            host().Sleep(5);  // nothing moved: give the processor back
        }
    }
    --App.LockCount;
    HideCurvePreview();
    const bool clicked = App.WaitingForClick != 255;
    App.WaitingForClick = 0;
    return clicked;
}
