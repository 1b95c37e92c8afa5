// The canvas folder's rows: its tools in the order of the tool panel, and
// shift with the arrows nudging the selection.
#include "canvas/CanvasRows.h"

#include "canvas/CanvasInput.h"
#include "canvas/tools/Tools.h"
#include "core/display/Display.h"
#include "core/framework/Codes.h"

namespace {
void Nudge(int dx, int dy) {
    NudgeAlpha(dx, dy);
    RedisplayWindow();
}
}  // namespace

Rows CanvasRows() {
    Rows rows = NaturalBrushRows();
    rows += BasterRows();
    rows += BrushSelectRows();
    using namespace VirtualKey;
    const int16_t shift = ShiftState::Shift;
    rows.keys.push_back(OnRelease(Up, shift, [] { Nudge(0, -1); }));
    rows.keys.push_back(OnRelease(Down, shift, [] { Nudge(0, 1); }));
    rows.keys.push_back(OnRelease(Left, shift, [] { Nudge(-1, 0); }));
    rows.keys.push_back(OnRelease(Right, shift, [] { Nudge(1, 0); }));
    return rows;
}
