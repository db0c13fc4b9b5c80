#pragma once

#include <QCoreApplication>
#include <QKeyEvent>
#include <QQuickItem>
#include <QQuickWindow>

/// Simulates auto-repeat of a held key for tests written in QML.
class KeyHolder : public QObject {
    Q_OBJECT

public:
    /// Presses the key in the window of `item`, repeats it `repeats` times, and releases it.
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
