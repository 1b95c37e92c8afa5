// The tool buttons of the tool panel as one row of push buttons, one for each
// installed tool row: the one down is the tool; a right click opens the tool's
// settings.
#include <QGridLayout>
#include <QSizePolicy>
#include <QMouseEvent>
#include <QPointer>
#include <QToolButton>

#include "core/framework/Commands.h"
#include "core/framework/Guard.h"
#include "shell/ControlWidgets.h"
#include "shell/Convert.h"
#include "shell/PanelView.h"

namespace {
class ToolButton : public QToolButton {
public:
    ToolButton(const ToolRow& tool, QWidget* parent) : QToolButton(parent), m_(*tool.button), settings_(tool.settings) {
        setObjectName(Q(m_.Name));
        setCheckable(true);
        setAutoRaise(false);
        setToolTip(Q(m_.ToolTipText));
        connect(this, &QToolButton::clicked, this, [this] {
            Guarded([this] { m_.Value = true; });
            setChecked(m_.Value);
        });
        QPointer<ToolButton> self(this);
        m_.viewHook = [self] {
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
        if (e->button() == Qt::RightButton && settings_) {
            Guarded([this] { settings_(); });
            return;
        }
        QToolButton::mouseReleaseEvent(e);
    }

private:
    OptionButton& m_;
    void (*settings_)();
};

// The tool that is down looks pressed in, in the panels' button colours (dark
// body, light text); the others stand out light. The style's own checked look is
// too faint on the panel's background to tell the tool at a glance.
const char* const ToolRowStyle =
    "QToolButton { padding: 3px 4px; border: 1px solid #6e6660; border-radius: 2px;"
    " background: #ece8e4; color: #000000; }"
    "QToolButton:checked { background: #555566; color: #ffee88; border: 2px inset #222233; }"
    "QToolButton:hover:!checked { background: #ffffff; }";

QWidget* MakeToolRow(PanelView& panel) {
    auto* row = new QWidget(&panel);
    row->setStyleSheet(ToolRowStyle);
    // A grid of a few columns keeps the panel narrow however many tools there are.
    constexpr int Columns = 4;
    auto* grid = new QGridLayout(row);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(2);
    int i = 0;
    for (const ToolRow& tool : Commands().rows().tools) {
        auto* b = new ToolButton(tool, row);
        b->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        grid->addWidget(b, i / Columns, i % Columns);
        ++i;
    }
    return row;
}
}  // namespace

// The row stands where the tool group's first button is declared; the group's
// other buttons are inside it, or hidden when their tool has no row.
void RegisterToolButtonsView() {
    const auto& tools = Commands().rows().tools;
    if (tools.empty()) return;
    const OptionButton& first = *tools.front().button;
    bool placed = false;
    for (Control* c : first.form.controls) {
        if (c->Kind != ControlKind::OptionButton || static_cast<OptionButton*>(c)->OptionGroup != first.OptionGroup)
            continue;
        if (placed) {
            RegisterDrawnElsewhere(*c);
        } else {
            RegisterControlWidget(*c, [](Control&, PanelView& panel) { return MakeToolRow(panel); });
            placed = true;
        }
    }
}
