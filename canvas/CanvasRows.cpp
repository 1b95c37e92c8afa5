// The canvas folder's rows: its tools in the order of the tool panel, and the
// clear button's colours.
#include "canvas/CanvasRows.h"

#include "canvas/CanvasInput.h"
#include "canvas/Shapes.h"
#include "canvas/tools/Tools.h"
#include "core/display/Display.h"
#include "core/document/Undo.h"
#include "core/frame/MDIForm1.h"
#include "core/framework/Codes.h"

namespace {
// Clearing the selection to a colour is one undo step.
void ClearAlphaPrimary_Click() {
    SaveUndo();
    ClearSelected(0);
}
void ClearAlphaSeconary_Click() {
    SaveUndo();
    ClearSelected(1);
}
}  // namespace

Rows CanvasRows() {
    // The tools in the order of the tool panel.
    Rows rows = NaturalBrushRows();
    rows += RectangleRows();
    rows += EllipseRows();
    rows += FloodRows();
    rows += BasterRows();
    rows += LassoRows();
    rows += RectAlphaRows();
    rows += EllipseAlphaRows();
    rows += WandRows();
    rows += CurveRows();
    rows += LineRows();
    rows += TextRows();
    rows += BrushSelectRows();
    rows.menus.push_back({&Menus::ClearAlphaPrimary, ClearAlphaPrimary_Click});
    rows.menus.push_back({&Menus::ClearAlphaSeconary, ClearAlphaSeconary_Click});
    return rows;
}
