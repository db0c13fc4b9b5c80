#pragma once

#include <chrono>
#include <memory>

/// Waits until the disk has confirmed a file, up to a limit that can be set at any time. Thread-safe.
class DiskWait {
public:
    DiskWait();

    /// Returns 0, or the error number of `operation`, which is fsync or fdatasync. Also returns 0 when the
    /// limit is reached; the operation then continues in the background.
    int waitFor(int (*operation)(int), int file);

    /// Ends all waiting, present and later, after `time` from now.
    void limit(std::chrono::milliseconds time);

private:
    struct State;

    std::shared_ptr<State> m_state;
};
