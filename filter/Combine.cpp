// The Combine menu: each entry a formula between the main pixel and the swap
// pixel at the same place, one undo step, the alpha way the formula asks for.
#include "filter/Combine.h"

#include <algorithm>

#include "core/display/Display.h"
#include "core/document/Buffers.h"
#include "core/document/Undo.h"
#include "core/frame/MDIForm1.h"
#include "core/framework/AppState.h"
#include "core/framework/Host.h"
#include "core/framework/MixTables.h"
#include "core/framework/PanelLook.h"
#include "filter/FilterFrame.h"
#include "native/kwfilter.h"

namespace {
// A table formula over the whole picture, then the after-pass.
void TableWithAfterPass(const uint8_t* table) {
    const FilterArea s = FilterSize();
    if (s.empty()) return;
    kwfilter::CombineTable(BufR.data(), BufG.data(), BufB.data(), SwapR.data(), SwapG.data(), SwapB.data(), table, s.w,
                           s.h);
    OverlayAfterPass();
}

// The frame of every handler: undo step, hourglass, the work, redisplay.
template <typename F>
void Handler(F work) {
    if (!DocumentExists() || FilterSize().empty()) return;
    SaveUndo();
    Hourglass busy;
    work(FilterSize());
    RedisplayWindow();
}

void PerPixel(kwfilter::CombineFormula f, const uint8_t* table = nullptr) {
    Handler([&](const FilterArea& s) {
        kwfilter::CombinePixels(f, BufR.data(), BufG.data(), BufB.data(), SwapR.data(), SwapG.data(), SwapB.data(),
                                BufA.data(), App.AlphaOff, s.w, s.h, table);
    });
}

void AfterPass(const uint8_t* table) {
    Handler([&](const FilterArea&) { TableWithAfterPass(table); });
}
}  // namespace

namespace Form1 {
void CombineAdd() { TableWithAfterPass(MixAdd); }
void CombineSub() { TableWithAfterPass(MixSub); }
}  // namespace Form1

void CombineAdd_Click() { AfterPass(MixAdd); }
void CombineSub_Click() { AfterPass(MixSub); }
void CombineMult_Click() { AfterPass(MixMult); }
void CombineScreen_Click() { AfterPass(MixScreen); }
void CombineDiv_Click() { PerPixel(kwfilter::CombineFormula::Table, MixDiv); }
void CombineAroundGrey_Click() { PerPixel(kwfilter::CombineFormula::Table, MixAroundGrey); }
void CombineLuminance_Click() { PerPixel(kwfilter::CombineFormula::Luminance); }
void CombineDifference_Click() { PerPixel(kwfilter::CombineFormula::Difference); }
void CombineTexture_Click() { PerPixel(kwfilter::CombineFormula::Texture); }
void Combinelighter_Click() { PerPixel(kwfilter::CombineFormula::Lighter); }
void CombineDarker_Click() { PerPixel(kwfilter::CombineFormula::Darker); }
void Combine_binary_Click() { PerPixel(kwfilter::CombineFormula::Binary); }

void CobineOverlay_Click() {
    Handler([](const FilterArea& s) {
        kwfilter::Overlay(BufR.data(), BufG.data(), BufB.data(), SwapR.data(), SwapG.data(), SwapB.data(), BufA.data(),
                          App.AlphaOff, s.w, s.h);
    });
}

void Premult_Click() {
    Handler([](const FilterArea& s) {
        kwfilter::Premult(BufR.data(), BufG.data(), BufB.data(), SwapR.data(), SwapG.data(), SwapB.data(), BufA.data(),
                          s.w, s.h);
    });
}

// ---- mix buffers
namespace MixBufs {
Form form("MixBufs", "Mix buffers");
Slider HScroll1(form, "HScroll1", 0, 255, 128, [] { CombineMixBuffs(HScroll1.Value); });
CommandButton Command1(form, "Command1", "Ok", [] { Hide(form); }, ButtonRole::Default);
CommandButton Command2(form, "Command2", "Cancel", [] { PreviewCancel(form); }, ButtonRole::Cancel);
namespace {
struct Wiring {
    Wiring() {
        HScroll1.Caption.setQuietly("Mix");
        Command1.Group = Command2.Group = 1;
        form.Load = [] { PrefsCallBack(form); };
    }
} wiring;
}  // namespace
}  // namespace MixBufs

void CombineMixBuffs(int amount) {
    const FilterArea s = FilterSize();
    if (s.empty()) return;
    amount = std::clamp(amount, 0, 255);
    if (App.AlphaOff == 0) {
        GetAlphaMinMax();
        const int x1 = std::min<int>(AlphaRight, s.w - 1), y1 = std::min<int>(AlphaBottom, s.h - 1);
        Plane* dest[3] = {&BufR, &BufG, &BufB};
        const Plane* swap[3] = {&SwapR, &SwapG, &SwapB};
        const Plane* undo[3] = {&UndoR, &UndoG, &UndoB};
        for (int c = 0; c < 3; ++c)
            for (int y = AlphaTop; y <= y1; ++y)
                for (int x = AlphaLeft; x <= x1; ++x)
                    (*dest[c])(x, y) =
                        static_cast<uint8_t>(((*swap[c])(x, y) * amount + (*undo[c])(x, y) * (255 - amount)) / 255);
        OverlayAfterPass();
    } else {
        kwfilter::FastMixBuffs(UndoR.data(), SwapR.data(), BufR.data(), amount, s.w, s.h);
        kwfilter::FastMixBuffs(UndoG.data(), SwapG.data(), BufG.data(), amount, s.w, s.h);
        kwfilter::FastMixBuffs(UndoB.data(), SwapB.data(), BufB.data(), amount, s.w, s.h);
    }
    RedisplayWindow();
}

void CombineMix_Click() {
    if (!DocumentExists()) return;
    SaveUndo();
    Show(MixBufs::form, false, &MDIForm1::form);
    CombineMixBuffs(MixBufs::HScroll1.Value);
}

// ---- emboss by swap
void EmbossMap(int direction) {
    // (dx1, dy1) and (dx2, dy2) per direction, 0 top left round to 7 left.
    static const int offsets[8][4] = {{1, 1, -1, -1}, {0, 1, 0, -1}, {-1, 1, 1, -1}, {-1, 0, 1, 0},
                                      {-1, -1, 1, 1}, {0, -1, 0, 1}, {1, -1, -1, 1}, {1, 0, -1, 0}};
    if (direction < 0 || direction > 7) return;
    const int* d = offsets[direction];
    Handler([d](const FilterArea& s) {
        kwfilter::EmbossMap(BufR.data(), BufG.data(), BufB.data(), SwapR.data(), SwapG.data(), SwapB.data(),
                            BufA.data(), App.AlphaOff, s.w, s.h, d[0], d[1], d[2], d[3]);
    });
}
