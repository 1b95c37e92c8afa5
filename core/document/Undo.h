// The undo ring: whole-picture snapshots of the four main planes, in a ring
// sized by a memory budget. The index runs downward: a new snapshot goes below.
#pragma once

#include <cstdint>
#include <vector>

#include "core/framework/Hook.h"
#include "core/framework/Plane.h"

extern Plane3 UndoRingR, UndoRingG, UndoRingB, UndoRingA;
struct UndoSlotState { uint8_t swapShown = 0, alphaOn = 0; };
extern std::vector<UndoSlotState> UndoStateRing;
extern int16_t UndoIndex, UndoLast, UndoDirection, UndoFresh;
extern UndoSlotState CurState;

// The slot count the budget allows for a W x H picture, less one; at least 1
// (two slots) and never more than 16-bit indices can walk.
int16_t UndoSlotsForBudget(int32_t megs, double w, double h);
void SaveUndo();
// SaveUndo for a change that rewrites the colour planes from the top down, a
// band of rows at a time: the snapshot takes the colour planes' rows up to
// lastRow when Take(lastRow) is called, just before the change reads them, so
// that each row comes from memory once for both; the rest when it ends. The
// change must call Take for a row before it writes it.
class UndoByBands {
public:
    UndoByBands();
    ~UndoByBands();
    UndoByBands(const UndoByBands&) = delete;
    UndoByBands& operator=(const UndoByBands&) = delete;
    void Take(int lastRow);

private:
    bool banded_ = false;
    int16_t slot_ = 0;
    int next_ = 0, rows_ = 0;
};
void RepaintUndo();
void Redo();
// Undo or redo put a snapshot back, with alpha on or off: the display shows it.
extern Hook<bool> PictureRestored;
void GetCurrentState();

// A ring built aside, to be installed only when the whole document was allocated.
struct UndoRingSet {
    Plane3 r, g, b, a;
    std::vector<UndoSlotState> states;
    int16_t last = 0;
};
// `last` is the highest slot index wanted (from the budget, or 1 when memory is short).
// Unzeroed, the caller writes the slots before any read.
UndoRingSet MakeUndoRing(int32_t megs, int w, int h, int16_t last, bool zero = true);
void InstallUndoRing(UndoRingSet&& set);
