#include "TolmiApp/Design/Drawing/BackdropDrift.h"

#include <QEasingCurve>
#include <QPointF>

#include <cmath>

namespace {
constexpr double secondsEachWay = 18;
constexpr int stepsEachSecond = 15;
} // namespace

double BackdropDrift::positionAt(double seconds) {
    static const QEasingCurve easeInOut = [] {
        QEasingCurve curve(QEasingCurve::BezierSpline);
        curve.addCubicBezierSegment({ 0.42, 0 }, { 0.58, 1 }, { 1, 1 });
        return curve;
    }();
    const double way = std::fmod(seconds / secondsEachWay, 2);
    return easeInOut.valueForProgress(way <= 1 ? way : 2 - way);
}

void BackdropDrift::setRunning(bool running) {
    if (running == isRunning())
        return;
    if (running) {
        m_sinceStep.start();
        m_timer.start(1000 / stepsEachSecond, Qt::CoarseTimer, this);
    } else {
        m_timer.stop();
    }
    Q_EMIT runningChanged();
}

void BackdropDrift::timerEvent(QTimerEvent *) {
    m_seconds += double(m_sinceStep.restart()) / 1000;
    Q_EMIT positionChanged();
}
