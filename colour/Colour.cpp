// The colour folder's start-up steps.
#include "colour/Colour.h"

#include "colour/Gradient.h"
#include "colour/Gradients.h"
#include "colour/Paper.h"
#include "colour/Pickers.h"
#include "colour/Wells.h"
#include "core/framework/AppState.h"
#include "core/frame/Form2.h"

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
