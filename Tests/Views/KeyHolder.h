#pragma once

#include <QCoreApplication>
#include <QKeyEvent>
#include <QQuickItem>
#include <QQuickWindow>

/// Holds a key down for tests that are written in QML, as a keyboard does that repeats it.
class KeyHolder : public QObject {
    Q_OBJECT

public:
    /// Presses the key in the window of `item`, repeats it so many times, and releases it.
    Q_INVOKABLE void hold(QQuickItem *item, int key, int repeats) {
        send(item, QEvent::KeyPress, key, false);
        for (int count = 0; count < repeats; ++count) {
            send(item, QEvent::KeyRelease, key, true);
            send(item, QEvent::KeyPress, key, true);
        }
        send(item, QEvent::KeyRelease, key, false);
    }

private:
    static void send(QQuickItem *item, QEvent::Type type, int key, bool isRepeat) {
        QKeyEvent event(type, key, Qt::NoModifier, QString(), isRepeat);
        QCoreApplication::sendEvent(item->window(), &event);
    }
};
