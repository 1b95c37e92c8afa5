// The filter frame: the undo bracket, alpha ways, busy pointer, banded long work
// and the preview panels' start, Ok and Cancel.
#include "filter/FilterFrame.h"

#include <algorithm>

#include "core/display/Display.h"
#include "core/display/Form1.h"
#include "core/document/Buffers.h"
#include "core/document/Undo.h"
#include "core/frame/MDIForm1.h"
#include "core/framework/AppState.h"
#include "core/framework/Boxes.h"
#include "core/framework/Codes.h"
#include "core/framework/Host.h"
#include "native/kwfilter.h"

FilterArea FilterSize() {
    const std::initializer_list<const Plane*> planes = {&BufR, &BufG, &BufB, &BufA,  &UndoR,
                                                        &UndoG, &UndoB, &SwapR, &SwapG, &SwapB};
    return {PictureWidth(planes), PictureHeight(planes)};
}

void filterSetup() { SaveUndo(); }

void filterCloseDown() { RedisplayWindow(); }

namespace {
void MixPixel(const Plane& p, int x, int y, int value, int& a, int& out) {
    a |= App.AlphaOff;
    out = (p(x, y) * (255 - a) + value * a) / 255;
}
}  // namespace

void AlphaRPixel(int x, int y, int value, int& a, int& out) { MixPixel(BufR, x, y, value, a, out); }
void AlphaGPixel(int x, int y, int value, int& a, int& out) { MixPixel(BufG, x, y, value, a, out); }
void AlphaBPixel(int x, int y, int value, int& a, int& out) { MixPixel(BufB, x, y, value, a, out); }
void uAlphaRPixel(int x, int y, int value, int& a, int& out) { MixPixel(UndoR, x, y, value, a, out); }
void uAlphaGPixel(int x, int y, int value, int& a, int& out) { MixPixel(UndoG, x, y, value, a, out); }
void uAlphaBPixel(int x, int y, int value, int& a, int& out) { MixPixel(UndoB, x, y, value, a, out); }

void OverlayAfterPass() {
    const FilterArea s = FilterSize();
    if (s.empty()) return;
    kwfilter::Overlay_b(BufR.data(), BufG.data(), BufB.data(), UndoR.data(), UndoG.data(), UndoB.data(), BufA.data(),
                        App.AlphaOff, s.w, s.h);
}

Hourglass::Hourglass(Form* panel) : panel_(panel) {
    Form1::form.MousePointer = Pointer::Busy;
    if (panel_) panel_->MousePointer = Pointer::Busy;
}

Hourglass::~Hourglass() {
    Form1::form.MousePointer = Pointer::Default;
    if (panel_) panel_->MousePointer = Pointer::Default;
}

void QuickRedisplay() {
    const uint8_t was = App.Silent;
    App.Silent = 1;
    RedisplayWindow();
    App.Silent = was;
}

void InBands(int rows, int bandRows, const std::function<void(int, int)>& band) {
    if (rows <= 0) return;
    bandRows = std::max(1, bandRows);
    struct Lock {
        Lock() {
            ++App.LockCount;
            ShowStatus("Processing...");
        }
        ~Lock() {
            HideStatus();
            --App.LockCount;
        }
    } lock;
    for (int y = 0; y < rows; y += bandRows) {
        band(y, std::min(rows, y + bandRows));
        Bar(static_cast<int>(static_cast<long long>(std::min(rows, y + bandRows)) * 100 / rows));
    }
}

void PreviewCancel(Form& panel) {
    RepaintUndo();
    Hide(panel);
}

void FadeStart(Form& panel, Slider& slider) {
    FadeR.copyFrom(BufR);
    FadeG.copyFrom(BufG);
    FadeB.copyFrom(BufB);
    Show(panel, false, &MDIForm1::form);
    if (slider.Change) slider.Change();
}

namespace {
void FreeFadePlanes() {
    FadeR.free();
    FadeG.free();
    FadeB.free();
}
}  // namespace

void FadeOk(Form& panel) {
    FreeFadePlanes();
    Hide(panel);
}

void FadeCancel(Form& panel) {
    RepaintUndo();
    FreeFadePlanes();
    Hide(panel);
    RedisplayWindow();
}
