#pragma once

#include <QString>

/// Whether an operation of the platform can be used here, and if not, why, in words that a user understands.
struct Availability {
    /// Empty when available.
    QString reason;

    bool isAvailable() const { return reason.isEmpty(); }
    static Availability available() { return {}; }
    static Availability unavailable(QString reason) { return { std::move(reason) }; }
};
