// The core's rows: the frame's menu entries and popups whose commands live in
// core, and the clear button's popup.
#include "core/frame/FrameRows.h"

#include "core/display/Display.h"
#include "core/document/Undo.h"
#include "core/frame/AlphaMenu.h"
#include "core/frame/BufferMenu.h"
#include "core/frame/FatBits.h"
#include "core/frame/Form2.h"
#include "core/frame/Form3.h"
#include "core/frame/KeyboardHelp.h"
#include "core/frame/MDIForm1.h"
#include "core/frame/MemoryOptions.h"
#include "core/frame/Nav.h"
#include "core/frame/WindowMenu.h"
#include "core/framework/Codes.h"
#include "core/framework/Host.h"
#include "core/frame/StartupSettings.h"
#include "core/framework/Settings.h"

namespace {
std::vector<MenuRow> FrameMenus() {
    using namespace MDIForm1;
    return {{&New, New_Click},
            {&Quit, Quit_Click},
            {&undo, RepaintUndo},
            {&Redo_, Redo},
            {&Clear, Clear_Click},
            {&swapbuffer, swapbuffer_Click},
            {&CopyToSwap, CopyToSwap_Click},
            {&swaptoalpha, SwapToAlpha_Click},
            {&AlhpaToSwap, AlhpaToSwap_Click},
            {&BufferResample, BufferResample_Click},
            {&BufferCrop, BufferCrop_Click},
            {&ImageInfo, ImageInfo_Click},
            {&SelectAll, SelectAll_Click},
            {&ClearAlpha, ClearAlpha_Click},
            {&AlphaEnable, AlphaEnable_Click},
            {&InvertAlpha, InvertAlpha_Click},
            {&toolbar, toolbar_Click},
            {&Magnify, Magnify_Click},
            {&Magnifier, Magnifier_Click},
            {&Window_Info, Window_Info_Click},
            {&Refresh, Refresh_Click},
            {&UnlockInput, UnlockInput_Click},
            {&rDefault, [] { RefreshMethod_Pick(rDefault); }},
            {&rBitmap, [] { RefreshMethod_Pick(rBitmap); }},
            {&prefs_Disp_15bit, [] { Toggle(prefs_Disp_15bit); }},
            {&Refresh_Optimised, [] { Toggle(Refresh_Optimised); }},
            {&MDIBackground, MDIBackground_Click},
            {&MDIbackgroundBitmap, MDIbackgroundBitmap_Click},
            {&Prefs_Save, Prefs_Save_Click},
            {&Memorystuff, Memorystuff_Click},
            {&about, about_Click},
            {&Help_Kelhelp, Help_Kelhelp_Click},
            {&Shortcuts, Shortcuts_Click}};
}

std::vector<MenuRow> PopupMenus() {
    using namespace Menus;
    std::vector<MenuRow> rows = {{&MixSwapNone, MixSwapNone_Click}, {&Mix_SwapBuffers, swapbuffer_Click}};
    for (MenuEntry* e : {&MixSwap_Add, &MixSwapSub, &MixSwapMult, &MixSwapDiv, &MixSwapScreen, &MixaroundGrey})
        rows.push_back({e, [e] { MixPick(*e); }});
    for (MenuEntry* e : {&Baster1, &baster5, &baster9}) rows.push_back({e, [e] { BasterPick(*e); }});
    return rows;
}

}  // namespace

Rows FrameRows() {
    Rows rows;
    // A right click on the clear button opens its popup.
    rows.controls.push_back(OnMouse(Form2::Command1, ControlEvent::MouseDown, [](int button, int, float, float) {
        if (button == MouseButton::Right) host().PopupMenu(Menus::Clear_menu);
    }));
    rows.menus = FrameMenus();
    for (MenuRow& r : PopupMenus()) rows.menus.push_back(std::move(r));
    return rows;
}
