#pragma once

#include <QObject>

/// A place of the desktop for status items. Main thread only.
class StatusTray : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// Whether it is there, as far as is known; never waits.
    virtual bool isThere() const = 0;

Q_SIGNALS:
    /// It has come, or has turned out to be there.
    void appeared();
};
