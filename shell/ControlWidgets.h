// Hand-written widgets that stand in for controls inside the generic panel view,
// registered by the control model itself, so that a renamed control still finds
// its widget. A factory may return nullptr: the control is then drawn by another
// widget (the wells grid draws all 64 wells).
#pragma once

#include <QWidget>
#include <cstdint>
#include <functional>
#include <optional>

class Control;
class ListBox;
class PanelView;
class QMimeData;

using ControlWidgetFactory = std::function<QWidget*(Control&, PanelView&)>;
void RegisterControlWidget(const Control& control, ControlWidgetFactory make);
const ControlWidgetFactory* FindControlWidget(const Control& control);
// Registers a factory that draws nothing, for a control another widget shows.
void RegisterDrawnElsewhere(const Control& control);

// Points the model's view hook at a widget: while the widget lives, each change
// of the model runs `sync`; once it is gone the hook does nothing.
void FollowModel(Control& c, QWidget* w, std::function<void()> sync);
// The same, and the widget first takes the model's Visible and Enabled.
void HookControl(Control& c, QWidget* w, std::function<void()> sync);

// Registers every hand-written widget of the program; main() calls it once.
void RegisterControlWidgets();
void RegisterWellsView();
void RegisterGradientView();
void RegisterPickerView();
void RegisterToolButtonsView();
void RegisterBrushPaletteView();

// A list model shown as a row of tabs: the selected tab is ListIndex.
QWidget* MakeTabBar(ListBox& model, QWidget* parent);

// A colour carried by drag and drop between wells and the gradient entries.
QMimeData* ColourMimeData(uint32_t colour);
std::optional<uint32_t> ColourFromMimeData(const QMimeData* data);
