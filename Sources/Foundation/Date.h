#pragma once

// Before <compare>, which moc 6.4 cannot parse when it is the first header that it meets.
#include <QtGlobal>

#include <compare>

/// A point in time, independent of calendars and time zones.
struct Date {
    /// Seconds since 2001-01-01T00:00:00Z; negative before it. The history file stores the same number.
    double secondsSinceReferenceDate = 0;

    /// Seconds from the Unix epoch to the reference date.
    static constexpr double referenceDateSince1970 = 978307200.0;

    /// The time `seconds` after 1970-01-01T00:00:00Z.
    static constexpr Date fromSecondsSince1970(double seconds) {
        return { seconds - referenceDateSince1970 };
    }
    constexpr double secondsSince1970() const { return secondsSinceReferenceDate + referenceDateSince1970; }

    friend constexpr auto operator<=>(const Date &, const Date &) = default;
    /// Seconds between two times.
    friend constexpr double operator-(Date later, Date earlier) {
        return later.secondsSinceReferenceDate - earlier.secondsSinceReferenceDate;
    }
    friend constexpr Date operator+(Date date, double seconds) {
        return { date.secondsSinceReferenceDate + seconds };
    }
};
