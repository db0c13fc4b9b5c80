#pragma once

#include <chrono>
#include <memory>

/// Waits until the disk has a file for good, as long as that may take. Any thread.
class DiskWait {
public:
    DiskWait();

    /// Returns 0, or the error number of `operation`, which is fsync or fdatasync. It returns 0 too when it
    /// may not wait any longer; the operation then goes on by itself.
    int waitFor(int (*operation)(int), int file);

    /// Ends all waiting, present and later, after that time from now.
    void limit(std::chrono::milliseconds time);

private:
    struct State;

    std::shared_ptr<State> m_state;
};
