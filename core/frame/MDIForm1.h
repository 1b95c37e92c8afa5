// The main frame: its menu bar and its own procedures.
#pragma once

#include "core/framework/controls.h"

namespace MDIForm1 {
extern Form form;
extern Prop<uint32_t>& BackColor;
extern std::string BackBitmap;  // the picture of the frame's background, "" for none

// Menus of the bar and the entries the logic reads (check marks).
extern MenuEntry File, Edit, Filter, Alpha, Window, Prefs, Help;
extern MenuEntry AlphaEnable, Window_Info;
extern MenuEntry rDefault, rBitmap, prefs_Disp_15bit, Refresh_Optimised;
// Entries whose commands live in other folders, bound at start-up.
extern MenuEntry Open, Save;            // file/
extern MenuEntry flip, horizontal, vertical;  // file/
// Entries whose commands the colour folder binds.
extern MenuEntry FadePrevious;  // filter/
extern MenuEntry Buffer_Fill, win_Gradient, WPickColor, Prefs_ShowWells, SaveWells, Loadwells;

// The title of the frame as the planes and check marks say it should read.
std::string ComposeTitle();
// Listens to the display: the title follows each redisplay unless it is held.
void TitleAfterRedisplay();
bool MDIForm_QueryUnload();  // true: closing goes ahead
void Quit_Click();
void MDIForm_Unload();
}  // namespace MDIForm1

// The hidden window that owns the popup menus.
namespace Menus {
extern Form form;
extern MenuEntry Layers;
extern MenuEntry MixSwapNone, Mix_SwapBuffers, MixSwap_Add, MixSwapSub, MixSwapMult, MixSwapDiv,
    MixSwapScreen, MixaroundGrey;
extern MenuEntry TBaster, Baster1, baster5, baster9;  // one checked at a time
}  // namespace Menus

// Every entry of a menu bar or popup, in table order, for the views.
std::vector<MenuEntry*> MenuRoots(Form& f);
