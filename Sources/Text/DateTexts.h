#pragma once

#include "Foundation/Date.h"

#include <QString>

#include <memory>

/// Formats dates in a language, given by its code.
class DateTexts {
public:
    /// The user's system settings for times.
    struct Conventions {
        /// Name of the time zone, such as "Europe/Bucharest"; the system's if empty.
        QString timeZone;
        /// Whether the 12-hour clock is used.
        bool hasTwelveHours = false;
    };

    explicit DateTexts(Conventions conventions);
    ~DateTexts();

    /// Date and time of day in medium format: "Nov 21, 2025, 07:26:41".
    QString dateAndTime(Date date, const QString &language) const;

    /// Relative time in the largest unit: "2 hr. ago". Less than a minute is "now".
    QString relative(Date date, Date now, const QString &language) const;

    /// "2025-11-21-072641", for file names.
    QString fileStamp(Date date) const;

private:
    struct Formats;
    const Formats &formats(const QString &language) const;

    const Conventions m_conventions;
    struct Cache;
    const std::unique_ptr<Cache> m_cache;
};
