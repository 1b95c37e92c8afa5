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
// Every entry of the tree; each folder's rows give the commands of its own.
extern MenuEntry New, Open, Save, Quit;
extern MenuEntry undo, Redo_, Clear, swapbuffer, CopyToSwap, swaptoalpha, AlhpaToSwap, flip, horizontal, vertical,
    BufferResample, BufferCrop, Buffer_Fill, ImageInfo;
extern MenuEntry FadePrevious;
extern MenuEntry Cust, Cust_Copy, Cust_Load, Cust_Save, Cust_Free, Cust_Mode, Cust_Mode_Color,
    Cust_Mode_Matte, Cust_flip, Cust_flipx, Cust_Flipy, Cust_Rotation, Cust_Rotate, Cust_RotateCC,
    Cust_RotateArbitrary, Cust_Scale, brush_Seamless;
extern MenuEntry SelectAll, ClearAlpha, InvertAlpha;
extern MenuEntry Palettes, toolbar, Magnify, Magnifier, win_Gradient, WPickColor, Refresh, UnlockInput;
extern MenuEntry RefreshMethod, Backdrop, MDIBackground, MDIbackgroundBitmap, Prefs_Save, Memorystuff,
    Prefs_ShowWells, SaveWells, Loadwells;
extern MenuEntry about, Help_Kelhelp, Shortcuts;
// The animation menu and the transport bar; their procedures live with the frames.
extern MenuEntry Ani_, Ani_Create, Ani_open, Ani_Save, Ani_sequence_Load, Ani_sequence, Ani_ApplyFrames, Ani_Free,
    Ani_Interface;
extern PictureBox Anim_Tools;  // the transport bar, shown or hidden as a whole
extern Slider AnimScroll;
extern Label Anim_Label;
extern TextBox Anim_Framerate;  // frames per second
extern CommandButton Anim_Play, Anim_Stop, Anim_Previous, Anim_Next, Anim_Insert, Anim_Delete;
extern Timer Anim_Timer;
extern MenuEntry Win_Spraxel;
// The plug-in host's entries: the panel on a tab, and the fixed companion programs.
extern MenuEntry import_, Export, BrushPlugin, plugin, Win_Pugins;
extern MenuEntry Storebuf, BrushStore, Alpha_Store, Alpha_Grow, Alpha_Shrink, Color8, Dither_Opt, blur_motion,
    Blur_Zoom, Convolve, Convolve_Minimum, Convovle_Median, Convolve_Maximum, Convolve_MinMax, Convolve_MaxMin,
    menuTransform, Transform_Spherize;

// The title of the frame as the planes and check marks say it should read.
std::string ComposeTitle();
// Listens to the display: the title follows each redisplay unless it is held.
void TitleAfterRedisplay();
bool MDIForm_QueryUnload();  // true: closing goes ahead
void Quit_Click();
void MDIForm_Unload();
void MDIBackground_Click();
void MDIbackgroundBitmap_Click();
// One of the refresh methods is checked at a time.
void RefreshMethod_Pick(MenuEntry& chosen);
void Toggle(MenuEntry& e);
// The display follows the check marks of layer mixing and of the 15-bit route:
// their CheckedChange runs this.
void DisplayChoicesChanged();
}  // namespace MDIForm1

// The hidden window that owns the popup menus.
namespace Menus {
extern Form form;
extern MenuEntry Layers;
extern MenuEntry MixSwapNone, Mix_SwapBuffers, MixSwap_Add, MixSwapSub, MixSwapMult, MixSwapDiv,
    MixSwapScreen, MixaroundGrey;
extern MenuEntry TBaster, Baster1, baster5, baster9;  // one checked at a time
void MixSwapNone_Click();
// One mixing method, or one baster size, is checked at a time.
void MixPick(MenuEntry& chosen);
// The mixing table the checked layer entry selects, or nullptr when mixing is off.
const uint8_t* ActiveMixTable();
void BasterPick(MenuEntry& chosen);
// The drawing tools' popups: the linear tool's variants (one checked at a
// time), the text tool's settings and clearing the selection to a colour.
extern MenuEntry Linetool, linetool_Line;
extern MenuEntry Linetool_Gradient, Circular_Gradient, LinearWarp, LinearAlhpaFader;
extern MenuEntry Flood, Flood_Settings, Flood_FillSettings;  // the flood fill's and the magic wand's popup
extern MenuEntry Texttool, Text_FontSettings, Text_FillSettings, Text_NudgeTool;
extern MenuEntry Clear_menu, ClearAlphaPrimary, ClearAlphaSeconary, Anim_ClearFrames;
}  // namespace Menus

// Every entry of a menu bar or popup, in table order, for the views.
std::vector<MenuEntry*> MenuRoots(Form& f);
