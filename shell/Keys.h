// Keys of every window go to the canvas's three key procedures, with the
// classic key numbers; text fields keep their own keys.
#pragma once

#include <QObject>

class KeyForwarder : public QObject {
public:
    using QObject::QObject;
    bool eventFilter(QObject* watched, QEvent* event) override;
};

// The VirtualKey code of a Qt key (letters upper case, digits as themselves), 0 for none.
int VirtualKeyOf(int qtKey);
// The character code a key press delivers, or 0 for none (ctrl + letter gives its KeyChar control code).
int KeyAsciiOf(int qtKey, Qt::KeyboardModifiers mods, const QString& text);
