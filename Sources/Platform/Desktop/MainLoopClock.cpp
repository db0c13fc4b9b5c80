#include "Platform/Desktop/MainLoopClock.h"

#include <QCoreApplication>
#include <QEvent>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <thread>

Date MainLoopClock::now() const {
    const auto sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
    return Date::fromSecondsSince1970(std::chrono::duration<double>(sinceEpoch).count());
}

void MainLoopClock::post(std::function<void()> work) {
    {
        const std::lock_guard lock(m_mutex);
        m_posted.push_back(std::move(work));
    }
    QCoreApplication::postEvent(&m_receiver, new QEvent(QEvent::User));
}

bool MainLoopClock::Receiver::event(QEvent *event) {
    if (event->type() != QEvent::User)
        return QObject::event(event);
    m_clock.runPosted();
    return true;
}

void MainLoopClock::runPosted() {
    std::function<void()> work;
    {
        const std::lock_guard lock(m_mutex);
        work = std::move(m_posted.front());
        m_posted.pop_front();
    }
    work();
}

void MainLoopClock::callAfter(double seconds, std::function<void()> work) {
    const auto delay = std::chrono::duration<double>(std::max(seconds, 0.0));
    const auto milliseconds = std::chrono::ceil<std::chrono::milliseconds>(delay);
    // Not QTimer::singleShot, whose functor outlives its context.
    auto *timer = new QTimer(&m_receiver);
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
