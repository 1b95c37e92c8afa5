// The frame every filter shares: the undo bracket, the alpha ways (per pixel,
// the box of the selection, the after-pass), the busy pointer, progress for long
// work, and the start, Ok and Cancel of the two kinds of preview panel.
#pragma once

#include <cstdint>
#include <functional>

#include "core/framework/controls.h"

#include "core/document/AlphaBounds.h"  // an empty alpha plane gives a box no loop enters

// The undo step before a filter, and the redisplay after it.
void filterSetup();
void filterCloseDown();

// out := (plane(x, y) * (255 - a) + value * a) \ 255 with a := a | AlphaOff
// written back: the main planes (AlphaRPixel...) or the undo planes (uAlpha...).
void AlphaRPixel(int x, int y, int value, int& a, int& out);
void AlphaGPixel(int x, int y, int value, int& a, int& out);
void AlphaBPixel(int x, int y, int value, int& a, int& out);
void uAlphaRPixel(int x, int y, int value, int& a, int& out);
void uAlphaGPixel(int x, int y, int value, int& a, int& out);
void uAlphaBPixel(int x, int y, int value, int& a, int& out);

// The picture size a filter may walk: the size state, held to the planes of the
// document (main, alpha, undo and swap all share it).
struct FilterArea {
    int w = 0, h = 0;
    bool empty() const { return w <= 0 || h <= 0; }
};
FilterArea FilterSize();

// The after-pass over the whole canvas against the undo planes (nothing when
// alpha is off).
void OverlayAfterPass();

// The hourglass on the canvas (and on a panel) while it lives.
class Hourglass {
public:
    explicit Hourglass(Form* panel = nullptr);
    ~Hourglass();
    Hourglass(const Hourglass&) = delete;
    Hourglass& operator=(const Hourglass&) = delete;

private:
    Form* panel_;
};

// A redisplay during a drag: the tool panel's small preview waits for the release.
void QuickRedisplay();

// Work too long for one event: rows in bands, the progress window showing the
// percentage and the program painting between bands, the canvas locked.
// band(y0, y1) works rows y0..y1-1.
void InBands(int rows, int bandRows, const std::function<void(int y0, int y1)>& band);

// Preview of the kind rebuild-from-undo: Cancel puts the picture back and hides.
void PreviewCancel(Form& panel);
// Preview of the kind fade: after the filter ran at full strength, the fade planes
// take the result, the panel shows, and its slider's change runs once.
void FadeStart(Form& panel, Slider& slider);
// Ok keeps the blend; Cancel puts back the picture before the filter.
void FadeOk(Form& panel);
void FadeCancel(Form& panel);
