#pragma once

#include <QString>

#include <functional>
#include <optional>

/// The parts of the profile whose changes are counted.
struct TrackedProfile {
    QString displayName;
    QString avatarID;
    std::optional<QString> avatarImageRelativePath;
    std::optional<QString> avatarThumbnailRelativePath;

    friend bool operator==(const TrackedProfile &, const TrackedProfile &) = default;
};

/// Detects real changes of the profile by the user, as opposed to assignments of equal values and repairs.
class ProfileChangeTracker {
public:
    /// `current` returns the current profile; `onChange` is called after each counted change.
    ProfileChangeTracker(std::function<TrackedProfile()> current, std::function<void()> onChange);

    /// Starts counting changes.
    void start();
    /// Call after a part of the profile was assigned.
    void noticeAssignment();
    /// Counts all assignments of `update` as one change.
    void performBatchUpdate(const std::function<void()> &update);
    /// Does not count the assignments of `update`.
    void performRepair(const std::function<void()> &update);

private:
    void finalize();

    const std::function<TrackedProfile()> m_current;
    const std::function<void()> m_onChange;
    TrackedProfile m_tracked;
    bool m_isBatchUpdate = false;
    bool m_changesCount = false;
};
