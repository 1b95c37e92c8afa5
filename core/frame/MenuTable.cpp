// The menu tree of the frame and the popup menus, as one table in display order:
// entries, captions and check marks. An entry's control name is the name of its
// command procedure; the commands are rows of the folders that own them, and
// the menu bar hides an entry that has none.
#include "core/framework/AppState.h"
#include "core/framework/Boxes.h"
#include "core/document/Buffers.h"
#include "core/display/Display.h"
#include "core/display/Form1.h"
#include "core/frame/Form2.h"
#include "core/framework/Host.h"
#include "core/frame/AlphaMenu.h"
#include "core/frame/BufferMenu.h"
#include "core/frame/MDIForm1.h"
#include "core/framework/MixTables.h"
#include "core/frame/Nav.h"
#include "core/frame/FatBits.h"
#include "core/frame/MemoryOptions.h"
#include "core/frame/Form3.h"
#include "core/frame/KeyboardHelp.h"
#include "core/frame/WindowMenu.h"
#include "core/framework/Settings.h"
#include "core/document/Undo.h"

namespace MDIForm1 {
Form form("MDIForm1", "Project Kelpwick");
Prop<uint32_t>& BackColor = form.BackColor;
std::string BackBitmap;

// File
MenuEntry File(form, "File", "&File", nullptr);
MenuEntry New(form, "New", "New", &File);
MenuEntry Open(form, "Open", "&Open...", &File);
MenuEntry import_(form, "import", "Import plugin...", &File);
MenuEntry Save(form, "Save", "Save...", &File);
MenuEntry Export(form, "Export", "Export plugin...", &File);
MenuEntry Quit(form, "Quit", "Q&uit", &File);
// Buffer
MenuEntry Edit(form, "Edit", "&Buffer", nullptr);
MenuEntry undo(form, "undo", "Undo   u / ctrl &z", &Edit);
MenuEntry Redo_(form, "Redo", "Redo   a  / ctrl &a", &Edit);
MenuEntry Clear(form, "Clear", "Clear   K", &Edit);
MenuEntry Storebuf(form, "Storebuf", "Store buffer...", &Edit);
MenuEntry swapbuffer(form, "swapbuffer", "Swap buffers                          j", &Edit);
MenuEntry CopyToSwap(form, "CopyToSwap", "Copy to swap                         J", &Edit);
MenuEntry swaptoalpha(form, "swaptoalpha", "Copy swap buffer to alpha    S", &Edit);
MenuEntry AlhpaToSwap(form, "AlhpaToSwap", "Copy alpha to swap buffer   W", &Edit);
MenuEntry flip(form, "flip", "Flip", &Edit);
MenuEntry horizontal(form, "horizontal", "Horizontal", &flip);
MenuEntry vertical(form, "vertical", "Vertical", &flip);
MenuEntry BufferResample(form, "BufferResample", "Resample...", &Edit);
MenuEntry BufferCrop(form, "BufferCrop", "Crop to selection", &Edit);
MenuEntry BufferValue(form, "BufferValue", "Greyscale", &Edit);
MenuEntry GrayscaleAverage(form, "GrayscaleAverage", "Average", &BufferValue);
MenuEntry GrayscaleVideo(form, "GrayscaleVideo", "Video weighted", &BufferValue);
MenuEntry BufferInvert(form, "BufferInvert", "Invert", &Edit);
MenuEntry DynamicRangeCompensate(form, "DynamicRangeCompensate", "Dynamic range", &Edit);
MenuEntry Buffer_Fill(form, "Buffer_Fill", "Fill                                           q", &Edit);
MenuEntry Buffer_Paintstyle(form, "Buffer_Paintstyle", "Paint", &Edit);
MenuEntry Buffer_Paint(form, "Buffer_Paint", "Paint fill                                  w", &Buffer_Paintstyle);
MenuEntry Buffer_Adjustablepaint(form, "Buffer_Adjustablepaint", "Adjustable paint                     e",
                                 &Buffer_Paintstyle);
MenuEntry ImageInfo(form, "ImageInfo", "Buffer info...", &Edit);
// Brush
MenuEntry Cust(form, "Cust", "Brush", nullptr);
MenuEntry Cust_Copy(form, "Cust_Copy", "Copy all / selected", &Cust);
MenuEntry Cust_Load(form, "Cust_Load", "Load...", &Cust);
MenuEntry Cust_Save(form, "Cust_Save", "Save...", &Cust);
MenuEntry BrushStore(form, "BrushStore", "Store...", &Cust);
MenuEntry Cust_Free(form, "Cust_Free", "Free", &Cust);
MenuEntry BrushPlugin(form, "BrushPlugin", "Brush plugin...", &Cust);
MenuEntry Cust_Mode(form, "Cust_Mode", "Mode", &Cust);
MenuEntry Cust_Mode_Color(form, "Cust_Mode_Color", "Color     F1", &Cust_Mode);
MenuEntry Cust_Mode_Matte(form, "Cust_Mode_Matte", "Matte    F2", &Cust_Mode);
MenuEntry Cust_flip(form, "Cust_flip", "Flip", &Cust);
MenuEntry Cust_flipx(form, "Cust_flipx", "Horizontal  x", &Cust_flip);
MenuEntry Cust_Flipy(form, "Cust_Flipy", "Vertical      y", &Cust_flip);
MenuEntry Cust_Rotation(form, "Cust_Rotation", "Rotate", &Cust);
MenuEntry Cust_Rotate(form, "Cust_Rotate", "90 degrees                 z", &Cust_Rotation);
MenuEntry Cust_RotateCC(form, "Cust_RotateCC", "-90 degrees", &Cust_Rotation);
MenuEntry Cust_RotateArbitrary(form, "Cust_RotateArbitrary", "Arbitrary...                Z", &Cust_Rotation);
MenuEntry Cust_Scale(form, "Cust_Scale", "Resample...", &Cust);
MenuEntry brush_Seamless(form, "brush_Seamless", "Make seamless...", &Cust);
// Filter
MenuEntry Filter(form, "Filter", "Fi&lter", nullptr);
MenuEntry FadePrevious(form, "FadePrevious", "Fade last action...", &Filter);
MenuEntry Adjust(form, "Adjust", "Adjust", &Filter);
MenuEntry ColorBalance2(form, "ColorBalance2", "Color...", &Adjust);
MenuEntry ColorBalance(form, "ColorBalance", "Value...", &Adjust);
MenuEntry Adj_Binary_Controst(form, "Adj_Binary_Controst", "Threshold...", &Adjust);
MenuEntry Adjust_Sat(form, "Adjust_Sat", "Saturation...", &Adjust);
MenuEntry Addjust_Hue(form, "Addjust_Hue", "Hue...", &Adjust);
MenuEntry Filter_Color(form, "Filter_Color", "Color", &Filter);
MenuEntry MapGradient(form, "MapGradient", "Map to current gradient", &Filter_Color);
MenuEntry ColorNegative(form, "ColorNegative", "Negative", &Filter_Color);
MenuEntry ColorInvertValue(form, "ColorInvertValue", "Invert value", &Filter_Color);
MenuEntry ColorSwapChannels(form, "ColorSwapChannels", "Swap channels", &Filter_Color);
MenuEntry ColorRollChannels(form, "ColorRollChannels", "Roll channels", &Filter_Color);
MenuEntry Color8(form, "Color8", "8 bit dither", &Filter_Color);
MenuEntry Dither_Opt(form, "Dither_Opt", "Optimized", &Color8);
MenuEntry SatXVal(form, "SatXVal", "Power curve...", &Filter_Color);
MenuEntry ColorPosterize(form, "ColorPosterize", "Posterize...", &Filter_Color);
MenuEntry Blur(form, "Blur", "Blur", &Filter);
MenuEntry Simpleblur(form, "Simpleblur", "Simple blur...", &Blur);
MenuEntry FastGaus(form, "FastGaus", "Gaussian blur...", &Blur);
MenuEntry Adjustableblur(form, "Adjustableblur", "Custom blur...", &Blur);
MenuEntry BlurLightDifuse(form, "BlurLightDifuse", "Light diffusion...", &Blur);
MenuEntry blur_motion(form, "blur_motion", "Motion blur...", &Blur);
MenuEntry Blur_Zoom(form, "Blur_Zoom", "Zoom blur...", &Blur);
MenuEntry Convolve(form, "Convolve", "Convolve", &Filter);
MenuEntry Convolve_Minimum(form, "Convolve_Minimum", "Minimum", &Convolve);
MenuEntry Convovle_Median(form, "Convovle_Median", "Median", &Convolve);
MenuEntry Convolve_Maximum(form, "Convolve_Maximum", "Maximum", &Convolve);
MenuEntry Convolve_MinMax(form, "Convolve_MinMax", "MinMax", &Convolve);
MenuEntry Convolve_MaxMin(form, "Convolve_MaxMin", "MaxMin", &Convolve);
MenuEntry Noise(form, "Noise", "Noise", &Filter);
MenuEntry AddValueNoise(form, "AddValueNoise", "Value noise...", &Noise);
MenuEntry AddNoise(form, "AddNoise", "Color noise...", &Noise);
MenuEntry menuTransform(form, "menuTransform", "Transform", &Filter);
MenuEntry TransformMeshwarp(form, "TransformMeshwarp", "Warp mesh...", &menuTransform);
MenuEntry Transform_Spherize(form, "Transform_Spherize", "Spherize...", &menuTransform);
MenuEntry Combine_Znoise(form, "Combine_Znoise", "Z noise...", &menuTransform);
MenuEntry Render(form, "Render", "Render", &Filter);
MenuEntry Plasma(form, "Plasma", "Plasma noise...", &Render);
MenuEntry BumpyToy(form, "BumpyToy", "Bumpy toy...", &Render);
MenuEntry Render_Sky(form, "Render_Sky", "Sky...", &Render);
MenuEntry plugin(form, "plugin", "Filter plugin...", &Filter);
// Combine with swap
MenuEntry Combine(form, "Combine", "Combine with swap", nullptr);
MenuEntry CombineMix(form, "CombineMix", "Mix buffers...", &Combine);
MenuEntry CobineOverlay(form, "CobineOverlay", "Alpha blit", &Combine);
MenuEntry Premult(form, "Premult", "Premultiplied alpha blit", &Combine);
MenuEntry CombineAdd(form, "CombineAdd", "Additive", &Combine);
MenuEntry CombineSub(form, "CombineSub", "Subratitive", &Combine);
MenuEntry CombineMult(form, "CombineMult", "Multiply", &Combine);
MenuEntry CombineDiv(form, "CombineDiv", "Divide", &Combine);
MenuEntry CombineScreen(form, "CombineScreen", "Screen", &Combine);
MenuEntry CombineLuminance(form, "CombineLuminance", "Luminance", &Combine);
MenuEntry CombineDifference(form, "CombineDifference", "Complement", &Combine);
MenuEntry CombineAroundGrey(form, "CombineAroundGrey", "Around grey", &Combine);
MenuEntry Combinelighter(form, "Combinelighter", "If lighter", &Combine);
MenuEntry CombineDarker(form, "CombineDarker", "If darker", &Combine);
MenuEntry CombineTexture(form, "CombineTexture", "Texturize", &Combine);
MenuEntry Combine_binary(form, "Combine_binary", "Binary", &Combine);
MenuEntry comp(form, "comp", "Composite with swap", &Combine);
MenuEntry Comp_green(form, "Comp_green", "Green screen...", &comp);
MenuEntry comp_blue(form, "comp_blue", "Blue screen...", &comp);
MenuEntry CombineEmboss(form, "CombineEmboss", "Emboss by swap", &Combine);
MenuEntry CombineEmbTL(form, "CombineEmbTL", "Top Left", &CombineEmboss);
MenuEntry CombineEmbT(form, "CombineEmbT", "Top", &CombineEmboss);
MenuEntry CombineEmbTR(form, "CombineEmbTR", "Top right", &CombineEmboss);
MenuEntry CombineEmbR(form, "CombineEmbR", "Right", &CombineEmboss);
MenuEntry CombineEmbBR(form, "CombineEmbBR", "Bottom right", &CombineEmboss);
MenuEntry CombineEmbB(form, "CombineEmbB", "Bottom", &CombineEmboss);
MenuEntry CombineEmbBL(form, "CombineEmbBL", "Bottom left", &CombineEmboss);
MenuEntry CombineEmbL(form, "CombineEmbL", "Left", &CombineEmboss);
// Alpha
MenuEntry Alpha(form, "Alpha", "&Alpha", nullptr);
MenuEntry SelectAll(form, "SelectAll", "Select all", &Alpha);
MenuEntry ClearAlpha(form, "ClearAlpha", "Clear alpha", &Alpha);
MenuEntry AlphaEnable(form, "AlphaEnable", "Alpha on/off     \\", &Alpha);
MenuEntry InvertAlpha(form, "InvertAlpha", "Invert alpha     |", &Alpha);
MenuEntry Alpha_Store(form, "Alpha_Store", "Store alpha...", &Alpha);
MenuEntry Alpha_Blur(form, "Alpha_Blur", "Blur alpha...", &Alpha);
MenuEntry Alpha_Grow(form, "Alpha_Grow", "Grow alpha...", &Alpha);
MenuEntry Alpha_Shrink(form, "Alpha_Shrink", "Shrink alpha...", &Alpha);
// Animation
MenuEntry Ani_(form, "Ani_", "A&nimation", nullptr);
MenuEntry Ani_Create(form, "Ani_Create", "Create...", &Ani_);
MenuEntry Ani_open(form, "Ani_open", "Open...", &Ani_);
MenuEntry Ani_Save(form, "Ani_Save", "Save...", &Ani_);
MenuEntry Ani_sequence_Load(form, "Ani_sequence_Load", "Load sequence...", &Ani_);
MenuEntry Ani_sequence(form, "Ani_sequence", "Save sequence...", &Ani_);
MenuEntry Ani_ApplyFrames(form, "Ani_ApplyFrames", "Apply to frames...", &Ani_);
MenuEntry Ani_Free(form, "Ani_Free", "Free", &Ani_);
MenuEntry Ani_Interface(form, "Ani_Interface", "Show interface...", &Ani_);
// Window
MenuEntry Window(form, "Window", "&Window", nullptr);
MenuEntry Palettes(form, "Palettes", "Panels", &Window);
MenuEntry toolbar(form, "toolbar", "Toolbar...", &Palettes);
MenuEntry Magnify(form, "Magnify", "Zoom...", &Palettes);
MenuEntry Magnifier(form, "Magnifier", "Fat bits...", &Palettes);
MenuEntry win_Gradient(form, "win_Gradient", "Fill/gradient...      p", &Palettes);
MenuEntry Win_Spraxel(form, "Win_Spraxel", "Spraxelics...       i", &Palettes);
MenuEntry Win_Pugins(form, "Win_Pugins", "Plugins...              l", &Palettes);
MenuEntry Window_Info(form, "Window_Info", "Info display", &Window);
MenuEntry WPickColor(form, "WPickColor", "Color picker...", &Window);
MenuEntry Refresh(form, "Refresh", "Refresh", &Window);
MenuEntry UnlockInput(form, "UnlockInput", "Unlock", &Window);
// Prefs
MenuEntry Prefs(form, "Prefs", "&Prefs", nullptr);
MenuEntry RefreshMethod(form, "RefreshMethod", "Refresh method", &Prefs);
MenuEntry rDefault(form, "rDefault", "Pixel", &RefreshMethod);
MenuEntry rBitmap(form, "rBitmap", "Bitmap", &RefreshMethod);
MenuEntry prefs_Disp_15bit(form, "prefs_Disp_15bit", "Force 15 bit", &Prefs);
MenuEntry Refresh_Optimised(form, "Refresh_Optimised", "Optimised", &Prefs);
MenuEntry Backdrop(form, "Backdrop", "Backdrop", &Prefs);
MenuEntry MDIBackground(form, "MDIBackground", "MDI background color...", &Backdrop);
MenuEntry MDIbackgroundBitmap(form, "MDIbackgroundBitmap", "MDI background bitmap...", &Backdrop);
MenuEntry Prefs_Save(form, "Prefs_Save", "Save settings", &Prefs);
MenuEntry Memorystuff(form, "Memorystuff", "Memory options...", &Prefs);
MenuEntry Prefs_ShowWells(form, "Prefs_ShowWells", "Show wells", &Prefs);
MenuEntry SaveWells(form, "SaveWells", "Save wells...", &Prefs_ShowWells);
MenuEntry Loadwells(form, "Loadwells", "Load wells...", &Prefs_ShowWells);
// Help
MenuEntry Help(form, "Help", "&Help", nullptr);
MenuEntry about(form, "about", "About Project Kelpwick...", &Help);
MenuEntry Help_Kelhelp(form, "Help_Kelhelp", "Project Kelpwick help...", &Help);
MenuEntry Shortcuts(form, "Shortcuts", "Keyboad shortcut help...", &Help);

// The transport bar, hidden until an animation is made or loaded.
PictureBox Anim_Tools(form, "Anim_Tools", 0, 0);
Slider AnimScroll(form, "AnimScroll", 0, 1, 0);
Label Anim_Label(form, "Anim_Label", "0");
TextBox Anim_Framerate(form, "Anim_Framerate", "30");
CommandButton Anim_Play(form, "Anim_Play", "Play");
CommandButton Anim_Stop(form, "Anim_Stop", "Stop");
CommandButton Anim_Previous(form, "Anim_Previous", "<");
CommandButton Anim_Next(form, "Anim_Next", ">");
CommandButton Anim_Insert(form, "Anim_Insert", "Insert");
CommandButton Anim_Delete(form, "Anim_Delete", "Delete");
Timer Anim_Timer(form, "Anim_Timer", 0);

namespace {
struct Wiring {
    Wiring() {
        rDefault.Checked.setQuietly(true);
        Refresh_Optimised.Checked.setQuietly(true);
        Window_Info.Checked.setQuietly(true);
        for (MenuEntry* e : {&rDefault, &rBitmap, &prefs_Disp_15bit, &Refresh_Optimised, &Window_Info, &AlphaEnable,
                              &Ani_Interface, &Cust_Mode_Color, &Cust_Mode_Matte})
            e->Checkable = true;
        Anim_Tools.Visible.setQuietly(false);
        // The brush modes have nothing to show until a brush exists.
        Cust_Mode_Color.Checked.setQuietly(true);
        Cust_Mode_Color.Enabled.setQuietly(false);
        Cust_Mode_Matte.Enabled.setQuietly(false);
        BackColor.setQuietly(0x808080);
    }
} wiring;
}  // namespace

void Toggle(MenuEntry& e) { e.Checked = !e.Checked; }

void DisplayChoicesChanged() {
    Choices.mixTable = Menus::ActiveMixTable();
    Choices.force15 = prefs_Disp_15bit.Checked;
}

std::string ComposeTitle() {
    std::string t = "Project Kelpwick  ";
    t += App.SwapShown ? "(Swap)  " : "(Main)  ";
    if (MDIForm1::AlphaEnable.Checked) t += "(Alpha)  ";
    if (Menus::MixSwapNone.Checked) t += "(Layer mixing) ";
    if (Form2::Check1.Value != 0 || Form2::Check2.Value != 0) t += "(Paper)  ";
    return t;
}

void TitleAfterRedisplay() {
    if (App.NoTitle == 0) form.Caption = ComposeTitle();
}

void RefreshMethod_Pick(MenuEntry& chosen) {
    rDefault.Checked = &chosen == &rDefault;
    rBitmap.Checked = &chosen == &rBitmap;
}

void MDIBackground_Click() {
    if (auto c = host().ChooseColor(BackColor)) BackColor = *c;
}

void MDIbackgroundBitmap_Click() {
    FileDialogRequest dialog;
    dialog.Title = "MDI background bitmap";
    dialog.Filter = "Pictures (*.bmp;*.png;*.jpg)|*.bmp;*.png;*.jpg|All files (*.*)|*.*";
    dialog.InitDir = App.StartDirectory;
    if (auto path = host().OpenFileDialog(dialog)) {
        BackBitmap = *path;
        form.propertyChanged(&BackColor);  // the view repaints with the new picture
    }
}

bool MDIForm_QueryUnload() { return Kelpwick_QuestionBox("Do you want to quit") == 1; }

void MDIForm_Unload() {
    auto& forms = AllForms();
    for (auto it = forms.rbegin(); it != forms.rend(); ++it) {
        if ((*it)->Name == form.Name) continue;
        try {
            if ((*it)->Loaded || (*it)->Visible) Unload(**it);
        } catch (...) {
            // errors ignored: every window gets its chance to close
        }
    }
}

void Quit_Click() {
    // Only the frame's own close asks the question.
    MDIForm_Unload();
    Unload(form);
}
}  // namespace MDIForm1

