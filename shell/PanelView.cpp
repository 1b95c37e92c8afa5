// The generic panel view.
#include "shell/PanelView.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QHBoxLayout>
#include <QImage>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QSlider>
#include <QVBoxLayout>

#include "core/display/Display.h"
#include "core/framework/Guard.h"
#include "core/framework/controls.h"
#include "shell/Convert.h"
#include "shell/ControlWidgets.h"
#include "core/framework/PanelLook.h"

namespace {
// A picture box: the model's pixels, scaled to fit, with its text line centred.
class PictureView : public QWidget {
public:
    PictureView(PictureBox& m, QWidget* parent) : QWidget(parent), m_(m) {
        setMinimumSize(std::min(m.Width, 320), std::min(m.Height, 240));
        setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
        setFixedHeight(m.Height);
    }
    QSize sizeHint() const override { return {m_.Width, m_.Height}; }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter p(this);
        if (m_.Width > 0 && m_.Height > 0) {
            QImage img(reinterpret_cast<const uchar*>(m_.pixels.data()), m_.Width, m_.Height, m_.Width * 4,
                       QImage::Format_RGBX8888);  // 0x00BBGGRR in memory is R, G, B, X
            p.drawImage(imageRect(), img);
        }
        if (!m_.Text.get().empty()) {
            p.setPen(Qt::black);
            p.drawText(rect(), Qt::AlignCenter, Q(m_.Text));
        }
    }
    void mousePressEvent(QMouseEvent* e) override {
        int button = e->button() == Qt::RightButton ? 2 : 1;
        send(m_.MouseDown, button, e);
    }
    // Moves arrive while a button is held, with the held button.
    void mouseMoveEvent(QMouseEvent* e) override {
        int button = (e->buttons() & Qt::LeftButton) ? 1 : (e->buttons() & Qt::RightButton) ? 2 : 0;
        send(m_.MouseMove, button, e);
    }
    void mouseReleaseEvent(QMouseEvent* e) override {
        int button = e->button() == Qt::RightButton ? 2 : 1;
        send(m_.MouseUp, button, e);
    }

private:
    // The picture keeps its proportions: scaled to fit, centred in the widget.
    QRectF imageRect() const {
        double scale = std::min(width() / static_cast<double>(std::max(1, m_.Width)),
                                height() / static_cast<double>(std::max(1, m_.Height)));
        double w = m_.Width * scale, h = m_.Height * scale;
        return {(width() - w) / 2, (height() - h) / 2, w, h};
    }
    void send(const std::function<void(int, int, float, float)>& handler, int button, QMouseEvent* e) {
        if (!handler) return;
        QRectF r = imageRect();
        float x = static_cast<float>((e->position().x() - r.left()) * m_.Width / std::max(1.0, r.width()));
        float y = static_cast<float>((e->position().y() - r.top()) * m_.Height / std::max(1.0, r.height()));
        Guarded([&] { handler(button, 0, x, y); });
    }

private:
    PictureBox& m_;
};

class SwatchView : public QWidget {
public:
    SwatchView(Shape& m, QWidget* parent) : QWidget(parent), m_(m) { setFixedSize(40, 24); }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter p(this);
        p.fillRect(rect(), QColorOf(m_.FillColor));
        p.setPen(Qt::black);
        p.drawRect(rect().adjusted(0, 0, -1, -1));
    }

private:
    Shape& m_;
};

void FollowModel(Control& c, QWidget* w, std::function<void()> sync) {
    QPointer<QWidget> guard(w);
    c.viewHook = [guard, &c, sync] {
        if (!guard) return;
        guard->setVisible(c.Visible);
        guard->setEnabled(c.Enabled);
        sync();
    };
}
}  // namespace

QWidget* MakeSwatch(Control& c, QWidget* parent) { return new SwatchView(static_cast<Shape&>(c), parent); }

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
    for (Control* c : form.controls) {
        QWidget* w = buildControl(*c);
        if (!w) continue;
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
    outer->addStretch(1);
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
    setCursor(form_.MousePointer == 11 ? Qt::WaitCursor : Qt::ArrowCursor);
    update();
}

