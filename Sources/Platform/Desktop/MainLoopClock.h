#pragma once

#include "Foundation/Clock.h"

#include <QObject>

#include <deque>
#include <mutex>

/// Real time and the event loop of the thread that created it.
class MainLoopClock final : public Clock {
public:
    Date now() const override;
    void post(std::function<void()> work) override;
    void callAfter(double seconds, std::function<void()> work) override;
    void block(double seconds) override;

private:
    /// Gets an event for each piece of posted work.
    class Receiver : public QObject {
    public:
        explicit Receiver(MainLoopClock &clock)
            : m_clock(clock) { }
        bool event(QEvent *event) override;

    private:
        MainLoopClock &m_clock;
    };

    void runPosted();

    std::mutex m_mutex;
    /// Not left to the events: under a lock of the program's own, the thread sanitizer sees that the work is
    /// handed from thread to thread in order.
    std::deque<std::function<void()>> m_posted;
    Receiver m_receiver { *this };
};
