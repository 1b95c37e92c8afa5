// The whole-buffer commands of the Buffer menu: clear, swap, copy, the swap and
// alpha exchanges, a new buffer and the buffer info.
#include "core/frame/BufferMenu.h"

#include <algorithm>
#include <string>

#include "core/display/Display.h"
#include "core/display/Form1.h"
#include "core/document/AnimationGuard.h"
#include "core/document/Buffers.h"
#include "core/framework/Codes.h"
#include "core/document/CanvasSize.h"
#include "core/document/Undo.h"
#include "core/frame/AlphaMenu.h"
#include "core/frame/Form2.h"
#include "core/framework/AppState.h"
#include "core/framework/Boxes.h"
#include "core/framework/Host.h"

namespace {
// The busy pointer around a long loop.
struct BusyPointer {
    BusyPointer() { Form1::form.MousePointer = Pointer::Busy; }
    ~BusyPointer() { Form1::form.MousePointer = Pointer::Default; }
};
}  // namespace

void swapbuffer_Click() {
    BusyPointer busy;
    SaveUndo();
    SwapBuffers();
    RedisplayWindow();
}

void CopyToSwap_Click() {
    BusyPointer busy;
    SwapR.copyFrom(BufR);
    SwapG.copyFrom(BufG);
    SwapB.copyFrom(BufB);
}

void SwapToAlpha_Click() {
    SaveUndo();
    int w = PictureWidth({&SwapR, &SwapG, &SwapB, &BufA}), h = PictureHeight({&SwapR, &SwapG, &SwapB, &BufA});
    for (int y = 0; y < h; ++y) {
        const uint8_t *r = SwapR.row(y), *g = SwapG.row(y), *b = SwapB.row(y);
        uint8_t* a = BufA.row(y);
        for (int x = 0; x < w; ++x) {
            // The sum is exact; halves round to even, as the conversion does.
            int s = r[x] + g[x] + b[x];
            int q = s / 3, rem = s % 3;
            a[x] = static_cast<uint8_t>(rem == 2 ? q + 1 : q);  // thirds never tie
        }
    }
    InitMarquee();
    SetAlphaOn(true);
    RedisplayWindow();
}

void AlhpaToSwap_Click() {
    int w = PictureWidth({&SwapR, &SwapG, &SwapB, &BufA}), h = PictureHeight({&SwapR, &SwapG, &SwapB, &BufA});
    for (int y = 0; y < h; ++y) {
        std::copy_n(BufA.row(y), w, SwapR.row(y));
        std::copy_n(BufA.row(y), w, SwapG.row(y));
        std::copy_n(BufA.row(y), w, SwapB.row(y));
    }
}

void Clear_Click() { Form2::Command1_Click(); }

void New_Click() {
    if (AnimationPresent()) {
        if (!AskFreeAnimation()) return;
    } else if (Kelpwick_QuestionBox("The current buffer will be lost.  Continue?") != 1) {
        return;
    }
    Form1::Timer1.TimerEnabled = false;
    if (Form1::form.Visible) Hide(Form1::form);
    Show(CanvasSize::form, true);
    host().PaintPending();  // the dialog gone from the screen before a big document is made
    App.ZoomPercent = 100;
    // Cancel restores the old size text, and the buffer is cleared all the same.
    if (!CreateNewDocument(false) && !Form1::form.Visible) Show(Form1::form);
    Form1::ResetView();  // also when the old document stays: its zoom was set back
    DemensionRefreshBuff();
    SaveUndo();
    RedisplayWindow();
}

void ImageInfo_Click() {
    int w = BufferWidth(), h = BufferHeight();
    long long bytes = static_cast<long long>(w) * h * 3;
    Kelpwick_MsgBox("Buffer width = " + std::to_string(w) + "\nBuffer Height = " + std::to_string(h) + "\n" +
                    Form1::form.Caption.get() + " memory = " + std::to_string(bytes) + " Bytes");
}
