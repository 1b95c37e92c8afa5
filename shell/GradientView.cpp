// The hand-written parts of the "Fill" panel: the channel tabs, and the entry
// strip that takes colours dropped from the wells.
#include <QDragEnterEvent>
#include <QDropEvent>

#include "colour/Gradient.h"
#include "core/framework/Guard.h"
#include "shell/ControlWidgets.h"
#include "shell/PanelView.h"

namespace {
// Turns drops on the strip into entries at the step under the pointer.
class EntryDrops : public QObject {
public:
    using QObject::QObject;
    bool eventFilter(QObject* watched, QEvent* event) override {
        auto* w = static_cast<QWidget*>(watched);
        switch (event->type()) {
            case QEvent::DragEnter:
            case QEvent::DragMove: {
                auto* e = static_cast<QDragMoveEvent*>(event);
                if (ColourFromMimeData(e->mimeData())) e->acceptProposedAction();
                return true;
            }
            case QEvent::Drop: {
                auto* e = static_cast<QDropEvent*>(event);
                auto colour = ColourFromMimeData(e->mimeData());
                if (!colour) return true;
                float x = static_cast<float>(e->position().x() * Gradient::Picture3.Width / std::max(1, w->width()));
                Guarded([&] { Gradient::Picture3_DragDrop(x, *colour); });
                e->acceptProposedAction();
                return true;
            }
            default:
                return false;
        }
    }
};
}  // namespace

void RegisterGradientView() {
    RegisterControlWidget(Gradient::TabBox, [](Control& c, PanelView& panel) -> QWidget* {
        return MakeTabBar(static_cast<ListBox&>(c), &panel);
    });
    RegisterControlWidget(Gradient::Picture3, [](Control& c, PanelView& panel) -> QWidget* {
        QWidget* strip = panel.buildControl(c, false);
        strip->setAcceptDrops(true);
        strip->installEventFilter(new EntryDrops(strip));
        return strip;
    });
}
