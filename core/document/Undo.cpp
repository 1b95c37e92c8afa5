// Snapshots in the ring, undo and redo with their index walk.
#include "core/document/Undo.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "core/framework/AppState.h"
#include "core/document/Buffers.h"
#include "native/kwpaint.h"

Plane3 UndoRingR, UndoRingG, UndoRingB, UndoRingA;
std::vector<UndoSlotState> UndoStateRing;
int16_t UndoIndex = 0, UndoLast = 0, UndoDirection = 0, UndoFresh = 0;
UndoSlotState CurState;
Hook<bool> PictureRestored;

namespace {
int16_t Below(int16_t i) { return i - 1 < 0 ? UndoLast : static_cast<int16_t>(i - 1); }
int16_t Above(int16_t i) { return i + 1 > UndoLast ? 0 : static_cast<int16_t>(i + 1); }
bool RingReady() { return !UndoRingR.empty() && UndoIndex >= 0 && UndoIndex <= UndoLast; }

// Copies the picture pixel by pixel between the main planes and a slot: the slow
// path of a walk, which leaves the extra column alone.
void CopyPicture(Plane& plane, Plane3& ring, int slot, bool toRing) {
    int w = std::min(BufferWidth(), plane.ubX()), h = std::min(BufferHeight(), plane.ubY());
    uint8_t* s = ring.slot(slot);
    for (int y = 0; y < h; ++y) {
        uint8_t* p = plane.row(y);
        uint8_t* q = s + static_cast<size_t>(y) * ring.stride();
        if (toRing) std::memcpy(q, p, static_cast<size_t>(w));
        else std::memcpy(p, q, static_cast<size_t>(w));
    }
}

// Copies a plane into its ring slot and into its clean copy in one pass over the
// source: block by block, so the second copy reads from cache.
void CopyToSlotAndClean(const Plane& src, uint8_t* slot, size_t slotBytes, Plane& clean) {
    if (clean.ubX() != src.ubX() || clean.ubY() != src.ubY() || clean.empty()) clean.alloc(src.ubX(), src.ubY());
    constexpr size_t Block = 32 * 1024;
    const uint8_t* s = src.data();
    uint8_t* c = clean.data();
    size_t total = src.bytes();
    slotBytes = std::min(slotBytes, total);
    for (size_t off = 0; off < slotBytes; off += Block) {
        size_t n = std::min(Block, slotBytes - off);
        kwpaint::Kel_CopyMem(s + off, slot + off, n);
        kwpaint::Kel_CopyMem(s + off, c + off, n);
    }
    if (total > slotBytes) kwpaint::Kel_CopyMem(s + slotBytes, c + slotBytes, total - slotBytes);
}

void ApplySlotState(const UndoSlotState& s) {
    SetAlphaOn(s.alphaOn != 0);
    if (s.swapShown != App.SwapShown) SwapBuffers();
}
}  // namespace

int16_t UndoSlotsForBudget(int32_t megs, double w, double h) {
    // The budget is a 32-bit shift; a slot counts W * H per plane, four planes.
    int32_t bytes = static_cast<int32_t>(static_cast<uint32_t>(megs) << 20);
    double n = std::floor(bytes / (4.0 * w * h)) - 1;
    // A budget too small for two slots still keeps two; indices stay 16-bit.
    if (!(n >= 1)) return 1;
    return static_cast<int16_t>(std::min(n, 32766.0));
}

UndoRingSet MakeUndoRing(int32_t megs, int w, int h, int16_t last, bool zero) {
    UndoRingSet set;
    int16_t n = std::min(UndoSlotsForBudget(megs, w, h), std::max<int16_t>(last, 1));
    try {
        for (Plane3* p : {&set.r, &set.g, &set.b, &set.a}) p->alloc(w, h, n, zero);
    } catch (const std::bad_alloc&) {
        set = UndoRingSet();
        n = 1;
        for (Plane3* p : {&set.r, &set.g, &set.b, &set.a}) p->alloc(w, h, n, zero);
    }
    set.states.assign(static_cast<size_t>(n) + 1, UndoSlotState{});
    set.last = n;
    return set;
}

