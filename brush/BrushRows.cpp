// The brush folder's rows: the current brush picture, its palette and the size
// slider of the tool panel, the brush options panel, and the keys Esc and o.
#include "brush/BrushRows.h"

#include "brush/Brush.h"
#include "brush/BrushMask.h"
#include "brush/BrushOptions.h"
#include "brush/Spraxel.h"
#include "core/frame/MDIForm1.h"
#include "core/framework/Host.h"
#include "core/frame/Form2.h"
#include "core/framework/Codes.h"

namespace {
std::vector<ControlRow> BrushControls() {
    std::vector<ControlRow> rows = {OnEvent(Form2::Picture1, ControlEvent::Paint, Picture1_Paint),
                                    OnMouse(Form2::Picture1, ControlEvent::MouseDown, Form2::Picture1_MouseDown),
                                    OnEvent(Form2::HScroll5, ControlEvent::Change, Form2::HScroll5_Change)};
    for (int i = 0; i < Form2::StockBrushCount; ++i)
        rows.push_back(OnMouse(Form2::StockBrush(i), ControlEvent::MouseDown, [i](int, int, float, float) { PickStockBrush(i); }));
    rows.push_back(OnEvent(Spraxel::Check1, ControlEvent::Click, Spraxel::Check1_Click));
    rows.push_back(OnEvent(Spraxel::Check2, ControlEvent::Click, Spraxel::Check2_Click));
    // The brush kinds of the options panel redraw the current brush.
    for (OptionButton* o : {&BrushOptions::Option1, &BrushOptions::Option2, &BrushOptions::Option3})
        rows.push_back(OnEvent(*o, ControlEvent::Click, Picture1_Paint));
    return rows;
}
}  // namespace

Rows BrushRows() {
    Rows rows;
    auto showSpraxel = [] { Show(Spraxel::form, false, &MDIForm1::form); };
    rows.keys = {OnPress(KeyChar::Escape, ClearAllGads), OnPress('o', ShowBrushOptions), OnPress('i', showSpraxel)};
    rows.menus = {{&MDIForm1::Win_Spraxel, showSpraxel}};
    rows.controls = BrushControls();
    return rows;
}
