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

std::unique_ptr<icu::TimeZone> zoneOf(const DateTexts::Customs &customs) {
    return std::unique_ptr<icu::TimeZone>(customs.timeZone.isEmpty()
            ? icu::TimeZone::createDefault()
            : icu::TimeZone::createTimeZone(toICU(customs.timeZone)));
}

icu::Locale localeOf(const QString &language) {
    return icu::Locale(language.toLatin1().constData());
}

/// The parts of a date with its time of day. The locale writes them and joins them; the system says how hours
/// are counted.
struct MediumFormat {
    MediumFormat(const QString &language, const DateTexts::Customs &customs) {
        const icu::Locale locale = localeOf(language);
        UErrorCode status = U_ZERO_ERROR;
        const std::unique_ptr<icu::DateTimePatternGenerator> patterns(
            icu::DateTimePatternGenerator::createInstance(locale, status));
        const icu::UnicodeString hours = customs.hasTwelveHours ? u"hmsa" : u"Hms";
        date.reset(icu::DateFormat::createDateInstance(icu::DateFormat::kMedium, locale));
        time = std::make_unique<icu::SimpleDateFormat>(
            patterns->getBestPattern(hours, status), locale, status);
        date->adoptTimeZone(zoneOf(customs).release());
        time->adoptTimeZone(zoneOf(customs).release());
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

/// From the largest on; a month and a year are those of the mean Gregorian calendar.
constexpr std::array units {
    Unit { 31556952, UDAT_REL_UNIT_YEAR },
    Unit { 2629746, UDAT_REL_UNIT_MONTH },
    Unit { 604800, UDAT_REL_UNIT_WEEK },
    Unit { 86400, UDAT_REL_UNIT_DAY },
    Unit { 3600, UDAT_REL_UNIT_HOUR },
    Unit { 60, UDAT_REL_UNIT_MINUTE },
};
} // namespace

/// What is slow to make, for one language.
struct DateTexts::Formats {
    MediumFormat medium;
    std::unique_ptr<icu::RelativeDateTimeFormatter> relative;
};

struct DateTexts::Cache {
    std::map<QString, Formats> formats;
};

DateTexts::DateTexts(Customs customs)
    : m_customs(std::move(customs))
    , m_cache(std::make_unique<Cache>()) { }

DateTexts::~DateTexts() = default;

const DateTexts::Formats &DateTexts::formats(const QString &language) const {
    const auto known = m_cache->formats.find(language);
    if (known != m_cache->formats.end())
        return known->second;
    Formats made { { language, m_customs }, relativeFormat(language) };
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
        // In numbers: "yesterday" would be wrong for what lies 30 hours back.
        if (count != 0)
            return fromICU(format.formatNumeric(count, unit.unit, text, status));
    }
    return fromICU(format.format(0, UDAT_REL_UNIT_SECOND, text, status));
}

QString DateTexts::fileStamp(Date date) const {
    UErrorCode status = U_ZERO_ERROR;
    icu::SimpleDateFormat format(icu::UnicodeString(u"yyyy-MM-dd-HHmmss"), icu::Locale::getRoot(), status);
    format.adoptTimeZone(zoneOf(m_customs).release());
    return fromICU(formatted(format, date));
}