void InstallUndoRing(UndoRingSet&& set) {
    UndoRingR = std::move(set.r);
    UndoRingG = std::move(set.g);
    UndoRingB = std::move(set.b);
    UndoRingA = std::move(set.a);
    UndoStateRing = std::move(set.states);
    UndoLast = set.last;
}

void GetCurrentState() {
    CurState.swapShown = App.SwapShown;
    CurState.alphaOn = AlphaOn() ? 255 : 0;
}

void SaveUndo() {
    if (!RingReady() || BufR.empty()) return;
    int w = std::min(BufferWidth(), BufR.ubX()), h = std::min(BufferHeight(), BufR.ubY());
    size_t n = static_cast<size_t>(w + 1) * static_cast<size_t>(h);
    UndoIndex = Below(UndoIndex);
    // Rows 0..H-1 with their extra column go into the slot; the clean copy takes the whole plane.
    CopyToSlotAndClean(BufR, UndoRingR.slot(UndoIndex), n, UndoR);
    CopyToSlotAndClean(BufG, UndoRingG.slot(UndoIndex), n, UndoG);
    CopyToSlotAndClean(BufB, UndoRingB.slot(UndoIndex), n, UndoB);
    kwpaint::Kel_CopyMem(BufA.data(), UndoRingA.slot(UndoIndex), n);
    GetCurrentState();
    UndoStateRing[static_cast<size_t>(UndoIndex)] = CurState;
    UndoFresh = 1;
    UndoDirection = 0;
}

void RepaintUndo() {
    if (!RingReady() || BufR.empty()) return;
    if (UndoFresh == 1) {
        // The picture on screen is not in the ring yet: keep it for redo.
        UndoFresh = 0;
        int16_t i = UndoIndex;
        int16_t below = Below(UndoIndex);
        GetCurrentState();
        UndoStateRing[static_cast<size_t>(below)] = CurState;
        CopyPicture(BufR, UndoRingR, below, true);
        CopyPicture(BufG, UndoRingG, below, true);
        CopyPicture(BufB, UndoRingB, below, true);
        CopyPicture(BufA, UndoRingA, below, true);
        UndoIndex = i;
    }
    if (UndoDirection == -1) UndoIndex = Above(UndoIndex);
    UndoSlotState s = UndoStateRing[static_cast<size_t>(UndoIndex)];
    ApplySlotState(s);
    int w = std::min(BufferWidth(), BufR.ubX()), h = std::min(BufferHeight(), BufR.ubY());
    size_t n = static_cast<size_t>(w + 1) * static_cast<size_t>(h);
    if (n > 0) --n;  // the last extra-column byte of the last row stays as it is
    kwpaint::Kel_CopyMem(UndoRingR.slot(UndoIndex), BufR.data(), n);
    kwpaint::Kel_CopyMem(UndoRingG.slot(UndoIndex), BufG.data(), n);
    kwpaint::Kel_CopyMem(UndoRingB.slot(UndoIndex), BufB.data(), n);
    kwpaint::Kel_CopyMem(UndoRingA.slot(UndoIndex), BufA.data(), n);
    UndoIndex = Above(UndoIndex);
    UndoDirection = 1;
    PictureRestored.raise(s.alphaOn != 0);
}

void Redo() {
    if (!RingReady() || BufR.empty()) return;
    UndoIndex = Below(UndoIndex);
    if (UndoDirection == 1) UndoIndex = Below(UndoIndex);
    UndoSlotState s = UndoStateRing[static_cast<size_t>(UndoIndex)];
    ApplySlotState(s);
    CopyPicture(BufR, UndoRingR, UndoIndex, false);
    CopyPicture(BufG, UndoRingG, UndoIndex, false);
    CopyPicture(BufB, UndoRingB, UndoIndex, false);
    CopyPicture(BufA, UndoRingA, UndoIndex, false);
    UndoDirection = -1;
    PictureRestored.raise(s.alphaOn != 0);
}
