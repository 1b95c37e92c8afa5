// Fade last action: the fade planes hold the picture after the last action, the
// undo planes the one before it; the slider mixes the two into the main buffer.
#include "filter/FadeLast.h"

#include "core/display/Display.h"
#include "core/document/Buffers.h"
#include "core/frame/MDIForm1.h"
#include "core/framework/Host.h"
#include "native/kwfilter.h"
#include "core/framework/PanelLook.h"

namespace FadeLast {
Form form("FadeLast", "Fade last action");
Slider HScroll1(form, "HScroll1", 0, 255, 0, [] { HScroll1_Change(); });
CommandButton Command1(form, "Command1", "OK", [] { Command1_Click(); }, ButtonRole::Default);
CommandButton Command2(form, "Command2", "Cancel", [] { Command2_Click(); }, ButtonRole::Cancel);
namespace {
struct Wiring {
    Wiring() {
        Command1.Group = Command2.Group = 1;
        HScroll1.Caption.setQuietly("Fade");
        form.Load = [] { PrefsCallBack(form); };
    }
} wiring;
}  // namespace

void HScroll1_Change() { FadeLast(HScroll1.Value); }

void Command1_Click() {
    FadeR.free();
    FadeG.free();
    FadeB.free();
    Hide(form);
}

void Command2_Click() {
    // A new document while the panel was open leaves fade planes of the old size:
    // those must not come back, or the main planes would no longer match the rest.
    if (!FadeR.empty() && FadeR.ubX() == BufR.ubX() && FadeR.ubY() == BufR.ubY()) {
        BufR.copyFrom(FadeR);
        BufG.copyFrom(FadeG);
        BufB.copyFrom(FadeB);
    }
    FadeR.free();
    FadeG.free();
    FadeB.free();
    Hide(form);
    RedisplayWindow();
}
void FadeLast(int amount) {
    if (amount <= 0 || FadeR.empty() || UndoR.empty()) return;
    int w = BufferWidth(), h = BufferHeight();
    if (FadeR.ubX() != w || FadeR.ubY() != h || UndoR.ubX() != w || UndoR.ubY() != h) return;
    kwfilter::FastMixBuffs(FadeR.data(), UndoR.data(), BufR.data(), amount, w, h);
    kwfilter::FastMixBuffs(FadeG.data(), UndoG.data(), BufG.data(), amount, w, h);
    kwfilter::FastMixBuffs(FadeB.data(), UndoB.data(), BufB.data(), amount, w, h);
    RedisplayWindow();
}
}  // namespace FadeLast

void FadePrevious_Click() {
    if (!DocumentExists()) return;
    // The fade planes hold the picture after the last action; the undo planes before it.
    FadeR.copyFrom(BufR);
    FadeG.copyFrom(BufG);
    FadeB.copyFrom(BufB);
    FadeLast::HScroll1.Value.setQuietly(0);
    Show(FadeLast::form, false, &MDIForm1::form);
    FadeLast::HScroll1_Change();
}
