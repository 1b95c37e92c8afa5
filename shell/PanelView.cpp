// The generic panel view.
#include "shell/PanelView.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QImage>
#include <QKeyEvent>
#include <QPainter>
#include <QVBoxLayout>

#include "core/framework/Codes.h"
#include "core/framework/Guard.h"
#include "core/framework/Host.h"
#include "core/framework/PanelLook.h"
#include "core/framework/controls.h"
#include "shell/ControlWidgets.h"
#include "shell/Convert.h"
#include "shell/GenericControls.h"

void ApplyControlColours(QWidget* w, Control& c) {
    QPalette pal = w->palette();
    pal.setColor(QPalette::Button, QColorOf(c.BackColor));
    pal.setColor(QPalette::ButtonText, QColorOf(c.ForeColor));
    if (c.Kind == ControlKind::Slider || c.Kind == ControlKind::CommandButton) {
        pal.setColor(QPalette::WindowText, QColorOf(c.ForeColor));
        pal.setColor(QPalette::Window, QColorOf(c.BackColor));
        w->setAutoFillBackground(c.Kind == ControlKind::Slider);
    }
    w->setPalette(pal);
}

void PaintPanelBackground(QWidget* w, Form& form) {
    const PatternTile& t = Draw_Pattern(form);
    QPainter p(w);
    QImage tile(reinterpret_cast<const uchar*>(t.pixels.data()), t.size, t.size, t.size * 4, QImage::Format_RGBX8888);
    p.fillRect(w->rect(), QBrush(tile));
}

PanelView::PanelView(Form& form, QWidget* parent) : QWidget(parent, Qt::Tool), form_(form) {
    setObjectName(Q(form.Name));
    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins(10, 10, 10, 10);
    QHBoxLayout* row = nullptr;
    int rowGroup = 0;
    bool grows = false;  // a page of text takes what the window gains
    for (Control* c : form.controls) {
        QWidget* w = buildControl(*c);
        if (!w) continue;
        if (c->Kind == ControlKind::TextBox && static_cast<TextBox*>(c)->MultiLine && c->Group == 0) {
            outer->addWidget(w, 1);
            grows = true;
            row = nullptr;
            rowGroup = 0;
            continue;
        }
        if (c->Group != 0 && c->Group == rowGroup && row) {
            row->addWidget(w);
            continue;
        }
        row = nullptr;
        rowGroup = c->Group;
        if (c->Group != 0) {
            row = new QHBoxLayout();
            outer->addLayout(row);
            row->addWidget(w);
        } else {
            outer->addWidget(w);
        }
    }
    if (!grows) outer->addStretch(1);
    QPointer<PanelView> self(this);
    form.viewHook = [self] {
        if (self) self->applyForm();
    };
    applyForm();
}

PanelView::~PanelView() {
    form_.viewHook = nullptr;
    for (Control* c : form_.controls) c->viewHook = nullptr;
}

void PanelView::applyForm() {
    setWindowTitle(Q(form_.Caption));
    setCursor(form_.MousePointer == Pointer::Busy ? Qt::WaitCursor : Qt::ArrowCursor);
    update();
}

QWidget* PanelView::buildControl(Control& c, bool allowCustom) {
    if (allowCustom) {
        if (const ControlWidgetFactory* make = FindControlWidget(c)) {
            QWidget* w = (*make)(c, *this);
            if (w && !c.ToolTipText.empty()) w->setToolTip(Q(c.ToolTipText));
            return w;
        }
    }
    BuiltControl built = BuildGenericControl(c, *this);
    if (!built.widget) return nullptr;
    if (!c.ToolTipText.empty()) built.widget->setToolTip(Q(c.ToolTipText));
    ApplyControlColours(built.coloured ? built.coloured : built.widget, c);
    c.viewHook();
    return built.widget;
}

void PanelView::paintEvent(QPaintEvent*) {
    if (form_.Paint) Guarded([&] { form_.Paint(); });
    PaintPanelBackground(this, form_);
}

void PanelView::closeEvent(QCloseEvent* e) {
    // The window's own close acts as Cancel where the form has one.
    e->ignore();
    Guarded([&] {
        if (CommandButton* cancel = form_.button(ButtonRole::Cancel)) {
            cancel->press();
            if (!form_.Visible) return;
        }
        Hide(form_);
    });
}

void PanelView::changeEvent(QEvent* e) {
    if (e->type() == QEvent::ActivationChange && !isActiveWindow() && isVisible() && form_.Deactivate)
        Guarded([&] { form_.Deactivate(); });
    QWidget::changeEvent(e);
}

void PanelView::mousePressEvent(QMouseEvent* e) {
    if (form_.Click) Guarded([&] { form_.Click(); });
    QWidget::mousePressEvent(e);
}

void PanelView::mouseDoubleClickEvent(QMouseEvent* e) {
    if (form_.DblClick) Guarded([&] { form_.DblClick(); });
    QWidget::mouseDoubleClickEvent(e);
}

void PanelView::keyPressEvent(QKeyEvent* e) {
    // Return presses the form's default button (OK), as in any dialog.
    if (e->key() == Qt::Key_Return || e->key() == Qt::Key_Enter) {
        if (CommandButton* ok = form_.button(ButtonRole::Default)) {
            Guarded([&] { ok->press(); });
            return;
        }
    }
    QWidget::keyPressEvent(e);
}
