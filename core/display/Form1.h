// The canvas window: its timer, keys and the entry points of canvas events.
#pragma once

#include "core/framework/controls.h"

namespace Form1 {
extern Form form;
extern Timer Timer1;  // marches the marquee
// Overlay feedback drawn over the picture; none of them touches the planes.
// Positions are window pixels of the zoomed picture.
extern Shape Brush_bounds;       // the custom brush's box following the cursor
extern LineControl Line1, Line2;  // crosshair through the cursor
extern LineControl Line3;         // the rubber line
extern LineControl PaintFill_Band;  // the band of the adjustable paint fill while it waits
extern Shape Shape1;              // the rubber rectangle or ellipse
inline constexpr const char* OvalTag = "oval";  // Shape1's Tag while it is an ellipse
extern Shape CloneCross;          // the clone source mark of a shift-click (centre = Left, Top)
// The text tool's box floating over the canvas, and its place and size in
// window pixels (the text tool in the canvas folder drives both).
extern TextBox TextTool;
extern Shape TextToolFrame;
// The curve tool's preview while it waits for the bend point: one line per segment.
constexpr int CurveSegments = 16;
LineControl& CurveSegment(int i);
extern Prop<uint32_t>& BackColor;

void Form_Load();
// The caption a new canvas window starts with; a file command names it after its file.
extern const char* const DesignCaption;
// How many canvas windows have been made: each new document makes one. A late
// answer about a document (an export ending) checks that it is still the same.
int Loads();
// The view at the picture's top left, its size and the zoom controls following
// App.ZoomPercent.
void ResetView();
void Form_Resize();
// Listen to the document: the canvas window closes with the old document and
// opens on the new one, cleared to its colour.
void Document_Closing();
void Document_Created(uint32_t backColour);
void Timer1_Timer();
// Keys of every panel land here; presses and releases run the installed key rows.
void Form_KeyPress(int16_t& keyAscii);
void Form_KeyDown(int16_t& keyCode, int16_t shift);
void Form_KeyUp(int16_t& keyCode, int16_t shift);
// The help pointer: a key turns it on and off; while on, the canvas shows it
// whenever it takes the focus.
void ToggleHelpPointer();
void Form_GotFocus();
// The view was scrolled or resized: a new visible part needs its screen image.
void ViewportChanged();
}  // namespace Form1
