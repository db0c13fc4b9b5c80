#pragma once

#include "Foundation/Task.h"

#include <functional>

class Clock;

/// Runs `work` as soon as the dictation is over that `isUnderWay` tells of, at once if there is none. For
/// windows that open by themselves: one that comes to the front has the key watched anew, and a key that is
/// held then never gets its key-up; and it would get the text that was meant for another.
Task<> runBetweenDictations(std::function<bool()> isUnderWay, Clock &clock, std::function<void()> work);
