#include "TolmiApp/Settings/ProfileChangeTracker.h"

#include <utility>

ProfileChangeTracker::ProfileChangeTracker(
    std::function<TrackedProfile()> current, std::function<void()> onChange)
    : m_current(std::move(current))
    , m_onChange(std::move(onChange)) { }

void ProfileChangeTracker::start() {
    m_tracked = m_current();
    m_changesCount = true;
}

void ProfileChangeTracker::noticeAssignment() {
    if (!m_isBatchUpdate)
        finalize();
}

void ProfileChangeTracker::performBatchUpdate(const std::function<void()> &update) {
    const bool wasBatchUpdate = std::exchange(m_isBatchUpdate, true);
    update();
    m_isBatchUpdate = wasBatchUpdate;
    noticeAssignment();
}

void ProfileChangeTracker::performRepair(const std::function<void()> &update) {
    const bool didCount = std::exchange(m_changesCount, false);
    performBatchUpdate(update);
    m_changesCount = didCount;
    m_tracked = m_current();
}

void ProfileChangeTracker::finalize() {
    const TrackedProfile previous = std::exchange(m_tracked, m_current());
    if (m_tracked != previous && m_changesCount)
        m_onChange();
}
