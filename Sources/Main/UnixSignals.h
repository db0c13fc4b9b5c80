#pragma once

#include <QSocketNotifier>

#include <functional>

/// Turns the signals that ask a program to end (terminate, interrupt, hang up) into one call on the main
/// thread.
class UnixSignals {
public:
    /// At most one object at a time.
    explicit UnixSignals(std::function<void()> onEnd);
    ~UnixSignals();

private:
    int m_descriptor;
    QSocketNotifier m_notifier;
};
