// The commands of the Alpha menu: select all, clear, invert and alpha on/off.
#include "core/frame/AlphaMenu.h"

#include "core/display/Display.h"
#include "core/display/Form1.h"
#include "core/document/Buffers.h"
#include "core/document/Undo.h"
#include "core/frame/MDIForm1.h"

void ShowAlphaState(bool on) {
    MDIForm1::AlphaEnable.Checked = on;
    Form1::Timer1.TimerEnabled = on;
}

void SelectAll_Click() {
    FillPicture(BufA, 255);
    InitMarquee();
    SetAlphaOn(true);
    RedisplayWindow();
}

void ClearAlpha_Click() {
    SaveUndo();
    SetAlphaOn(false);
    FillPicture(BufA, 255);
    FillPicture(MarqueePlane, 0);
    RedisplayWindow();
}

void InvertAlpha_Click() {
    SaveUndo();
    int w = PictureWidth({&BufA}), h = PictureHeight({&BufA});
    for (int y = 0; y < h; ++y) {
        uint8_t* a = BufA.row(y);
        for (int x = 0; x < w; ++x) a[x] = static_cast<uint8_t>(255 - a[x]);
    }
    InitMarquee();
    RedisplayWindow();
}

void AlphaEnable_Click() {
    SetAlphaOn(!AlphaOn());
    RedisplayWindow();
}
