#pragma once

#include <QString>

#include <functional>
#include <optional>

/// What counts as the user's profile when its changes are counted.
struct TrackedProfile {
    QString displayName;
    QString avatarID;
    std::optional<QString> avatarImageRelativePath;
    std::optional<QString> avatarThumbnailRelativePath;

    friend bool operator==(const TrackedProfile &, const TrackedProfile &) = default;
};

/// Tells real changes of the profile from assignments that leave it as it was, and those of the user from
/// repairs.
class ProfileChangeTracker {
public:
    /// `current` gives the profile as it stands; `onChange` is called after each change that counts.
    ProfileChangeTracker(std::function<TrackedProfile()> current, std::function<void()> onChange);

    /// Changes count from now on.
    void start();
    /// A part of the profile was assigned.
    void noticeAssignment();
    /// What `update` assigns counts as one change.
    void performBatchUpdate(const std::function<void()> &update);
    /// What `update` assigns does not count.
    void performRepair(const std::function<void()> &update);

private:
    void finalize();

    const std::function<TrackedProfile()> m_current;
    const std::function<void()> m_onChange;
    TrackedProfile m_tracked;
    bool m_isBatchUpdate = false;
    bool m_changesCount = false;
};
