#include "Platform/Desktop/MainLoopClock.h"

#include <QTimer>

#include <algorithm>
#include <chrono>
#include <thread>

Date MainLoopClock::now() const {
    const auto sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
    return Date::fromSecondsSince1970(std::chrono::duration<double>(sinceEpoch).count());
}

void MainLoopClock::post(std::function<void()> work) {
    QMetaObject::invokeMethod(&m_context, std::move(work), Qt::QueuedConnection);
}

void MainLoopClock::callAfter(double seconds, std::function<void()> work) {
    const auto delay = std::chrono::duration<double>(std::max(seconds, 0.0));
    const auto milliseconds = std::chrono::ceil<std::chrono::milliseconds>(delay);
    // Not QTimer::singleShot, whose functor outlives its context.
    auto *timer = new QTimer(&m_context);
    timer->setSingleShot(true);
    timer->setTimerType(Qt::PreciseTimer);
    QObject::connect(timer, &QTimer::timeout, timer, [timer, work = std::move(work)] {
        timer->deleteLater();
        work();
    });
    timer->start(milliseconds);
}

void MainLoopClock::block(double seconds) {
    std::this_thread::sleep_for(std::chrono::duration<double>(seconds));
}