namespace Menus {
Form form("Menus", "Menus");
MenuEntry Layers(form, "Layers", "Layers", nullptr);
MenuEntry MixSwapNone(form, "MixSwapNone", "Mixing active", &Layers);
MenuEntry Mix_SwapBuffers(form, "Mix_SwapBuffers", "Swap buffers", &Layers);
MenuEntry MixSwap_Add(form, "MixSwap_Add", "Additive", &Layers);
MenuEntry MixSwapSub(form, "MixSwapSub", "Subtractative", &Layers);
MenuEntry MixSwapMult(form, "MixSwapMult", "Multiply", &Layers);
MenuEntry MixSwapDiv(form, "MixSwapDiv", "Divide", &Layers);
MenuEntry MixSwapScreen(form, "MixSwapScreen", "Screen", &Layers);
MenuEntry MixaroundGrey(form, "MixaroundGrey", "Around grey", &Layers);

// The size of the colour baster, opened on the baster tool.
MenuEntry TBaster(form, "TBaster", "TBaster", nullptr);
MenuEntry Baster1(form, "Baster1", "1 pixel", &TBaster);
MenuEntry baster5(form, "baster5", "9 pixel", &TBaster);
MenuEntry baster9(form, "baster9", "25 pixel", &TBaster);

// The linear tool's variants, the text tool's settings, clearing the selection.
MenuEntry Linetool(form, "Linetool", "Linetool", nullptr);
MenuEntry linetool_Line(form, "linetool_Line", "Line tool", &Linetool);
MenuEntry Linetool_Gradient(form, "Linetool_Gradient", "Linear gradient tool", &Linetool);
MenuEntry Circular_Gradient(form, "Circular_Gradient", "Circular gradient tool", &Linetool);
MenuEntry LinearWarp(form, "LinearWarp", "Warp", &Linetool);
MenuEntry LinearAlhpaFader(form, "LinearAlhpaFader", "Linear alpha fader", &Linetool);
MenuEntry Texttool(form, "Texttool", "Texttool", nullptr);
MenuEntry Text_FontSettings(form, "Text_FontSettings", "Font settings...", &Texttool);
MenuEntry Text_FillSettings(form, "Text_FillSettings", "Fill settings...", &Texttool);
MenuEntry Text_NudgeTool(form, "Text_NudgeTool", "Nudge tool...", &Texttool);
MenuEntry Clear_menu(form, "Clear_menu", "Clear_menu", nullptr);
MenuEntry ClearAlphaPrimary(form, "ClearAlphaPrimary", "Clear selected to primary", &Clear_menu);
MenuEntry ClearAlphaSeconary(form, "ClearAlphaSeconary", "Clear selected to secondary", &Clear_menu);
MenuEntry Anim_ClearFrames(form, "Anim_ClearFrames", "Clear all frames", &Clear_menu);
// The flood fill's and the magic wand's settings.
MenuEntry Flood(form, "Flood", "Flood", nullptr);
MenuEntry Flood_Settings(form, "Flood_Settings", "Flood settings...", &Flood);
MenuEntry Flood_FillSettings(form, "Flood_FillSettings", "Fill settings...", &Flood);

namespace {
struct Wiring {
    Wiring() {
        MixSwap_Add.Checked.setQuietly(true);
        Baster1.Checked.setQuietly(true);
        linetool_Line.Checked.setQuietly(true);
        for (MenuEntry* e : {&linetool_Line, &Linetool_Gradient, &Circular_Gradient, &LinearWarp, &LinearAlhpaFader})
            e->Checkable = true;
        for (MenuEntry* e : {&MixSwapNone, &MixSwap_Add, &MixSwapSub, &MixSwapMult, &MixSwapDiv, &MixSwapScreen,
                              &MixaroundGrey, &Baster1, &baster5, &baster9})
            e->Checkable = true;
        // The display follows the layer mixing and 15-bit choices whoever changes them.
        for (MenuEntry* e : {&MixSwapNone, &MixSwap_Add, &MixSwapSub, &MixSwapMult, &MixSwapDiv, &MixSwapScreen,
                              &MixaroundGrey})
            e->CheckedChange = MDIForm1::DisplayChoicesChanged;
        MDIForm1::prefs_Disp_15bit.CheckedChange = MDIForm1::DisplayChoicesChanged;
    }
} wiring;
}  // namespace

const uint8_t* ActiveMixTable() {
    if (!MixSwapNone.Checked) return nullptr;
    // The tests run one after another: with two checked, the later one wins.
    const uint8_t* t = nullptr;
    if (MixSwap_Add.Checked) t = MixAdd;
    if (MixSwapSub.Checked) t = MixSub;
    if (MixSwapMult.Checked) t = MixMult;
    if (MixSwapDiv.Checked) t = MixDiv;
    if (MixSwapScreen.Checked) t = MixScreen;
    if (MixaroundGrey.Checked) t = MixAroundGrey;
    return t;
}

void MixSwapNone_Click() {
    MixSwapNone.Checked = !MixSwapNone.Checked;
    RedisplayWindow();
}

void BasterPick(MenuEntry& chosen) {
    for (MenuEntry* e : {&Baster1, &baster5, &baster9}) e->Checked = e == &chosen;
}

void MixPick(MenuEntry& chosen) {
    for (MenuEntry* e : {&MixSwap_Add, &MixSwapSub, &MixSwapMult, &MixSwapDiv, &MixSwapScreen, &MixaroundGrey})
        e->Checked = e == &chosen;
    RedisplayWindow();
}
}  // namespace Menus

std::vector<MenuEntry*> MenuRoots(Form& f) {
    std::vector<MenuEntry*> roots;
    for (Control* c : f.controls)
        if (c->Kind == ControlKind::MenuEntry && static_cast<MenuEntry*>(c)->Parent == nullptr)
            roots.push_back(static_cast<MenuEntry*>(c));
    return roots;
}
