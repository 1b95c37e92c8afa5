// Binds the colour folder into the menu table, the canvas keys and the tool
// panel, and holds its start-up steps.
#include "colour/Colour.h"

#include "colour/DeliverPixel.h"
#include "colour/Gradient.h"
#include "colour/Gradients.h"
#include "colour/Paper.h"
#include "colour/Pickers.h"
#include "colour/Wells.h"
#include "core/framework/AppState.h"
#include "core/display/Form1.h"
#include "core/frame/Form2.h"
#include "core/frame/MDIForm1.h"

void BindColourMenus() {
    MDIForm1::Buffer_Fill.Click = Buffer_Fill_Click;
    MDIForm1::win_Gradient.Click = win_Gradient_Click;
    MDIForm1::WPickColor.Click = WPickColor_Click;
    MDIForm1::SaveWells.Click = SaveWells_Click;
    MDIForm1::Loadwells.Click = Loadwells_Click;
    Form1::ShowGradientKey = win_Gradient_Click;
    Form1::BufferFillKey = Buffer_Fill_Click;
    Form1::NextGradientColourKey = NextGradientColour;
    Form1::PrevGradientColourKey = PreviousGradientColour;

    using namespace Form2;
    Check1.Click = Check1_Click;
    Check2.Click = Check2_Click;
    Check3.Click = Check3_Click;
    HScroll6.Change = HScroll6_Change;
    PictureBox* papers[] = {&Image1, &Image2, &Image3, &Image4, &Image5, &Image6};
    void (*clicks[])() = {Image1_Click, Image2_Click, Image3_Click, Image4_Click, Image5_Click, Image6_Click};
    for (int i = 0; i < 6; ++i) papers[i]->MouseDown = [click = clicks[i]](int, int, float, float) { click(); };
    // The pickers follow the primary colour whichever slider moved it.
    for (Slider* s : {&HScroll1, &hscroll2, &hscroll3})
        s->Change = [] {
            HScroll1_Change();
            PrimaryChanged();
        };
    TabBox.Click = TabBox_Click;
    Picture54.MouseDown = Picture54_MouseDown;
    Picture54.MouseMove = Picture54_MouseMove;
    Picture56.MouseDown = Picture56_MouseDown;
    Picture56.MouseMove = Picture56_MouseMove;
    Picture43.MouseDown = Picture43_MouseDown;
    Picture43.MouseMove = Picture43_MouseMove;
    Combo5.Click = Combo5_Click;
    SetDefaultWells();
}

void StartupGradients() { InitGradientData(); }

void StartupPaper() {
    ReadPaperState();
    PickStockPaper(1);
}

void StartupDefaultFiles() {
    Loadwell(ProgramFile("def_Well.wl"));
    ReadGradientFile(ProgramFile("Def_Gradient.grd"));
    Gradient::Refresh();
    Form2::Combo5_GotFocus();
    PrimaryChanged();
}

void ListProgramFiles(FileListBox& files, ComboBox& combo) {
    files.Path = App.StartDirectory;
    files.Refresh();
    combo.Clear();
    for (const auto& f : files.items) combo.AddItem(f);
}
