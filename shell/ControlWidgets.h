// Hand-written widgets that stand in for controls inside the generic panel view,
// registered by form and control name. A factory may return nullptr: the control
// is then drawn by another widget (the wells grid draws all 64 wells).
#pragma once

#include <QWidget>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

class Control;
class ListBox;
class PanelView;
class QMimeData;

using ControlWidgetFactory = std::function<QWidget*(Control&, PanelView&)>;
void RegisterControlWidget(const std::string& form, const std::string& control, ControlWidgetFactory make);
const ControlWidgetFactory* FindControlWidget(const std::string& form, const std::string& control);

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
