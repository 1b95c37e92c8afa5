// The colour folder's rows: the fill, gradient, picker and well entries of the
// frame's menus, the gradient keys, and the paper, picker and well controls of
// the tool panel, whose work is here.
#include "colour/ColourRows.h"

#include "colour/DeliverPixel.h"
#include "colour/Gradient.h"
#include "colour/Paper.h"
#include "colour/Pickers.h"
#include "colour/Wells.h"
#include "core/frame/Form2.h"
#include "core/frame/MDIForm1.h"

namespace {
std::vector<ControlRow> PaperControls() {
    using namespace Form2;
    std::vector<ControlRow> rows = {OnEvent(Check1, ControlEvent::Click, Check1_Click),
                                    OnEvent(Check2, ControlEvent::Click, Check2_Click),
                                    OnEvent(Check3, ControlEvent::Click, Check3_Click),
                                    OnEvent(HScroll6, ControlEvent::Change, HScroll6_Change)};
    PictureBox* papers[] = {&Image1, &Image2, &Image3, &Image4, &Image5, &Image6};
    void (*clicks[])() = {Image1_Click, Image2_Click, Image3_Click, Image4_Click, Image5_Click, Image6_Click};
    for (int i = 0; i < 6; ++i)
        rows.push_back(OnMouse(*papers[i], ControlEvent::MouseDown, [click = clicks[i]](int, int, float, float) { click(); }));
    return rows;
}

std::vector<ControlRow> PickerControls() {
    using namespace Form2;
    std::vector<ControlRow> rows;
    // The pickers follow the primary colour whichever slider moved it.
    for (Slider* s : {&HScroll1, &hscroll2, &hscroll3})
        rows.push_back(OnEvent(*s, ControlEvent::Change, [] {
            HScroll1_Change();
            PrimaryChanged();
        }));
    rows.push_back(OnEvent(TabBox, ControlEvent::Click, TabBox_Click));
    rows.push_back(OnMouse(Picture54, ControlEvent::MouseDown, Picture54_MouseDown));
    rows.push_back(OnMouse(Picture54, ControlEvent::MouseMove, Picture54_MouseMove));
    rows.push_back(OnMouse(Picture56, ControlEvent::MouseDown, Picture56_MouseDown));
    rows.push_back(OnMouse(Picture56, ControlEvent::MouseMove, Picture56_MouseMove));
    rows.push_back(OnMouse(Picture43, ControlEvent::MouseDown, Picture43_MouseDown));
    rows.push_back(OnMouse(Picture43, ControlEvent::MouseMove, Picture43_MouseMove));
    rows.push_back(OnEvent(Combo5, ControlEvent::Click, Combo5_Click));
    return rows;
}
}  // namespace

Rows ColourRows() {
    Rows rows;
    rows.menus = {{&MDIForm1::Buffer_Fill, Buffer_Fill_Click},
                  {&MDIForm1::win_Gradient, win_Gradient_Click},
                  {&MDIForm1::WPickColor, WPickColor_Click},
                  {&MDIForm1::SaveWells, SaveWells_Click},
                  {&MDIForm1::Loadwells, Loadwells_Click}};
    rows.controls = PaperControls();
    for (ControlRow& r : PickerControls()) rows.controls.push_back(std::move(r));
    return rows;
}
