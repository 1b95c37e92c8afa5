// The planes of the document and the size state. The size lives as decimal
// text in the size dialog's two fields; BufferWidth/BufferHeight read it.
#pragma once

#include <functional>
#include <initializer_list>

#include "core/framework/Hook.h"
#include "core/framework/Plane.h"

extern Plane BufR, BufG, BufB, BufA;
extern Plane SwapR, SwapG, SwapB;
// The picture as of the last SaveUndo: views of that snapshot's ring slot, so
// they are read, never written (SaveUndo alone moves them).
extern Plane UndoR, UndoG, UndoB;
extern Plane MarqueePlane;
extern Plane FadeR, FadeG, FadeB;
extern Plane TempPlane;
// The custom brush cut from the picture: planes 0..BrushWidth by 0..BrushHeight;
// a width of 0 means there is none.
extern Plane BrushR, BrushG, BrushB, BrushA;
extern int16_t BrushWidth, BrushHeight;
// True when a custom brush exists and its planes cover it with the extra column
// and row that interpolating reads land on.
bool CustomBrushUsable();

// Val of the text, rounded half to even; a failed parse gives 0.
int BufferWidth();
int BufferHeight();
// The picture size a loop may walk: the size state, but never beyond the planes
// it touches (the text can run ahead of the planes, and before the first
// document there are none).
int PictureWidth(std::initializer_list<const Plane*> planes);
int PictureHeight(std::initializer_list<const Plane*> planes);
// Writes the size state (the text comes first, planes follow at CreateNewDocument).
void SetBufferSize(int w, int h);

constexpr int MaxBufferSide = 32767;  // loops index pixels with 16-bit values

// Allocates every plane for the size state. All or nothing: when the size is
// unusable or memory runs out, says so, puts the old size text back and keeps
// the old document. Returns false when nothing changed.
bool CreateNewDocument(bool ask);
bool DocumentExists();
// The old document is about to go: its canvas window closes.
extern Hook<> DocumentClosing;
// A new document exists, cleared to the colour given: its canvas window opens.
extern Hook<uint32_t> DocumentCreated;

// Alpha as mask and selection: on when App.AlphaOff is 0. Switching raises
// AlphaSwitched, so that the menu check and the marquee follow.
bool AlphaOn();
void SetAlphaOn(bool on);
extern Hook<bool> AlphaSwitched;
// Memory the system can give now, in bytes; CreateNewDocument refuses a size
// that cannot fit. Replaceable so that tests can play a small machine.
extern std::function<uint64_t()> AvailableMemory;
uint64_t ReadAvailableMemory();

void SwapBuffers();
void FillPicture(Plane& p, uint8_t v);  // the picture area only, not the extra row/column

// Bounds of non-zero alpha, inclusive; false when the alpha plane is empty.
bool FindSelection(int& left, int& top, int& right, int& bottom);
