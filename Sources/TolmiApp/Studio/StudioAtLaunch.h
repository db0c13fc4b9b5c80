#pragma once

#include "Foundation/Task.h"

#include <functional>

class Clock;
class LoginSession;

/// Calls `open` when a program that has just been launched turns out to be out of the user's reach.
///
/// The desktop has half a second to tell of its panel. One that the user has just logged in to may still
/// start the panel, and has ten seconds more.
Task<> openIfOutOfReach(
    Clock &clock, const LoginSession &session, std::function<bool()> isInReach, std::function<void()> open);
