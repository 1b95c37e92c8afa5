// The 64 colour wells as one grid of eight by eight. A press picks (left: primary,
// right: secondary); dragging out of a well carries its colour to another well
// or to the gradient entries.
#include <QDrag>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QMouseEvent>
#include <QPainter>

#include "colour/Wells.h"
#include "core/frame/Form2.h"
#include "core/framework/Guard.h"
#include "shell/ControlWidgets.h"
#include "shell/Convert.h"
#include "shell/PanelView.h"

namespace {
constexpr int Columns = 8, CellW = 24, CellH = 18;

class WellsView : public QWidget {
public:
    explicit WellsView(QWidget* parent) : QWidget(parent) {
        setFixedSize(Columns * CellW + 1, Form2::WellCount / Columns * CellH + 1);
        setAcceptDrops(true);
        setToolTip("Colour wells: left click picks the primary colour, right click the secondary; "
                   "drag a well onto another well or onto the gradient entries.");
        for (int i = 0; i < Form2::WellCount; ++i) FollowModel(Form2::Well(i), this, [this] { update(); });
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter p(this);
        for (int i = 0; i < Form2::WellCount; ++i) {
            QRect r = cell(i);
            p.fillRect(r, QColorOf(Form2::Well(i).Color));
            p.setPen(QColor(60, 60, 60));
            p.drawRect(r);
        }
    }
    void mousePressEvent(QMouseEvent* e) override {
        pressed_ = at(e->position().toPoint());
        if (pressed_ < 0) return;
        if (e->button() == Qt::RightButton) Guarded([&] { pickfromWell2(pressed_); });
        else Guarded([&] { pickfromWell(pressed_); });
    }
    void mouseMoveEvent(QMouseEvent* e) override {
        if (pressed_ < 0 || !(e->buttons() & Qt::LeftButton)) return;
        QRect r = cell(pressed_);
        QPointF local = e->position() - QPointF(r.topLeft());
        if (!DragWell(static_cast<float>(local.x()), static_cast<float>(local.y()), CellW, CellH)) return;
        auto* drag = new QDrag(this);
        drag->setMimeData(ColourMimeData(Form2::Well(pressed_).Color));
        QPixmap chip(16, 16);
        chip.fill(QColorOf(Form2::Well(pressed_).Color));
        drag->setPixmap(chip);
        pressed_ = -1;
        drag->exec(Qt::CopyAction);
    }
    void mouseReleaseEvent(QMouseEvent*) override { pressed_ = -1; }
    void dragEnterEvent(QDragEnterEvent* e) override {
        if (ColourFromMimeData(e->mimeData())) e->acceptProposedAction();
    }
    void dragMoveEvent(QDragMoveEvent* e) override {
        if (at(e->position().toPoint()) >= 0) e->acceptProposedAction();
        else e->ignore();
    }
    void dropEvent(QDropEvent* e) override {
        int target = at(e->position().toPoint());
        auto colour = ColourFromMimeData(e->mimeData());
        if (target < 0 || !colour) return;
        Guarded([&] { WellDragDrop(target, *colour); });
        e->acceptProposedAction();
    }

private:
    static QRect cell(int i) { return QRect((i % Columns) * CellW, (i / Columns) * CellH, CellW, CellH); }
    static int at(QPoint p) {
        if (p.x() < 0 || p.y() < 0) return -1;
        int col = p.x() / CellW, row = p.y() / CellH;
        if (col >= Columns || row * Columns + col >= Form2::WellCount) return -1;
        return row * Columns + col;
    }
    int pressed_ = -1;
};
}  // namespace

void RegisterWellsView() {
    RegisterControlWidget(Form2::Well(0), [](Control&, PanelView& panel) -> QWidget* { return new WellsView(&panel); });
    for (int i = 1; i < Form2::WellCount; ++i) RegisterDrawnElsewhere(Form2::Well(i));
}
