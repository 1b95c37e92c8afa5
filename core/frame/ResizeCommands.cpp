// Changing the size of a live document: crop to the selection and resample.
#include <vector>

#include "core/framework/AppState.h"
#include "core/framework/Boxes.h"
#include "core/document/AnimationGuard.h"
#include "core/document/Buffers.h"
#include "core/document/CanvasSize.h"
#include "core/display/Display.h"
#include "core/display/Form1.h"
#include "core/framework/Codes.h"
#include "core/framework/Host.h"
#include "core/document/Undo.h"
#include "core/frame/BufferMenu.h"
#include "native/Resample.h"

namespace {
// The six colour planes of a document, carried across a CreateNewDocument.
struct ColourPlanes {
    Plane p[6];
};
Plane* Live(int i) {
    static Plane* planes[6] = {&BufR, &BufG, &BufB, &SwapR, &SwapG, &SwapB};
    return planes[i];
}

// Makes the new document and pours the carried planes into it; on failure the
// old document stays as it was.
void Rebuild(ColourPlanes& carried, int w, int h) {
    SetBufferSize(w, h);
    App.ZoomPercent = 100;
    if (!CreateNewDocument(false)) return;
    DemensionRefreshBuff();
    for (int i = 0; i < 6; ++i) Live(i)->swap(carried.p[i]);
    SaveUndo();
    RedisplayWindow();
}
}  // namespace

void BufferCrop_Click() {
    if (AnimationPresent()) return Kelpwick_MsgBox("Not available with animations");
    int left, top, right, bottom;
    if (!FindSelection(left, top, right, bottom)) {
        Kelpwick_MsgBox("Nothing is selected: the alpha plane is empty.");
        return;
    }
    int w = right - left + 1, h = bottom - top + 1;
    ColourPlanes carried;
    for (int i = 0; i < 6; ++i) {
        carried.p[i].alloc(w, h);
        Plane& src = *Live(i);
        for (int y = 0; y < h; ++y) std::copy_n(src.row(y + top) + left, w, carried.p[i].row(y));
    }
    Form1::Timer1.TimerEnabled = false;
    Rebuild(carried, w, h);
}

void BufferResample_Click() {
    if (!AskFreeAnimation()) return;
    int oldW = BufferWidth(), oldH = BufferHeight();
    CanvasSize::Check1.Enabled = true;
    CanvasSize::List2.Enabled = true;
    Show(CanvasSize::form, true);
    CanvasSize::Check1.Enabled = false;
    CanvasSize::List2.Enabled = false;
    if (CanvasSize::SizeCancelled == 255) return;
    int w = BufferWidth(), h = BufferHeight();
    if (w < 1 || h < 1 || w > MaxBufferSide || h > MaxBufferSide) {
        SetBufferSize(oldW, oldH);
        Kelpwick_MsgBox("Each side of the buffer must be between 1 and " + std::to_string(MaxBufferSide) + " pixels.");
        return;
    }
    int method = CanvasSize::List2.ListIndex;
    ColourPlanes carried;
    try {
        Form1::form.MousePointer = Pointer::Busy;
        for (int i = 0; i < 6; ++i) {
            carried.p[i].alloc(w, h);
            const uint8_t* src = Live(i)->data();
            uint8_t* dst = carried.p[i].data();
            if (method == 2) kwresample::BilinearPlus(src, oldW, oldH, dst, w, h);
            else if (method == 1) kwresample::Bilinear(src, oldW, oldH, dst, w, h);
            else kwresample::Nearest(src, oldW, oldH, dst, w, h);
        }
        Form1::form.MousePointer = Pointer::Default;
    } catch (const std::bad_alloc&) {
        Form1::form.MousePointer = Pointer::Default;
        SetBufferSize(oldW, oldH);
        Kelpwick_MsgBox("Not enough memory to resample to " + std::to_string(w) + " by " + std::to_string(h) +
                        " pixels. The buffer is unchanged.");
        return;
    }
    Form1::Timer1.TimerEnabled = false;
    Rebuild(carried, w, h);
}
