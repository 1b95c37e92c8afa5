// The current brush and the palette of stock brush pictures, each at a fixed
// size: a left click on the current brush opens the palette, a click in the
// palette picks a brush, a right click on the current brush opens its options.
#include <QGridLayout>
#include <QMouseEvent>
#include <QPainter>

#include "core/frame/Form2.h"
#include "core/framework/Codes.h"
#include "core/framework/Guard.h"
#include "shell/ControlWidgets.h"
#include "shell/Convert.h"
#include "shell/PanelView.h"

namespace {
class BrushPicture : public QWidget {
public:
    BrushPicture(PictureBox& m, int scale, QWidget* parent) : QWidget(parent), m_(m) {
        setObjectName(Q(m.Name));
        setFixedSize(m.Width * scale + 2, m.Height * scale + 2);
        setToolTip(Q(m.ToolTipText));
        setCursor(Qt::PointingHandCursor);
        HookControl(m, this, [this] { update(); });
        setVisible(m.Visible);
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter p(this);
        QImage img(reinterpret_cast<const uchar*>(m_.pixels.data()), m_.Width, m_.Height, m_.Width * 4,
                   QImage::Format_RGBX8888);
        p.drawImage(rect().adjusted(1, 1, -1, -1), img);
        p.setPen(QColor(60, 60, 60));
        p.drawRect(rect().adjusted(0, 0, -1, -1));
    }
    void mousePressEvent(QMouseEvent* e) override {
        if (!m_.MouseDown) return;
        int button = e->button() == Qt::RightButton ? MouseButton::Right : MouseButton::Left;
        Guarded([&] { m_.MouseDown(button, 0, 0, 0); });
    }

private:
    PictureBox& m_;
};

QWidget* MakePalette(PanelView& panel) {
    auto* box = new QWidget(&panel);
    auto* grid = new QGridLayout(box);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(2);
    for (int i = 0; i < Form2::StockBrushCount; ++i)
        grid->addWidget(new BrushPicture(Form2::StockBrush(i), 1, box), i / 7, i % 7);
    box->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    return box;
}
}  // namespace

void RegisterBrushPaletteView() {
    RegisterControlWidget(Form2::Picture1, [](Control&, PanelView& panel) -> QWidget* {
        return new BrushPicture(Form2::Picture1, 2, &panel);
    });
    RegisterControlWidget(Form2::StockBrush(0), [](Control&, PanelView& panel) { return MakePalette(panel); });
    for (int i = 1; i < Form2::StockBrushCount; ++i) RegisterDrawnElsewhere(Form2::StockBrush(i));
}
