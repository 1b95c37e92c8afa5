// The seven start-up settings of the frame, kept per user in the settings store.
#include "core/frame/StartupSettings.h"

#include <algorithm>
#include <cctype>
#include <filesystem>

#include "core/frame/MDIForm1.h"
#include "core/framework/AppState.h"
#include "core/framework/Boxes.h"
#include "core/framework/Settings.h"
#include "core/framework/vb.h"

namespace {
bool ParseMegs(const std::string& text, int16_t& out) {
    std::string t = text;
    t.erase(std::remove_if(t.begin(), t.end(), [](unsigned char c) { return std::isspace(c); }), t.end());
    if (t.empty()) return false;
    size_t i = (t[0] == '-' || t[0] == '+') ? 1 : 0;
    if (i == t.size() || !std::all_of(t.begin() + static_cast<long>(i), t.end(), [](unsigned char c) { return std::isdigit(c); }))
        return false;
    double v = vb::Val(t);
    if (v < 1 || v > 2047) return false;  // the budget is shifted into 32 bits
    out = static_cast<int16_t>(v);
    return true;
}
}  // namespace

void ReadStartupSettings() {
    std::string megs = GetSetting("mem_MaxUndo", "14");
    if (!ParseMegs(megs, App.UndoMegs)) {
        App.UndoMegs = 14;
        Kelpwick_MsgBox("The undo memory setting \"" + megs +
                        "\" is not a number of megabytes from 1 to 2047. The default of 14 is used.");
    }
    using namespace MDIForm1;
    rDefault.Checked = ParseBoolText(GetSetting("rDefault", BoolText(rDefault.Checked)), rDefault.Checked);
    rBitmap.Checked = ParseBoolText(GetSetting("rBitmap", BoolText(rBitmap.Checked)), rBitmap.Checked);
    prefs_Disp_15bit.Checked =
        ParseBoolText(GetSetting("prefs_Disp_15bit", BoolText(prefs_Disp_15bit.Checked)), prefs_Disp_15bit.Checked);
    Refresh_Optimised.Checked =
        ParseBoolText(GetSetting("Refresh_Optimised", BoolText(Refresh_Optimised.Checked)), Refresh_Optimised.Checked);
    double back = vb::Val(GetSetting("Back_Color", std::to_string(BackColor.get())));
    if (back >= 0 && back <= 16777215) BackColor = static_cast<uint32_t>(back);
    // The background picture loads with errors suppressed: a missing file leaves none.
    App.Silent = 1;
    std::string bitmap = GetSetting("Back_Bitmap", "def_mdiform_bitmap.bmp");
    std::error_code ec;
    std::string path = ProgramFile(bitmap);
    if (!bitmap.empty() && std::filesystem::is_regular_file(path, ec)) BackBitmap = path;
    App.Silent = 0;
}

void Prefs_Save_Click() {
    using namespace MDIForm1;
    SaveSetting("rDefault", BoolText(rDefault.Checked));
    SaveSetting("rBitmap", BoolText(rBitmap.Checked));
    SaveSetting("prefs_Disp_15bit", BoolText(prefs_Disp_15bit.Checked));
    SaveSetting("Refresh_Optimised", BoolText(Refresh_Optimised.Checked));
    SaveSetting("Back_Color", std::to_string(BackColor.get()));
    SaveSetting("Back_Bitmap", BackBitmap);
    Kelpwick_MsgBox("Settings saved.");
}
