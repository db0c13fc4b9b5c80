#pragma once

#include "TolmiApp/Contracts/FlowCollaborators.h"

#include <memory>

class Clock;

/// Runs `work` as soon as the dictation key is up, at once if it is. For windows that open by themselves: one
/// that comes to the front has the key watched anew, and a key that is held then never gets its key-up.
Task<> runWhenKeyIsUp(std::shared_ptr<HotkeyManager> hotkey, Clock &clock, std::function<void()> work);
