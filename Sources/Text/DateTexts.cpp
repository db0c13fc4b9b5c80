#include "Text/DateTexts.h"

#include "Text/IcuText.h"

#include <unicode/dtptngen.h>
#include <unicode/reldatefmt.h>
#include <unicode/simpleformatter.h>
#include <unicode/smpdtfmt.h>
#include <unicode/timezone.h>

#include <array>
#include <cmath>
#include <map>

namespace {
icu::UnicodeString toICU(const QString &text) {
    return icu::UnicodeString(reinterpret_cast<const char16_t *>(text.utf16()), int32_t(text.size()));
}

std::unique_ptr<icu::TimeZone> zoneOf(const DateTexts::Conventions &conventions) {
    return std::unique_ptr<icu::TimeZone>(conventions.timeZone.isEmpty()
            ? icu::TimeZone::createDefault()
            : icu::TimeZone::createTimeZone(toICU(conventions.timeZone)));
}

icu::Locale localeOf(const QString &language) {
    return icu::Locale(language.toLatin1().constData());
}

/// Formats a date with its time of day. The locale decides the format, the system the hour cycle.
struct MediumFormat {
    MediumFormat(const QString &language, const DateTexts::Conventions &conventions) {
        const icu::Locale locale = localeOf(language);
        UErrorCode status = U_ZERO_ERROR;
        const std::unique_ptr<icu::DateTimePatternGenerator> patterns(
            icu::DateTimePatternGenerator::createInstance(locale, status));
        const icu::UnicodeString hours = conventions.hasTwelveHours ? u"hmsa" : u"Hms";
        date.reset(icu::DateFormat::createDateInstance(icu::DateFormat::kMedium, locale));
        time = std::make_unique<icu::SimpleDateFormat>(
            patterns->getBestPattern(hours, status), locale, status);
        date->adoptTimeZone(zoneOf(conventions).release());
        time->adoptTimeZone(zoneOf(conventions).release());
        // {0} is the time and {1} the date.
        glue = std::make_unique<icu::SimpleFormatter>(patterns->getDateTimeFormat(), status);
    }

    std::unique_ptr<icu::DateFormat> date;
    std::unique_ptr<icu::DateFormat> time;
    std::unique_ptr<icu::SimpleFormatter> glue;
};

std::unique_ptr<icu::RelativeDateTimeFormatter> relativeFormat(const QString &language) {
    UErrorCode status = U_ZERO_ERROR;
    return std::make_unique<icu::RelativeDateTimeFormatter>(
        localeOf(language), nullptr, UDAT_STYLE_SHORT, UDISPCTX_CAPITALIZATION_NONE, status);
}

icu::UnicodeString formatted(const icu::DateFormat &format, Date date) {
    icu::UnicodeString text;
    return format.format(UDate(date.secondsSince1970() * 1000), text);
}

struct Unit {
    double seconds;
    URelativeDateTimeUnit unit;
};

/// Largest first; month and year are means of the Gregorian calendar.
constexpr std::array units {
    Unit { 31556952, UDAT_REL_UNIT_YEAR },
    Unit { 2629746, UDAT_REL_UNIT_MONTH },
    Unit { 604800, UDAT_REL_UNIT_WEEK },
    Unit { 86400, UDAT_REL_UNIT_DAY },
    Unit { 3600, UDAT_REL_UNIT_HOUR },
    Unit { 60, UDAT_REL_UNIT_MINUTE },
};
} // namespace

/// The formatters of one language, which are slow to create.
struct DateTexts::Formats {
    MediumFormat medium;
    std::unique_ptr<icu::RelativeDateTimeFormatter> relative;
};

struct DateTexts::Cache {
    std::map<QString, Formats> formats;
};

DateTexts::DateTexts(Conventions conventions)
    : m_conventions(std::move(conventions))
    , m_cache(std::make_unique<Cache>()) { }

DateTexts::~DateTexts() = default;

const DateTexts::Formats &DateTexts::formats(const QString &language) const {
    const auto known = m_cache->formats.find(language);
    if (known != m_cache->formats.end())
        return known->second;
    Formats made { { language, m_conventions }, relativeFormat(language) };
    return m_cache->formats.emplace(language, std::move(made)).first->second;
}

QString DateTexts::dateAndTime(Date date, const QString &language) const {
    const MediumFormat &medium = formats(language).medium;
    icu::UnicodeString text;
    UErrorCode status = U_ZERO_ERROR;
    return fromICU(
        medium.glue->format(formatted(*medium.time, date), formatted(*medium.date, date), text, status));
}

QString DateTexts::relative(Date date, Date now, const QString &language) const {
    const double ahead = date - now;
    const icu::RelativeDateTimeFormatter &format = *formats(language).relative;
    icu::UnicodeString text;
    UErrorCode status = U_ZERO_ERROR;
    for (const Unit &unit : units) {
        const double count = std::trunc(ahead / unit.seconds);
        // Always numeric: "yesterday" would be wrong for 30 hours ago.
        if (count != 0)
            return fromICU(format.formatNumeric(count, unit.unit, text, status));
    }
    return fromICU(format.format(0, UDAT_REL_UNIT_SECOND, text, status));
}

QString DateTexts::fileStamp(Date date) const {
    UErrorCode status = U_ZERO_ERROR;
    icu::SimpleDateFormat format(icu::UnicodeString(u"yyyy-MM-dd-HHmmss"), icu::Locale::getRoot(), status);
    format.adoptTimeZone(zoneOf(m_conventions).release());
    return fromICU(formatted(format, date));
}
