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

// The clean copy of a colour plane is the ring slot of the last snapshot, seen
// as a plane: the slot holds the whole plane, so no second copy is made. Only
// SaveUndo writes that slot again (undo keeps the present picture in the slot
// below, and the ring always has two slots or more), so the view stays what
// the last snapshot took. A ring whose slots do not match the plane's bounds
// leaves a copy of the plane's own.
void SnapshotWithCleanCopy(const Plane& src, Plane3& ring, int slot, Plane& clean) {
    if (ring.ubX() == src.ubX() && ring.ubY() == src.ubY()) {
        kwpaint::Kel_CopyMem(src.data(), ring.slot(slot), src.bytes());
        clean = Plane::View(ring.slot(slot), src.ubX(), src.ubY());
        return;
    }
    const size_t n = std::min(src.bytes(), ring.slotCount());
    kwpaint::Kel_CopyMem(src.data(), ring.slot(slot), n);
    if (clean.isView()) clean.free();
    clean.copyFrom(src);
}

void ViewCleanCopies(int slot) {
    auto view = [&](Plane3& ring, Plane& clean) {
        clean = ring.empty() ? Plane() : Plane::View(ring.slot(slot), ring.ubX(), ring.ubY());
    };
    view(UndoRingR, UndoR);
    view(UndoRingG, UndoG);
    view(UndoRingB, UndoB);
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
    ViewCleanCopies(0);
}

void GetCurrentState() {
    CurState.swapShown = App.SwapShown;
    CurState.alphaOn = AlphaOn() ? 255 : 0;
}

UndoByBands::UndoByBands() {
    if (!RingReady() || BufR.empty()) return;
    int w = std::min(BufferWidth(), BufR.ubX()), h = std::min(BufferHeight(), BufR.ubY());
    size_t n = static_cast<size_t>(w + 1) * static_cast<size_t>(h);
    UndoIndex = Below(UndoIndex);
    // Rows 0..H-1 with their extra column go into the slot (the colour planes'
    // last row too, which no walk restores, so the slot is the whole clean copy).
    // Slots of the planes' own shape are the clean copies and are filled band
    // by band; any other ring is filled now.
    Plane* const planes[3] = {&BufR, &BufG, &BufB};
    Plane3* const rings[3] = {&UndoRingR, &UndoRingG, &UndoRingB};
    Plane* const clean[3] = {&UndoR, &UndoG, &UndoB};
    banded_ = true;
    for (int k = 0; k < 3; ++k)
        banded_ = banded_ && rings[k]->ubX() == planes[k]->ubX() && rings[k]->ubY() == planes[k]->ubY() &&
                  planes[k]->stride() == BufR.stride() && planes[k]->ubY() == BufR.ubY();
    for (int k = 0; k < 3; ++k) {
        if (banded_) *clean[k] = Plane::View(rings[k]->slot(UndoIndex), planes[k]->ubX(), planes[k]->ubY());
        else SnapshotWithCleanCopy(*planes[k], *rings[k], UndoIndex, *clean[k]);
    }
    slot_ = UndoIndex;
    rows_ = banded_ ? BufR.ubY() + 1 : 0;
    kwpaint::Kel_CopyMem(BufA.data(), UndoRingA.slot(UndoIndex), std::min(n, UndoRingA.slotCount()));
    GetCurrentState();
    UndoStateRing[static_cast<size_t>(UndoIndex)] = CurState;
    UndoFresh = 1;
    UndoDirection = 0;
}

void UndoByBands::Take(int lastRow) {
    const int end = std::min(lastRow + 1, rows_);
    if (end <= next_) return;
    const size_t stride = BufR.stride(), from = static_cast<size_t>(next_) * stride;
    const size_t bytes = static_cast<size_t>(end - next_) * stride;
    kwpaint::StreamCopy(BufR.data() + from, UndoRingR.slot(slot_) + from, bytes);
    kwpaint::StreamCopy(BufG.data() + from, UndoRingG.slot(slot_) + from, bytes);
    kwpaint::StreamCopy(BufB.data() + from, UndoRingB.slot(slot_) + from, bytes);
    next_ = end;
}

UndoByBands::~UndoByBands() { Take(rows_ - 1); }

void SaveUndo() { UndoByBands whole; }

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
