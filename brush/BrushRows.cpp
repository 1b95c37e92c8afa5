// The brush folder's rows: the current brush picture, its palette and the size
// slider of the tool panel, the brush options panel, the custom brush's menu,
// panels and picture.
#include "brush/BrushRows.h"

#include "brush/Brush.h"
#include "brush/BrushMask.h"
#include "brush/BrushOptions.h"
#include "brush/Spraxel.h"
#include "core/frame/MDIForm1.h"
#include "core/framework/Host.h"
#include "brush/BrushTransforms.h"
#include "brush/CustomBrush.h"
#include "brush/Media.h"
#include "core/framework/AppState.h"
#include "core/document/Buffers.h"
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
    rows.push_back(OnEvent(Form2::Combo2, ControlEvent::Click, Form2::Combo2_Click));
    rows.push_back(OnEvent(Form2::Combo1, ControlEvent::Click, Form2::Combo1_Click));
    rows.push_back(OnMouse(Form2::Picture58, ControlEvent::MouseDown, [](int, int, float, float) { Form2::Picture58_Click(); }));
    return rows;
}

std::vector<MenuRow> CustomBrushMenus() {
    using namespace MDIForm1;
    return {{&Cust_Copy, Cust_Copy_Click},         {&Cust_Load, Cust_Load_Click},
            {&Cust_Save, Cust_Save_Click},         {&Cust_Free, Cust_Free_Click},
            {&Cust_Mode_Color, Cust_Mode_Color_Click}, {&Cust_Mode_Matte, Cust_Mode_Matte_Click},
            {&Cust_flipx, Cust_flipx_Click},       {&Cust_Flipy, Cust_Flipy_Click},
            {&Cust_Rotate, Cust_Rotate_Click},     {&Cust_RotateCC, Cust_RotateCC_Click},
            {&Cust_RotateArbitrary, Cust_RotateArbitrary_Click}, {&Cust_Scale, Cust_Scale_Click},
            {&brush_Seamless, brush_Seamless_Click}};
}

}  // namespace

Rows BrushRows() {
    Rows rows;
    rows.menus = CustomBrushMenus();
    rows.menus.push_back({&MDIForm1::Win_Spraxel, ShowSpraxel});
    for (MenuRow& m : MediaMenuRows()) rows.menus.push_back(std::move(m));
    rows.controls = BrushControls();
    return rows;
}