QWidget* PanelView::buildControl(Control& c, bool allowCustom) {
    QWidget* w = nullptr;
    if (allowCustom) {
        if (const ControlWidgetFactory* make = FindControlWidget(form_.Name, c.Name)) {
            w = (*make)(c, *this);
            if (w && !c.ToolTipText.empty()) w->setToolTip(Q(c.ToolTipText));
            return w;
        }
    }
    switch (c.Kind) {
        case ControlKind::Label:
        case ControlKind::Frame: {
            auto* l = new QLabel(this);
            l->setWordWrap(true);
            l->setTextFormat(Qt::PlainText);
            w = l;
            FollowModel(c, w, [l, &c] { l->setText(Q(c.Caption)); });
            break;
        }
        case ControlKind::CommandButton: {
            auto& m = static_cast<CommandButton&>(c);
            auto* b = new QPushButton(this);
            if (m.Name == "Command1") b->setDefault(true);
            connect(b, &QPushButton::clicked, this, [&m] { Guarded([&] { m.press(); }); });
            w = b;
            FollowModel(c, w, [b, &c] { b->setText(Q(c.Caption)); });
            break;
        }
        case ControlKind::Slider: {
            auto& m = static_cast<Slider&>(c);
            auto* box = new QWidget(this);
            auto* h = new QHBoxLayout(box);
            h->setContentsMargins(0, 0, 0, 0);
            auto* cap = new QLabel(box);
            auto* s = new QSlider(Qt::Horizontal, box);
            auto* val = new QLabel(box);
            val->setMinimumWidth(36);
            h->addWidget(cap);
            h->addWidget(s, 1);
            h->addWidget(val);
            connect(s, &QSlider::valueChanged, this, [&m](int v) { Guarded([&] { m.scrollTo(v); }); });
            w = box;
            FollowModel(c, w, [s, val, cap, &m] {
                QSignalBlocker block(s);
                s->setRange(m.Min, m.Max);
                s->setValue(m.Value);
                val->setText(QString::number(m.Value.get()));
                cap->setText(Q(m.Caption));
                cap->setVisible(!m.Caption.get().empty());
            });
            ApplyControlColours(s, c);
            break;
        }
        case ControlKind::CheckBox: {
            auto& m = static_cast<CheckBox&>(c);
            auto* b = new QCheckBox(this);
            connect(b, &QCheckBox::clicked, this, [&m](bool on) { Guarded([&] { m.Value = on ? 1 : 0; }); });
            w = b;
            FollowModel(c, w, [b, &m] {
                QSignalBlocker block(b);
                b->setText(Q(m.Caption));
                b->setChecked(m.Value != 0);
            });
            break;
        }
        case ControlKind::OptionButton: {
            auto& m = static_cast<OptionButton&>(c);
            auto* b = new QRadioButton(this);
            b->setAutoExclusive(false);
            connect(b, &QRadioButton::clicked, this, [&m, b](bool) {
                Guarded([&] {
                    m.Value = true;
                    b->setChecked(true);
                });
            });
            w = b;
            FollowModel(c, w, [b, &m] {
                QSignalBlocker block(b);
                b->setText(Q(m.Caption));
                b->setChecked(m.Value);
            });
            break;
        }
        case ControlKind::TextBox: {
            auto& m = static_cast<TextBox&>(c);
            if (m.MultiLine) {
                auto* t = new QPlainTextEdit(this);
                t->setReadOnly(true);
                t->setMinimumSize(420, 200);
                w = t;
                FollowModel(c, w, [t, &m] { t->setPlainText(Q(m.Text)); });
                t->setEnabled(true);
            } else {
                auto* t = new QLineEdit(this);
                connect(t, &QLineEdit::textEdited, this, [&m](const QString& s) {
                    Guarded([&] {
                        m.Text = s.toStdString();
                        if (m.KeyUp) m.KeyUp();
                    });
                });
                w = t;
                FollowModel(c, w, [t, &m] {
                    if (t->text().toStdString() != m.Text.get()) t->setText(Q(m.Text));
                });
            }
            break;
        }
        case ControlKind::ListBox:
        case ControlKind::FileListBox: {
            auto& m = static_cast<ListBox&>(c);
            auto* l = new QListWidget(this);
            l->setMinimumHeight(120);
            connect(l, &QListWidget::currentRowChanged, this, [&m](int row) { Guarded([&] { m.ListIndex = row; }); });
            w = l;
            FollowModel(c, w, [l, &m, rev = std::make_shared<int>(-1)] {
                QSignalBlocker block(l);
                if (*rev != m.ListRevision) {
                    *rev = m.ListRevision;
                    l->clear();
                    for (auto& s : m.items) l->addItem(Q(s));
                }
                l->setCurrentRow(m.ListIndex);
            });
            break;
        }
        case ControlKind::ComboBox: {
            auto& m = static_cast<ListBox&>(c);
            auto* cb = new QComboBox(this);
            connect(cb, &QComboBox::activated, this, [&m](int row) { Guarded([&] { m.ListIndex = row; }); });
            w = cb;
            FollowModel(c, w, [cb, &m, rev = std::make_shared<int>(-1)] {
                QSignalBlocker block(cb);
                if (*rev != m.ListRevision) {
                    *rev = m.ListRevision;
                    cb->clear();
                    for (auto& s : m.items) cb->addItem(Q(s));
                }
                cb->setCurrentIndex(m.ListIndex);
            });
            break;
        }
        case ControlKind::PictureBox: {
            auto& m = static_cast<PictureBox&>(c);
            auto* p = new PictureView(m, this);
            w = p;
            FollowModel(c, w, [p] { p->update(); });
            break;
        }
        case ControlKind::Shape: {
            if (!c.Visible) return nullptr;
            auto* box = new QWidget(this);
            auto* h = new QHBoxLayout(box);
            h->setContentsMargins(0, 0, 0, 0);
            auto* sw = MakeSwatch(c, box);
            auto* cap = new QLabel(Q(c.Caption), box);
            h->addWidget(sw);
            h->addWidget(cap, 1);
            w = box;
            FollowModel(c, w, [sw] { sw->update(); });
            break;
        }
        case ControlKind::Line:
        case ControlKind::Timer:
        case ControlKind::MenuEntry:
            return nullptr;
    }
    if (!c.ToolTipText.empty()) w->setToolTip(Q(c.ToolTipText));
    if (c.Kind != ControlKind::Slider) ApplyControlColours(w, c);
    c.viewHook();
    return w;
}

void PanelView::paintEvent(QPaintEvent*) {
    if (form_.Paint) Guarded([&] { form_.Paint(); });
    PaintPanelBackground(this, form_);
}

void PanelView::closeEvent(QCloseEvent* e) {
    // The window's own close acts as Cancel where the form has one.
    e->ignore();
    Guarded([&] {
        if (auto* cancel = dynamic_cast<CommandButton*>(form_.find("Command2"))) {
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
    // Return presses the form's first button (OK), as in any dialog.
    if (e->key() == Qt::Key_Return || e->key() == Qt::Key_Enter) {
        if (auto* ok = dynamic_cast<CommandButton*>(form_.find("Command1"))) {
            Guarded([&] { ok->press(); });
            return;
        }
    }
    QWidget::keyPressEvent(e);
}
