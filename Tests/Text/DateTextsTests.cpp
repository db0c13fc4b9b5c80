#include "Support/Print.h"
#include "Text/DateTexts.h"

#include <gtest/gtest.h>

namespace {
// 2025-11-21T05:26:41Z
constexpr Date morning = Date::fromSecondsSince1970(1763702801);

const QString english = QStringLiteral("en");
const QString romanian = QStringLiteral("ro");

const DateTexts::Conventions bucharest { QStringLiteral("Europe/Bucharest"), false };

/// Replaces spaces of every width by plain ones, because libraries differ in which they use.
QString plain(QString text) {
    return text.replace(u'\u202F', u' ').replace(u'\u00A0', u' ');
}
} // namespace

TEST(DateTexts, DateAndTimeFollowTheLanguageAndTheZone) {
    const DateTexts texts(bucharest);
    EXPECT_EQ(plain(texts.dateAndTime(morning, english)), QStringLiteral("Nov 21, 2025, 07:26:41"));
    EXPECT_EQ(plain(texts.dateAndTime(morning, romanian)), QStringLiteral("21 nov. 2025, 07:26:41"));
}

TEST(DateTexts, UsesTheSystemsHourCycle) {
    const DateTexts texts({ QStringLiteral("Europe/Bucharest"), true });
    EXPECT_EQ(plain(texts.dateAndTime(morning, english)), QStringLiteral("Nov 21, 2025, 7:26:41 AM"));
}

TEST(DateTexts, HandlesDaylightSavingTime) {
    const DateTexts texts(bucharest);
    EXPECT_EQ(plain(texts.dateAndTime(Date::fromSecondsSince1970(1751328000), english)),
        QStringLiteral("Jul 1, 2025, 03:00:00"));
}

namespace {
struct Distance {
    double secondsAgo;
    QString inEnglish;
    QString inRomanian;
};

class RelativeDate : public testing::TestWithParam<Distance> { };
} // namespace

TEST_P(RelativeDate, UsesTheLargestUnit) {
    const DateTexts texts(bucharest);
    const Date date = morning + -GetParam().secondsAgo;
    EXPECT_EQ(plain(texts.relative(date, morning, english)), GetParam().inEnglish);
    EXPECT_EQ(plain(texts.relative(date, morning, romanian)), GetParam().inRomanian);
}

INSTANTIATE_TEST_SUITE_P(Text, RelativeDate,
    testing::Values(Distance { 0, QStringLiteral("now"), QStringLiteral("acum") },
        Distance { 59.9, QStringLiteral("now"), QStringLiteral("acum") },
        Distance { -59.9, QStringLiteral("now"), QStringLiteral("acum") },
        Distance { 60, QStringLiteral("1 min. ago"), QStringLiteral("acum 1 min.") },
        Distance { 3599, QStringLiteral("59 min. ago"), QStringLiteral("acum 59 min.") },
        Distance { 3600, QStringLiteral("1 hr. ago"), QStringLiteral("acum 1 h") },
        Distance { 86399, QStringLiteral("23 hr. ago"), QStringLiteral("acum 23 h") },
        Distance { 108000, QStringLiteral("1 day ago"), QStringLiteral("acum 1 zi") },
        Distance { 518400, QStringLiteral("6 days ago"), QStringLiteral("acum 6 zile") },
        Distance { 604800, QStringLiteral("1 wk. ago"), QStringLiteral("acum 1 săpt.") },
        Distance { 2629746, QStringLiteral("1 mo. ago"), QStringLiteral("acum 1 lună") },
        Distance { 94670856, QStringLiteral("3 yr. ago"), QStringLiteral("acum 3 ani") },
        Distance { -7200, QStringLiteral("in 2 hr."), QStringLiteral("peste 2 h") }));

TEST(DateTexts, FileStampsAreLocalAndPlain) {
    EXPECT_EQ(DateTexts(bucharest).fileStamp(morning), QStringLiteral("2025-11-21-072641"));
    EXPECT_EQ(
        DateTexts({ QStringLiteral("UTC"), true }).fileStamp(morning), QStringLiteral("2025-11-21-052641"));
}
