// The tool buttons of the tool panel as one row of push buttons: the one down
// is the tool; a right click reaches the button's settings.
#include <QHBoxLayout>
#include <QMouseEvent>
#include <QPointer>
#include <QToolButton>

#include "core/frame/Form2.h"
#include "core/framework/Guard.h"
#include "shell/ControlWidgets.h"
#include "shell/Convert.h"
#include "shell/PanelView.h"

namespace {
OptionButton* const Tools[] = {&Form2::Option1, &Form2::Option2, &Form2::Option3, &Form2::Option4,
                               &Form2::Option6, &Form2::Option13, &Form2::Option14, &Form2::Option15,
                               &Form2::Option16, &Form2::Option17, &Form2::Option18, &Form2::Option19,
                               &Form2::Option20};

class ToolButton : public QToolButton {
public:
    ToolButton(OptionButton& m, QWidget* parent) : QToolButton(parent), m_(m) {
        setObjectName(Q(m.Name));
        setCheckable(true);
        setAutoRaise(false);
        setToolTip(Q(m.ToolTipText));
        connect(this, &QToolButton::clicked, this, [this] {
            Guarded([this] { m_.Value = true; });
            setChecked(m_.Value);
        });
        QPointer<ToolButton> self(this);
        m.viewHook = [self] {
            if (self) self->sync();
        };
        sync();
    }
    void sync() {
        setText(Q(m_.Caption));
        setChecked(m_.Value);
        setVisible(m_.Visible);
    }

protected:
    void mouseReleaseEvent(QMouseEvent* e) override {
        if (e->button() == Qt::RightButton && m_.MouseUp) {
            float x = static_cast<float>(e->position().x()), y = static_cast<float>(e->position().y());
            Guarded([&] { m_.MouseUp(2, 0, x, y); });
            return;
        }
        QToolButton::mouseReleaseEvent(e);
    }

private:
    OptionButton& m_;
};

QWidget* MakeToolRow(PanelView& panel) {
    auto* row = new QWidget(&panel);
    auto* h = new QHBoxLayout(row);
    h->setContentsMargins(0, 0, 0, 0);
    h->setSpacing(2);
    for (OptionButton* tool : Tools) h->addWidget(new ToolButton(*tool, row));
    h->addStretch(1);
    return row;
}
}  // namespace

void RegisterToolButtonsView() {
    RegisterControlWidget(Form2::Option1, [](Control&, PanelView& panel) { return MakeToolRow(panel); });
    for (OptionButton* tool : Tools)
        if (tool != &Form2::Option1)
            RegisterDrawnElsewhere(*tool);
}
