// The plug-in host's rows: the menu entries that open the panel on a tab, the
// fixed commands that start a companion program (with or without an undo
// step first) and the mixer button of the tool panel.
#include "plugin/PluginRows.h"

#include "core/document/Buffers.h"
#include "core/framework/Boxes.h"
#include "core/frame/Form2.h"
#include "core/frame/MDIForm1.h"
#include "plugin/PluginOptions.h"

namespace MDIForm1 {
void Plugin_Click() { ShowPluginPanel(0); }
void Win_Pugins_Click() { ShowPluginPanel(0); }
void import_Click() { ShowPluginPanel(1); }
void Export_Click() { ShowPluginPanel(2); }
void BrushPlugin_Click() { ShowPluginPanel(3); }

void BrushStore_Click() {
    if (BrushWidth == 0) return Kelpwick_MsgBox("No custom brush");
    StartCompanion("Store_Brush_pb", false);
}
}  // namespace MDIForm1

Rows PluginRows() {
    using namespace MDIForm1;
    // The companion programs, by the name they have without ".exe", and whether
    // an undo step comes first.
    struct Companion {
        MenuEntry* entry;
        const char* program;
        bool undo;
    };
    const Companion companions[] = {
        {&Alpha_Grow, "Alpha_Grow_pm", true},         {&Alpha_Shrink, "Alpha_Shrink_pm", true},
        {&Alpha_Store, "Store_Alpha_pm", false},      {&blur_motion, "MotionBlur_pf", true},
        {&Blur_Zoom, "Zoom_pf", true},                {&Convolve_Maximum, "Maximize_pf", true},
        {&Convolve_MaxMin, "Maxmin_pf", true},        {&Convolve_Minimum, "Minimize_pf", true},
        {&Convolve_MinMax, "Minmax_pf", true},        {&Convovle_Median, "Median_pf", true},
        {&Dither_Opt, "OptimizedPalette_pf", true},   {&Storebuf, "Store_Buffer_pm", false},
        {&Transform_Spherize, "Spherize_pf", true},
    };
    Rows rows;
    rows.menus = {{&plugin, Plugin_Click},           {&Win_Pugins, Win_Pugins_Click},
                  {&import_, import_Click},          {&Export, Export_Click},
                  {&BrushPlugin, BrushPlugin_Click}, {&BrushStore, BrushStore_Click}};
    for (const Companion& c : companions)
        rows.menus.push_back({c.entry, [c] { StartCompanion(c.program, c.undo); }});
    Form2::kw_button1.ToolTipText = "The paint mixer...";
    rows.controls.push_back(OnEvent(Form2::kw_button1, ControlEvent::Click,
                                    [] { StartCompanion("ColorMixer_pm", false); }));
    return rows;
}
