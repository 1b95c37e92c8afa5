// The registry of hand-written control widgets, the tab row, and the colour
// carried by drag and drop.
#include "shell/ControlWidgets.h"

#include <QMimeData>
#include <QPointer>
#include <QSignalBlocker>
#include <QTabBar>
#include <map>

#include "core/framework/Guard.h"
#include "core/framework/controls.h"
#include "shell/Convert.h"

namespace {
std::map<const Control*, ControlWidgetFactory>& Registry() {
    static std::map<const Control*, ControlWidgetFactory> r;
    return r;
}
constexpr const char* ColourMime = "application/x-kelpwick-colour";
}  // namespace

void RegisterControlWidget(const Control& control, ControlWidgetFactory make) {
    Registry()[&control] = std::move(make);
}

const ControlWidgetFactory* FindControlWidget(const Control& control) {
    auto it = Registry().find(&control);
    return it == Registry().end() ? nullptr : &it->second;
}

void RegisterDrawnElsewhere(const Control& control) {
    RegisterControlWidget(control, [](Control&, PanelView&) -> QWidget* { return nullptr; });
}

void FollowModel(Control& c, QWidget* w, std::function<void()> sync) {
    QPointer<QWidget> guard(w);
    c.viewHook = [guard, sync = std::move(sync)] {
        if (guard) sync();
    };
}

void HookControl(Control& c, QWidget* w, std::function<void()> sync) {
    FollowModel(c, w, [w, &c, sync = std::move(sync)] {
        w->setVisible(c.Visible);
        w->setEnabled(c.Enabled);
        sync();
    });
}

void RegisterControlWidgets() {
    RegisterWellsView();
    RegisterGradientView();
    RegisterPickerView();
    RegisterToolButtonsView();
    RegisterBrushPaletteView();
}

QWidget* MakeTabBar(ListBox& m, QWidget* parent) {
    auto* bar = new QTabBar(parent);
    bar->setExpanding(false);
    bar->setDrawBase(false);
    for (const auto& item : m.items) bar->addTab(Q(item));
    QObject::connect(bar, &QTabBar::currentChanged, bar, [&m](int i) { Guarded([&] { m.ListIndex = i; }); });
    HookControl(m, bar, [bar, &m] {
        QSignalBlocker block(bar);
        bar->setCurrentIndex(m.ListIndex);
    });
    m.viewHook();
    return bar;
}

QMimeData* ColourMimeData(uint32_t colour) {
    auto* data = new QMimeData;
    data->setData(ColourMime, QByteArray::number(colour & 0xFFFFFF));
    data->setColorData(QColorOf(colour));
    return data;
}

std::optional<uint32_t> ColourFromMimeData(const QMimeData* data) {
    if (!data) return std::nullopt;
    if (data->hasFormat(ColourMime)) {
        bool ok = false;
        uint32_t c = data->data(ColourMime).toUInt(&ok);
        if (ok) return c & 0xFFFFFF;
    }
    if (data->hasColor()) return BgrOf(data->colorData().value<QColor>());
    return std::nullopt;
}
