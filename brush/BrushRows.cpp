// The brush folder's rows: the current brush picture, its palette and the size
// slider of the tool panel, the brush options panel, the custom brush's menu,
// panels and picture, and the keys of all of them.
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

// B takes the custom brush back when one exists.
void CustomBrushBack() {
    if (BrushWidth <= 0) return;
    App.CustomBrushOn = -1;
    Picture1_Paint();
}

std::vector<KeyRow> CustomBrushKeys() {
    using namespace MDIForm1;
    const int16_t none = ShiftState::None;
    return {OnRelease(VirtualKey::F1, none, Cust_Mode_Color_Click),
            OnRelease(VirtualKey::F2, none, Cust_Mode_Matte_Click),
            OnPress('h', [] { Show(BrushKey::form); }),
            OnPress('g', [] { Show(Airbrush_Options::form); }),
            OnPress('.', Menus::Default_Single_Click),
            OnPress('Z', Cust_RotateArbitrary_Click),
            OnPress('B', CustomBrushBack),
            OnPress('x', Cust_flipx_Click),
            OnPress('y', Cust_Flipy_Click),
            OnPress('z', Cust_Rotate_Click)};
}
}  // namespace

Rows BrushRows() {
    Rows rows;
    auto showSpraxel = [] { Show(Spraxel::form, false, &MDIForm1::form); };
    rows.keys = {OnPress(KeyChar::Escape, ClearAllGads), OnPress('o', ShowBrushOptions), OnPress('i', showSpraxel)};
    for (KeyRow& k : CustomBrushKeys()) rows.keys.push_back(std::move(k));
    rows.menus = CustomBrushMenus();
    rows.menus.push_back({&MDIForm1::Win_Spraxel, showSpraxel});
    for (MenuRow& m : MediaMenuRows()) rows.menus.push_back(std::move(m));
    rows.controls = BrushControls();
    return rows;
}
