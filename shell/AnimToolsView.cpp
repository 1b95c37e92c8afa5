// The transport bar: frame scroll bar, frame number, frame rate box and the
// buttons, in a tool bar at the foot of the frame. It shows while the model of
// the bar is visible; each widget follows its own model.
#include "shell/AnimToolsView.h"

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QToolBar>

#include "core/frame/MDIForm1.h"
#include "core/framework/Guard.h"
#include "shell/ControlWidgets.h"
#include "shell/Convert.h"

namespace {
QScrollBar* MakeScroll(QWidget* parent) {
    Slider& m = MDIForm1::AnimScroll;
    auto* s = new QScrollBar(Qt::Horizontal, parent);
    s->setMinimumWidth(320);
    s->setPageStep(1);
    s->setFocusPolicy(Qt::NoFocus);  // the arrow keys step the frames from the canvas
    QObject::connect(s, &QScrollBar::valueChanged, s, [&m](int v) { Guarded([&] { m.scrollTo(v); }); });
    HookControl(m, s, [s, &m] {
        QSignalBlocker block(s);
        s->setRange(m.Min, m.Max);
        s->setValue(m.Value);
    });
    m.notifyView();
    return s;
}

QPushButton* MakeButton(CommandButton& m, QWidget* parent) {
    auto* b = new QPushButton(parent);
    b->setFocusPolicy(Qt::NoFocus);
    b->setObjectName(Q(m.Name));
    QObject::connect(b, &QPushButton::clicked, b, [&m] { Guarded([&] { m.press(); }); });
    HookControl(m, b, [b, &m] { b->setText(Q(m.Caption)); });
    m.notifyView();
    return b;
}

QLineEdit* MakeRate(QWidget* parent) {
    TextBox& m = MDIForm1::Anim_Framerate;
    auto* t = new QLineEdit(parent);
    t->setMaximumWidth(60);
    t->setToolTip("Frames per second");
    QObject::connect(t, &QLineEdit::textEdited, t, [&m](const QString& s) { Guarded([&] { m.Text = s.toStdString(); }); });
    HookControl(m, t, [t, &m] {
        if (t->text().toStdString() != m.Text.get()) t->setText(Q(m.Text));
    });
    m.notifyView();
    return t;
}
}  // namespace

QToolBar* MakeAnimTools(QMainWindow* frame) {
    using namespace MDIForm1;
    auto* bar = new QToolBar("Animation", frame);
    bar->setObjectName(Q(Anim_Tools.Name));
    bar->setMovable(false);
    bar->toggleViewAction()->setEnabled(false);  // the menu entry shows and hides it
    frame->addToolBar(Qt::BottomToolBarArea, bar);
    bar->addWidget(MakeScroll(bar));
    auto* label = new QLabel(bar);
    label->setMinimumWidth(48);
    label->setAlignment(Qt::AlignCenter);
    HookControl(Anim_Label, label, [label] { label->setText(Q(Anim_Label.Caption)); });
    Anim_Label.notifyView();
    bar->addWidget(label);
    bar->addWidget(MakeRate(bar));
    for (CommandButton* b : {&Anim_Previous, &Anim_Play, &Anim_Stop, &Anim_Next, &Anim_Insert, &Anim_Delete})
        bar->addWidget(MakeButton(*b, bar));
    FollowModel(Anim_Tools, bar, [bar] { bar->setVisible(Anim_Tools.Visible); });
    bar->setVisible(Anim_Tools.Visible);
    return bar;
}
