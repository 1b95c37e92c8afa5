// The colour section of the tool panel: the tabs "rgb", "rgb2", "sv", "wheel"
// over a stack holding the three sliders or one of the picker pictures.
#include <QPointer>
#include <QStackedWidget>
#include <QVBoxLayout>

#include "core/frame/Form2.h"
#include "shell/ControlWidgets.h"
#include "shell/PanelView.h"

namespace {
QWidget* MakeColourSection(PanelView& panel) {
    auto* box = new QWidget(&panel);
    auto* column = new QVBoxLayout(box);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(2);
    column->addWidget(MakeTabBar(Form2::TabBox, box));
    auto* stack = new QStackedWidget(box);
    auto* sliders = new QWidget(stack);
    auto* rows = new QVBoxLayout(sliders);
    rows->setContentsMargins(0, 0, 0, 0);
    for (Slider* s : {&Form2::HScroll1, &Form2::hscroll2, &Form2::hscroll3}) rows->addWidget(panel.buildControl(*s, false));
    rows->addStretch(1);
    stack->addWidget(sliders);
    for (PictureBox* p : {&Form2::Picture54, &Form2::Picture56, &Form2::Picture43}) {
        auto* page = new QWidget(stack);
        auto* l = new QVBoxLayout(page);
        l->setContentsMargins(0, 0, 0, 0);
        l->addWidget(panel.buildControl(*p, false), 0, Qt::AlignHCenter);
        stack->addWidget(page);
    }
    column->addWidget(stack);
    // The tab row's hook shows the tab; the stack follows the same index.
    QPointer<QStackedWidget> guard(stack);
    auto tabHook = Form2::TabBox.viewHook;
    Form2::TabBox.viewHook = [guard, tabHook] {
        if (tabHook) tabHook();
        if (guard) guard->setCurrentIndex(std::clamp<int>(Form2::TabBox.ListIndex, 0, 3));
    };
    Form2::TabBox.viewHook();
    return box;
}
}  // namespace

void RegisterPickerView() {
    RegisterControlWidget(Form2::HScroll1, [](Control&, PanelView& panel) { return MakeColourSection(panel); });
    const Control* drawnAbove[] = {&Form2::hscroll2,  &Form2::hscroll3,  &Form2::TabBox,
                                   &Form2::Picture54, &Form2::Picture56, &Form2::Picture43};
    for (const Control* c : drawnAbove) RegisterDrawnElsewhere(*c);
}
