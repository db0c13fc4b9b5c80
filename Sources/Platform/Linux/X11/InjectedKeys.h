#pragma once

#include <chrono>
#include <mutex>
#include <vector>

/// The key presses that this program posts. They come back to whoever watches the keyboard, where they must
/// not be taken for the user's. Any thread.
class InjectedKeys {
public:
    using Instant = std::chrono::steady_clock::time_point;

    /// Notes a press that is about to be posted.
    void willPress(unsigned keyCode, Instant now);
    /// Whether a press that arrived is one of ours; each note serves once.
    bool take(unsigned keyCode, Instant now);

private:
    struct Press {
        unsigned keyCode;
        Instant posted;
    };
    std::mutex m_mutex;
    std::vector<Press> m_presses;
};
