#pragma once

#include <functional>

/// Sees to it that the program runs once for each user and desktop session.
class SingleInstance {
public:
    virtual ~SingleInstance() = default;

    /// True for the first program, which from then on hears on the main thread of every later start. False
    /// for a later one, after the first has been told.
    virtual bool claim(std::function<void()> onLaterStart) = 0;
};
