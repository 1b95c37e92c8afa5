// Keys of every window go to the canvas's three key procedures, with the
// classic key numbers; text fields keep their own keys.
#pragma once

#include <QObject>

class KeyForwarder : public QObject {
public:
    using QObject::QObject;
    bool eventFilter(QObject* watched, QEvent* event) override;
};

// Classic virtual key number of a Qt key (arrows 37..40, F1 112, letters upper case).
int VirtualKeyOf(int qtKey);
// The character code a key press delivers, or 0 for none (ctrl z is 26).
int KeyAsciiOf(int qtKey, Qt::KeyboardModifiers mods, const QString& text);
