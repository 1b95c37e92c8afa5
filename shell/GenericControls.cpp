// The generic widgets of the panel view: one factory per kind of control.
#include "shell/GenericControls.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QHBoxLayout>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMouseEvent>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QSlider>
#include <memory>

#include "core/framework/Codes.h"
#include "core/framework/Guard.h"
#include "core/framework/controls.h"
#include "shell/ControlWidgets.h"
#include "shell/Convert.h"
#include "shell/PanelView.h"

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
        int button = e->button() == Qt::RightButton ? MouseButton::Right : MouseButton::Left;
        send(m_.MouseDown, button, e);
    }
    // Moves arrive while a button is held, with the held button.
    void mouseMoveEvent(QMouseEvent* e) override {
        int button = (e->buttons() & Qt::LeftButton)    ? MouseButton::Left
                     : (e->buttons() & Qt::RightButton) ? MouseButton::Right
                                                        : MouseButton::None;
        send(m_.MouseMove, button, e);
    }
    void mouseReleaseEvent(QMouseEvent* e) override {
        int button = e->button() == Qt::RightButton ? MouseButton::Right : MouseButton::Left;
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

using Factory = BuiltControl (*)(Control&, QWidget* parent);

BuiltControl MakeLabel(Control& c, QWidget* parent) {
    auto* l = new QLabel(parent);
    l->setWordWrap(true);
    l->setTextFormat(Qt::PlainText);
    HookControl(c, l, [l, &c] { l->setText(Q(c.Caption)); });
    return {l};
}

// A button that takes a colour dropped from a well, and shows it as its face.
class ColourDropButton : public QPushButton {
public:
    ColourDropButton(CommandButton& m, QWidget* parent) : QPushButton(parent), m_(m) { setAcceptDrops(true); }

protected:
    void dragEnterEvent(QDragEnterEvent* e) override {
        if (ColourFromMimeData(e->mimeData())) e->acceptProposedAction();
    }
    void dropEvent(QDropEvent* e) override {
        if (auto colour = ColourFromMimeData(e->mimeData())) {
            e->acceptProposedAction();
            Guarded([&] { m_.ColourDrop(*colour); });
        }
    }

private:
    CommandButton& m_;
};

BuiltControl MakeButton(Control& c, QWidget* parent) {
    auto& m = static_cast<CommandButton&>(c);
    QPushButton* b = m.ColourDrop ? new ColourDropButton(m, parent) : new QPushButton(parent);
    b->setDefault(m.Role == ButtonRole::Default);
    QObject::connect(b, &QPushButton::clicked, b, [&m] { Guarded([&] { m.press(); }); });
    if (m.MouseDown) {
        b->setContextMenuPolicy(Qt::CustomContextMenu);
        QObject::connect(b, &QWidget::customContextMenuRequested, b, [&m](const QPoint& at) {
            Guarded([&] { m.MouseDown(MouseButton::Right, 0, float(at.x()), float(at.y())); });
        });
    }
    HookControl(c, b, [b, &c, &m] {
        b->setText(Q(c.Caption));
        if (!m.ColourDrop) return;
        const QColor face = QColorOf(c.BackColor);
        b->setStyleSheet(QString("background-color: %1; color: %2")
                             .arg(face.name(), face.lightness() < 128 ? "white" : "black"));
    });
    return {b};
}

// A slider sits between its caption and a label showing its value.
BuiltControl MakeSlider(Control& c, QWidget* parent) {
    auto& m = static_cast<Slider&>(c);
    auto* box = new QWidget(parent);
    auto* h = new QHBoxLayout(box);
    h->setContentsMargins(0, 0, 0, 0);
    auto* cap = new QLabel(box);
    auto* s = new QSlider(Qt::Horizontal, box);
    auto* val = new QLabel(box);
    val->setMinimumWidth(36);
    h->addWidget(cap);
    h->addWidget(s, 1);
    h->addWidget(val);
    QObject::connect(s, &QSlider::valueChanged, s, [&m](int v) { Guarded([&] { m.scrollTo(v); }); });
    HookControl(c, box, [s, val, cap, &m] {
        QSignalBlocker block(s);
        s->setRange(m.Min, m.Max);
        s->setValue(m.Value);
        val->setText(QString::number(m.Value.get()));
        cap->setText(Q(m.Caption));
        cap->setVisible(!m.Caption.get().empty());
    });
    return {box, s};
}

BuiltControl MakeCheckBox(Control& c, QWidget* parent) {
    auto& m = static_cast<CheckBox&>(c);
    auto* b = new QCheckBox(parent);
    QObject::connect(b, &QCheckBox::clicked, b, [&m](bool on) { Guarded([&] { m.Value = on ? 1 : 0; }); });
    HookControl(c, b, [b, &m] {
        QSignalBlocker block(b);
        b->setText(Q(m.Caption));
        b->setChecked(m.Value != 0);
    });
    return {b};
}

// Option groups are the model's business: the button only reports the click.
BuiltControl MakeOptionButton(Control& c, QWidget* parent) {
    auto& m = static_cast<OptionButton&>(c);
    auto* b = new QRadioButton(parent);
    b->setAutoExclusive(false);
    QObject::connect(b, &QRadioButton::clicked, b, [&m, b](bool) {
        Guarded([&] {
            m.Value = true;
            b->setChecked(true);
        });
    });
    HookControl(c, b, [b, &m] {
        QSignalBlocker block(b);
        b->setText(Q(m.Caption));
        b->setChecked(m.Value);
    });
    return {b};
}

// A multi-line text box is a read-only page of text (help, reports).
BuiltControl MakeTextPage(TextBox& m, QWidget* parent) {
    auto* t = new QPlainTextEdit(parent);
    t->setReadOnly(true);
    t->setMinimumSize(420, 200);
    HookControl(m, t, [t, &m] { t->setPlainText(Q(m.Text)); });
    return {t};
}

BuiltControl MakeTextBox(Control& c, QWidget* parent) {
    auto& m = static_cast<TextBox&>(c);
    if (m.MultiLine) return MakeTextPage(m, parent);
    auto* t = new QLineEdit(parent);
    QObject::connect(t, &QLineEdit::textEdited, t, [&m](const QString& s) {
        Guarded([&] {
            m.Text = s.toStdString();
            if (m.KeyUp) m.KeyUp();
        });
    });
    QObject::connect(t, &QLineEdit::editingFinished, t, [&m] {
        if (m.LostFocus) Guarded([&] { m.LostFocus(); });
    });
    HookControl(c, t, [t, &m] {
        if (t->text().toStdString() != m.Text.get()) t->setText(Q(m.Text));
    });
    return {t};
}

// Lists and combo boxes refill their items only when the model's list changed.
template <typename Widget>
void HookItems(ListBox& m, Widget* w, void (Widget::*select)(int)) {
    HookControl(m, w, [w, &m, select, rev = std::make_shared<int>(-1)] {
        QSignalBlocker block(w);
        if (*rev != m.ListRevision) {
            *rev = m.ListRevision;
            w->clear();
            for (auto& s : m.items) w->addItem(Q(s));
        }
        (w->*select)(m.ListIndex);
    });
}

BuiltControl MakeList(Control& c, QWidget* parent) {
    auto& m = static_cast<ListBox&>(c);
    auto* l = new QListWidget(parent);
    l->setMinimumHeight(120);
    QObject::connect(l, &QListWidget::currentRowChanged, l, [&m](int row) { Guarded([&] { m.ListIndex = row; }); });
    QObject::connect(l, &QListWidget::itemDoubleClicked, l, [&m](QListWidgetItem*) {
        if (m.DblClick) Guarded([&] { m.DblClick(); });
    });
    HookItems(m, l, &QListWidget::setCurrentRow);
    return {l};
}

// With nothing chosen a combo box shows its caption ("Open"), never a blank.
BuiltControl MakeCombo(Control& c, QWidget* parent) {
    auto& m = static_cast<ListBox&>(c);
    auto* cb = new QComboBox(parent);
    cb->setPlaceholderText(Q(m.Caption));
    QObject::connect(cb, &QComboBox::activated, cb, [&m](int row) { Guarded([&] { m.ListIndex = row; }); });
    HookItems(m, cb, &QComboBox::setCurrentIndex);
    return {cb};
}

BuiltControl MakePicture(Control& c, QWidget* parent) {
    auto* p = new PictureView(static_cast<PictureBox&>(c), parent);
    HookControl(c, p, [p] { p->update(); });
    return {p};
}

// A visible shape is a colour swatch with its caption beside it.
BuiltControl MakeShape(Control& c, QWidget* parent) {
    if (!c.Visible) return {};
    auto* box = new QWidget(parent);
    auto* h = new QHBoxLayout(box);
    h->setContentsMargins(0, 0, 0, 0);
    auto* sw = MakeSwatch(c, box);
    h->addWidget(sw);
    h->addWidget(new QLabel(Q(c.Caption), box), 1);
    HookControl(c, box, [sw] { sw->update(); });
    return {box};
}

// Lines, timers and menu entries have no widget in a panel.
const std::pair<ControlKind, Factory> Factories[] = {
    {ControlKind::Label, MakeLabel},          {ControlKind::Frame, MakeLabel},
    {ControlKind::CommandButton, MakeButton}, {ControlKind::Slider, MakeSlider},
    {ControlKind::CheckBox, MakeCheckBox},    {ControlKind::OptionButton, MakeOptionButton},
    {ControlKind::TextBox, MakeTextBox},      {ControlKind::ListBox, MakeList},
    {ControlKind::FileListBox, MakeList},     {ControlKind::ComboBox, MakeCombo},
    {ControlKind::PictureBox, MakePicture},   {ControlKind::Shape, MakeShape},
};
}  // namespace

QWidget* MakeSwatch(Control& c, QWidget* parent) { return new SwatchView(static_cast<Shape&>(c), parent); }

BuiltControl BuildGenericControl(Control& c, PanelView& panel) {
    for (const auto& [kind, make] : Factories)
        if (kind == c.Kind) return make(c, &panel);
    return {};
}
