#pragma once

#include <atomic>
#include <cstdint>

/// What a test and the library that it has loaded into the program share: a file that both have mapped.
struct MainLoopReport {
    /// The longest time, in milliseconds, that the main loop did not turn, one that has not ended included.
    std::atomic<int64_t> longestPause;
    /// How many milliseconds the disk takes longer than it does to make a file durable.
    std::atomic<int64_t> syncDelay;

    /// The environment variable that names the file.
    static constexpr const char *pathVariable = "TOLMI_MAIN_LOOP_REPORT";
};
