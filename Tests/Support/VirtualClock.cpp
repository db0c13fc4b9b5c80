#include "Support/VirtualClock.h"

#include <algorithm>
#include <utility>

void VirtualClock::post(std::function<void()> work) {
    std::lock_guard lock(m_postedMutex);
    m_posted.push_back(std::move(work));
}

void VirtualClock::callAfter(double seconds, std::function<void()> work) {
    m_calls.emplace(m_now.secondsSinceReferenceDate + std::max(seconds, 0.0), std::move(work));
}

void VirtualClock::block(double seconds) {
    blockedSeconds.push_back(seconds);
    shift(seconds);
}

std::function<void()> VirtualClock::takePosted() {
    std::lock_guard lock(m_postedMutex);
    if (m_posted.empty())
        return {};
    auto work = std::move(m_posted.front());
    m_posted.pop_front();
    return work;
}

void VirtualClock::runPosted() {
    while (auto work = takePosted())
        work();
}

void VirtualClock::advance(double seconds) {
    // Half a microsecond of grace: repeated additions of decimal fractions must not leave a call just out of
    // reach.
    constexpr double grace = 5e-7;
    const double end = m_now.secondsSinceReferenceDate + seconds;
    runPosted();
    while (!m_calls.empty() && m_calls.begin()->first <= end + grace) {
        const auto due = m_calls.begin();
        auto work = std::move(due->second);
        m_now.secondsSinceReferenceDate
            = std::max(m_now.secondsSinceReferenceDate, std::min(due->first, end));
        m_calls.erase(due);
        work();
        runPosted();
    }
    m_now.secondsSinceReferenceDate = std::max(m_now.secondsSinceReferenceDate, end);
}

void VirtualClock::jump(double seconds) {
    shift(seconds);
    for (auto &[due, work] : std::exchange(m_calls, {}))
        m_calls.emplace(due + seconds, std::move(work));
}

void VirtualClock::forgetPending() {
    // Calls are taken out first: what an abandoned task releases may still ask this clock for something.
    while (takePosted() || !m_calls.empty())
        const auto dropped = std::exchange(m_calls, {});
}
