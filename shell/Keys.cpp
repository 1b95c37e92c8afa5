// Key forwarding to the canvas.
#include "shell/Keys.h"

#include <QAbstractSpinBox>
#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextEdit>
#include <QWidget>

#include "core/display/Form1.h"
#include "core/framework/Codes.h"
#include "core/framework/Guard.h"
#include "shell/Convert.h"

int VirtualKeyOf(int k) {
    switch (k) {
        case Qt::Key_Left: return VirtualKey::Left;
        case Qt::Key_Up: return VirtualKey::Up;
        case Qt::Key_Right: return VirtualKey::Right;
        case Qt::Key_Down: return VirtualKey::Down;
        case Qt::Key_Shift: return VirtualKey::Shift;
        case Qt::Key_Control: return VirtualKey::Control;
        case Qt::Key_Alt: return VirtualKey::Alt;
        case Qt::Key_Escape: return VirtualKey::Escape;
        case Qt::Key_Space: return VirtualKey::Space;
        case Qt::Key_Return:
        case Qt::Key_Enter: return VirtualKey::Return;
        case Qt::Key_Backspace: return VirtualKey::Backspace;
        case Qt::Key_Tab: return VirtualKey::Tab;
        case Qt::Key_Delete: return VirtualKey::Delete;
        default: break;
    }
    if (k >= Qt::Key_F1 && k <= Qt::Key_F24) return VirtualKey::F1 + (k - Qt::Key_F1);
    if ((k >= Qt::Key_A && k <= Qt::Key_Z) || (k >= Qt::Key_0 && k <= Qt::Key_9)) return k;
    return 0;
}

int KeyAsciiOf(int k, Qt::KeyboardModifiers mods, const QString& text) {
    if ((mods & Qt::ControlModifier) && k >= Qt::Key_A && k <= Qt::Key_Z) return KeyChar::CtrlA + (k - Qt::Key_A);
    if (k == Qt::Key_Escape) return KeyChar::Escape;
    if (text.size() == 1 && text[0].unicode() < 128 && text[0].unicode() > 0) return text[0].unicode();
    return 0;
}

namespace {
bool KeepsOwnKeys(QObject* o) {
    return qobject_cast<QLineEdit*>(o) || qobject_cast<QPlainTextEdit*>(o) || qobject_cast<QTextEdit*>(o) ||
           qobject_cast<QAbstractSpinBox*>(o);
}
}  // namespace

bool KeyForwarder::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress && event->type() != QEvent::KeyRelease) return false;
    if (!watched->isWidgetType() || KeepsOwnKeys(watched)) return false;
    // A box is up (size, question, message, value): the canvas gets no input
    // until it is answered, and the box keeps its keys.
    if (QApplication::activeModalWidget()) return false;
    auto* w = static_cast<QWidget*>(watched);
    if (!w->isWindow() && w != w->window()->focusWidget() && w->window()->focusWidget()) {
        // Only the focus widget's copy of the event is forwarded, once.
        if (w->window()->focusWidget() != w) return false;
    }
    auto* ke = static_cast<QKeyEvent*>(event);
    if (ke->isAutoRepeat() && event->type() == QEvent::KeyRelease) return true;
    int16_t code = static_cast<int16_t>(VirtualKeyOf(ke->key()));
    int16_t shift = ShiftCodeOf(ke->modifiers());
    if (event->type() == QEvent::KeyPress) {
        // Return activates a dialog's default button rather than reaching the canvas.
        if (ke->key() == Qt::Key_Return || ke->key() == Qt::Key_Enter) return false;
        if (code) Guarded([&] { Form1::Form_KeyDown(code, shift); });
        Guarded([&] {
            int16_t ascii = static_cast<int16_t>(KeyAsciiOf(ke->key(), ke->modifiers(), ke->text()));
            if (ascii) Form1::Form_KeyPress(ascii);
        });
    } else {
        Guarded([&] { Form1::Form_KeyUp(code, shift); });
    }
    return true;
}
