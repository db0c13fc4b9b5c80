#pragma once

#include <cstdint>

/// When this process was started, in microseconds since the machine was; 0 if that is not known. The desktop
/// starts the processes of a key binding in the order of the key's events, but they may reach the bus in
/// another.
uint64_t startOfThisProcess();
