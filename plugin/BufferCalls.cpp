// Operations on the document's planes, its pixels, alpha, undo and display.
#include <array>

#include "core/display/Display.h"
#include "core/display/Form1.h"
#include "core/document/Buffers.h"
#include "core/document/Undo.h"
#include "core/framework/AppState.h"
#include "core/framework/Host.h"
#include "core/framework/vb.h"
#include "file/FileMenu.h"
#include "plugin/Calls.h"
#include "plugin/PlaneTransfer.h"

namespace Automation {
namespace {
QVariant Get(const Plane& p, const Call& call) {
    if (p.empty()) throw Refusal{InvalidArgs, "There is no document yet."};
    return PlaneVariant(p, call.sender);
}

// The plane a set replaced, kept to receive the next one: a plug-in sets plane
// after plane of one size.
Plane Spare;

// The new plane must have the bounds of the one it replaces; until it has
// arrived whole, the old one stays in place.
QVariant Set(Call& call, Plane& target, const char* what) {
    if (target.empty()) throw Refusal{InvalidArgs, "There is no document yet."};
    Plane incoming = PlaneFromVariant(call.args[0], target.ubX() + 1, target.ubY() + 1, what, call.sender,
                                      std::move(Spare));
    target.swap(incoming);
    Spare = std::move(incoming);
    return {};
}

int Channel(const Plane& p, const Call& call) {
    const int x = ArgInt16(call, 0), y = ArgInt16(call, 1);
    CheckPixel(x, y);
    return p(x, y);
}
}  // namespace

void CheckPixel(int x, int y) {
    const int w = PictureWidth({&BufR, &BufG, &BufB}), h = PictureHeight({&BufR, &BufG, &BufB});
    if (x < 0 || y < 0 || x >= w || y >= h)
        Refuse("The pixel (" + std::to_string(x) + ", " + std::to_string(y) + ") lies outside the picture of " +
               std::to_string(w) + " by " + std::to_string(h) + " pixels.");
}

QVariant Kel_GetRBuffer(Call& c) { return Get(BufR, c); }
QVariant Kel_GetGBuffer(Call& c) { return Get(BufG, c); }
QVariant Kel_GetBBuffer(Call& c) { return Get(BufB, c); }
QVariant Kel_GetABuffer(Call& c) { return Get(BufA, c); }
QVariant Kel_GetSwapRBuffer(Call& c) { return Get(SwapR, c); }
QVariant Kel_GetSwapGBuffer(Call& c) { return Get(SwapG, c); }
QVariant Kel_GetSwapBBuffer(Call& c) { return Get(SwapB, c); }
QVariant Kel_SetRbuffer(Call& c) { return Set(c, BufR, "The red plane"); }
QVariant Kel_SetGBuffer(Call& c) { return Set(c, BufG, "The green plane"); }
QVariant Kel_SetBBuffer(Call& c) { return Set(c, BufB, "The blue plane"); }
QVariant Kel_SetABuffer(Call& c) { return Set(c, BufA, "The alpha plane"); }
QVariant Kel_SetSwapRBuffer(Call& c) { return Set(c, SwapR, "The swap red plane"); }
QVariant Kel_SetSwapGBuffer(Call& c) { return Set(c, SwapG, "The swap green plane"); }
QVariant Kel_SetSwapBBuffer(Call& c) { return Set(c, SwapB, "The swap blue plane"); }

QVariant Kel_GetRGB(Call& c) {
    const int x = ArgInt16(c, 0), y = ArgInt16(c, 1);
    CheckPixel(x, y);
    return static_cast<int>(vb::RGB(BufR(x, y), BufG(x, y), BufB(x, y)));
}
QVariant Kel_GetR(Call& c) { return Channel(BufR, c); }
QVariant Kel_GetG(Call& c) { return Channel(BufG, c); }
QVariant Kel_GetB(Call& c) { return Channel(BufB, c); }

QVariant Kel_SetRGB(Call& c) {
    const int x = ArgInt16(c, 0), y = ArgInt16(c, 1);
    CheckPixel(x, y);
    BufR(x, y) = ArgByte(c, 2);
    BufG(x, y) = ArgByte(c, 3);
    BufB(x, y) = ArgByte(c, 4);
    return {};
}

QVariant Kel_BufferWidth(Call&) { return static_cast<short>(BufferWidth()); }
QVariant Kel_BufferHeight(Call&) { return static_cast<short>(BufferHeight()); }
QVariant Kel_GetAlphabits(Call&) { return static_cast<uchar>(App.AlphaOff); }

// Switching alpha moves the marquee timer and the menu's check mark with it.
QVariant Kel_AlphaOff(Call&) {
    SetAlphaOn(false);
    RedisplayWindow();
    return {};
}

QVariant Kel_AlphaOn(Call&) {
    SetAlphaOn(true);
    RedisplayWindow();
    return {};
}

QVariant Kel_InitMarquee(Call&) {
    InitMarquee();
    return {};
}

QVariant Kel_SaveUndo(Call&) {
    SaveUndo();
    return {};
}

QVariant Kel_Refresh(Call&) {
    RedisplayWindow();
    return {};
}

// A new document of the size given, without the question New asks.
QVariant Kel_NewBuffer(Call& c) {
    const int w = ArgInt16(c, 0), h = ArgInt16(c, 1);
    if (w < 1 || h < 1)
        Refuse("A buffer of " + std::to_string(w) + " by " + std::to_string(h) + " pixels cannot be made.");
    Form1::Timer1.TimerEnabled = false;
    if (Form1::form.Visible) Hide(Form1::form);
    SetBufferSize(w, h);
    App.ZoomPercent = 100;
    if (!CreateNewDocument(false) && !Form1::form.Visible) Show(Form1::form);
    Form1::ResetView();
    DemensionRefreshBuff();
    SaveUndo();
    RedisplayWindow();
    return {};
}

QVariant Kel_NewFilename(Call& c) {
    FileName = ArgString(c, 0);
    return {};
}

QVariant Kel_RenameBuffer(Call& c) {
    Form1::form.Caption = ArgString(c, 0);
    return {};
}

QVariant Kel_SetMousePointer(Call& c) {
    const int old = Form1::form.MousePointer;
    Form1::form.MousePointer = ArgInt16(c, 0);
    return static_cast<short>(old);
}

}  // namespace Automation
