#pragma once

#include "Foundation/Clock.h"

#include <QObject>

/// Real time and the event loop of the thread that created it.
class MainLoopClock final : public Clock {
public:
    Date now() const override;
    void post(std::function<void()> work) override;
    void callAfter(double seconds, std::function<void()> work) override;
    void block(double seconds) override;

private:
    QObject m_context;
};
