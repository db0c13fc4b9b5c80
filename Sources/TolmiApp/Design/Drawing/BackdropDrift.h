#pragma once

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QObject>
#include <QtQml/qqmlregistration.h>

/// The slow back-and-forth motion of the backdrop, in steps that are too small to notice and rare enough to
/// be cheap. Resumes where it stopped.
class BackdropDrift : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(bool running READ isRunning WRITE setRunning NOTIFY runningChanged)
    /// 0 at one end of the motion, 1 at the other.
    Q_PROPERTY(double position READ position NOTIFY positionChanged)

public:
    using QObject::QObject;

    /// The position after `seconds` of motion: 18 seconds each way, easing in and out.
    static double positionAt(double seconds);

    bool isRunning() const { return m_timer.isActive(); }
    void setRunning(bool running);
    double position() const { return positionAt(m_seconds); }

Q_SIGNALS:
    void runningChanged();
    void positionChanged();

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    QBasicTimer m_timer;
    QElapsedTimer m_sinceStep;
    double m_seconds = 0;
};
