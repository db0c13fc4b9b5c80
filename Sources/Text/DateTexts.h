#pragma once

#include "Foundation/Date.h"

#include <QString>

#include <memory>

/// Dates in the words of a language, given by its code.
class DateTexts {
public:
    /// What the user's system says about times.
    struct Customs {
        /// Name of the time zone, such as "Europe/Bucharest"; the system's own when empty.
        QString timeZone;
        /// Whether a day has two times twelve hours.
        bool hasTwelveHours = false;
    };

    explicit DateTexts(Customs customs);
    ~DateTexts();

    /// Date and time of day in the usual, abbreviated form: "Nov 21, 2025, 07:26:41".
    QString dateAndTime(Date date, const QString &language) const;

    /// How long ago, or how far ahead, `date` lies in its largest unit: "2 hr. ago". Less than a minute is
    /// now.
    QString relative(Date date, Date now, const QString &language) const;

    /// "2025-11-21-072641", for names of files.
    QString fileStamp(Date date) const;

private:
    struct Formats;
    const Formats &formats(const QString &language) const;

    const Customs m_customs;
    struct Cache;
    const std::unique_ptr<Cache> m_cache;
};
