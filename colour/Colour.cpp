// The colour folder's start-up steps.
#include "colour/Colour.h"

#include <algorithm>

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
    const std::string shown = combo.Text();
    files.Path = App.StartDirectory;
    files.Refresh();
    combo.Clear();
    for (const auto& f : files.items) combo.AddItem(f);
    // The file shown stays shown, without being read again: a fresh list is no
    // reason for the box to go blank.
    const auto kept = std::find(combo.items.begin(), combo.items.end(), shown);
    if (shown.empty() || kept == combo.items.end()) return;
    combo.ListIndex.setQuietly(static_cast<int>(kept - combo.items.begin()));
    combo.notifyView();
}
