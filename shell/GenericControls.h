// The generic widget of each kind of control, one small factory per kind. Each
// factory builds the widget and hooks it to its model; the panel view adds what
// every control shares (tool tip, colours, the first sync).
#pragma once

class Control;
class PanelView;
class QWidget;

struct BuiltControl {
    QWidget* widget = nullptr;    // nullptr: the control has no widget of its own
    QWidget* coloured = nullptr;  // the part that takes BackColor and ForeColor, if not the whole widget
};

BuiltControl BuildGenericControl(Control& c, PanelView& panel);
