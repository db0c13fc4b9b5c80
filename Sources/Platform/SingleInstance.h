#pragma once

#include <functional>

/// Ensures that the program runs once per user and desktop session.
class SingleInstance {
public:
    virtual ~SingleInstance() = default;

    /// True for the first instance, whose `onLaterStart` is then called on the main thread at every later
    /// start. False for a later one, after it has notified the first.
    virtual bool claim(std::function<void()> onLaterStart) = 0;
};
