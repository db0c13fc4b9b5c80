#include "Platform/Linux/X11/InjectedKeys.h"

#include <algorithm>

namespace {
/// A press that nobody watched must not swallow one of the user's later.
constexpr std::chrono::seconds longestWay { 1 };
} // namespace

void InjectedKeys::willPress(unsigned keyCode, Instant now) {
    std::lock_guard lock(m_mutex);
    m_presses.push_back({ keyCode, now });
}

bool InjectedKeys::take(unsigned keyCode, Instant now) {
    std::lock_guard lock(m_mutex);
    std::erase_if(m_presses, [now](const Press &press) { return now - press.posted > longestWay; });
    const auto ours = std::ranges::find(m_presses, keyCode, &Press::keyCode);
    if (ours == m_presses.end())
        return false;
    m_presses.erase(ours);
    return true;
}
