#pragma once

#include <QString>

/// Whether a platform operation can be used here, and if not, why, worded for the user.
struct Availability {
    /// Empty when available.
    QString reason;

    bool isAvailable() const { return reason.isEmpty(); }
    static Availability available() { return {}; }
    static Availability unavailable(QString reason) { return { std::move(reason) }; }
};
