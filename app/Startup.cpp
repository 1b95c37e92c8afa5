// The start-up sequence, run by the creation of the tool panel. Later steps rely
// on earlier ones, so the order below is the order of the program.
#include "app/Startup.h"
#include "app/KeyTable.h"

#include "anim/AnimRows.h"
#include "core/document/AnimationGuard.h"
#include "anim/FrameStore.h"
#include "anim/Transport.h"

#include "brush/Brush.h"
#include "brush/BrushRows.h"
#include "canvas/CanvasRows.h"
#include "colour/Colour.h"
#include "colour/ColourRows.h"
#include "colour/Wells.h"
#include "core/framework/AppState.h"
#include "core/framework/Boxes.h"
#include "core/document/Buffers.h"
#include "core/document/CanvasSize.h"
#include "core/document/Undo.h"
#include "core/display/Display.h"
#include "core/display/Form1.h"
#include "core/frame/KeyboardHelp.h"
#include "core/frame/Form2.h"
#include "core/frame/FrameRows.h"
#include "core/framework/Commands.h"
#include "core/framework/Host.h"
#include "core/frame/MDIForm1.h"
#include "core/frame/Nav.h"
#include "core/framework/MixTables.h"
#include "core/frame/StartupSettings.h"
#include "core/framework/Settings.h"
#include "core/frame/AlphaMenu.h"
#include "file/FileRows.h"
#include "filter/FilterRows.h"
#include "fill/FillRows.h"
#include "fill/PaintFill.h"
#include "core/framework/PanelLook.h"
#include "file/FileMenu.h"
#include "filter/FadeLast.h"
#include "plugin/AutomationService.h"
#include "plugin/PluginRows.h"
#include "render/RenderRows.h"

namespace Form2 {
void Form_Initialize() {
    // State defaults and the start directory.
    App.SwapShown = 0;
    App.AlphaOff = 255;
    // The brush palette and the first brush.
    StartupBrushes();
    // Gradient and fill defaults.
    App.GradientIndex = 0;
    App.FillStyle = kwmode::FillStyle::Colour;
    // Progress over the frame.
    ShowStatus("Initializing...");
    Bar(5);
    // The gradient store with its built-in ramps.
    StartupGradients();
    Bar(10);
    // The six mixing tables.
    App.BrushInterpolate = 1;
    BuildMixTables([](int percent) { Bar(percent); });
    // The paper, and the state of its check boxes.
    StartupPaper();
    // Settings, in the order of the store.
    ReadStartupSettings();
    Bar(90);
    // The stroke picture of the paint fills.
    StartupStrokeTexture();
    // The last stages of the bar; the window is kept for later work.
    Bar(100);
    HideStatus();
    Status::Frame1.Caption = "Processing...";
    Status::form.Caption = "Processing...";
    // The size of the first buffer, before any plane exists.
    Show(CanvasSize::form, true);
    // The first document.
    App.ZoomPercent = 100;
    CreateNewDocument(false);
    DemensionRefreshBuff();
    RedisplayWindow();
    // The default wells and gradients; missing files are silent.
    StartupDefaultFiles();
    // Panel colours; the paper check boxes keep a light face.
    PrefsCallBack(form);
    for (CheckBox* c : {&Check1, &Check2, &Check3}) c->BackColor = 14737632;
}
}  // namespace Form2

namespace Kelpwick {
namespace {
// The hooks by which lower pieces tell higher ones what happened.
void ConnectHooks() {
    DocumentClosing.listen(Form1::Document_Closing);
    DocumentCreated.listen(Form1::Document_Created);
    AlphaSwitched.listen(ShowAlphaState);
    PictureRestored.listen(ShowRestoredPicture);
    DisplayRedrawn.listen(Form2::AfterRedisplay);
    DisplayRedrawn.listen(MDIForm1::TitleAfterRedisplay);
    DocumentClosing.listen(FramesGoWithDocument);
    AnimationExists = [] { return AnimFrameCount > 0; };
    FreeAnimationFrames = MDIForm1::ResetAnimation;
    FreeAnimationForLoad = AskFreeAnimation;
    ZoomFollowed.listen(Nav::FollowZoom);
}

// Every folder's menu entries, keys, tools and borrowed controls, in one table.
Rows AllRows() {
    Rows rows = FrameRows();
    rows += FileRows();
    rows += FilterRows();
    rows += ColourRows();
    rows += BrushRows();
    rows += CanvasRows();
    rows += FillRows();
    rows += AnimRows();
    rows += RenderRows();
    rows += PluginRows();
    rows += KeyRows();
    return rows;
}

}  // namespace

void Compose() {
    static bool composed = false;
    if (composed) return;
    composed = true;
    ConnectHooks();
    const Rows rows = AllRows();
    Commands().install(rows);
    KeyboardHelp::KeyReferenceText = KeyReference();
    SetDefaultWells();  // the wells have colours before any well file is read
}

void Main(const std::string& programDir) {
    App.StartDirectory = programDir;
    Compose();
    Show(MDIForm1::form);
    Form2::Form_Initialize();
    Show(Form2::form, false, &MDIForm1::form);
    // Plug-ins can reach the program once its document exists.
    Automation::StartAutomation();
}
}  // namespace Kelpwick
