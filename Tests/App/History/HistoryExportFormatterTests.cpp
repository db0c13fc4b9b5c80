#include "App/History/HistoryEntries.h"
#include "Support/Print.h"
#include "TolmiApp/History/HistoryExportFormatter.h"

#include <gtest/gtest.h>

namespace {
constexpr Date quarterPastNine = Date::fromSecondsSince1970(1772356500); // 2026-03-01T09:15:00Z

HistoryEntry pastedEntry() {
    HistoryEntry entry = fullHistoryEntry();
    entry.timestamp = quarterPastNine + 0.999;
    entry.pasteTimestamp = quarterPastNine + 1.25;
    return entry;
}

HistoryEntry entryWithoutPaste() {
    HistoryEntry entry = plainHistoryEntry();
    entry.timestamp = quarterPastNine;
    return entry;
}

/// The line with the time of an entry made at `date`.
QString timeLine(Date date) {
    HistoryEntry entry = plainHistoryEntry();
    entry.timestamp = date;
    return HistoryExportFormatter::format({ entry }).section(u'\n', 1, 1);
}
} // namespace

TEST(HistoryExportFormatter, WithoutEntriesTheTextIsEmpty) {
    EXPECT_EQ(HistoryExportFormatter::format({}), QString());
    EXPECT_EQ(HistoryExportFormatter::format({}, AppLanguage::Romanian), QString());
}

TEST(HistoryExportFormatter, WritesEveryLineOfAPastedEntry) {
    EXPECT_EQ(HistoryExportFormatter::format({ pastedEntry() }),
        QStringLiteral("=== Entry 1 ===\n"
                       "Timestamp: 2026-03-01T09:15:00Z\n"
                       "Language: ro\n"
                       "Paste Target App: Notes\n"
                       "Paste Target Bundle ID: com.apple.Notes\n"
                       "Paste Timestamp: 2026-03-01T09:15:01Z\n"
                       "Raw:\n"
                       "salut lume\n"
                       "\n"
                       "Refined:\n"
                       "Salut, lume!\n"
                       "\n"));
}

TEST(HistoryExportFormatter, NumbersTheEntriesInTheOrderGiven) {
    HistoryEntry second = entryWithoutPaste();
    second.refinedText = QStringLiteral("one\ntwo");
    EXPECT_EQ(HistoryExportFormatter::format({ entryWithoutPaste(), second }),
        QStringLiteral("=== Entry 1 ===\n"
                       "Timestamp: 2026-03-01T09:15:00Z\n"
                       "Language: ro\n"
                       "Raw:\n"
                       "salut lume\n"
                       "\n"
                       "Refined:\n"
                       "Salut, lume!\n"
                       "\n"
                       "=== Entry 2 ===\n"
                       "Timestamp: 2026-03-01T09:15:00Z\n"
                       "Language: ro\n"
                       "Raw:\n"
                       "salut lume\n"
                       "\n"
                       "Refined:\n"
                       "one\n"
                       "two\n"
                       "\n"));
}

TEST(HistoryExportFormatter, OnlyTheLabelsFollowTheLanguage) {
    EXPECT_EQ(HistoryExportFormatter::format({ pastedEntry() }, AppLanguage::Romanian),
        QStringLiteral("=== Intrare 1 ===\n"
                       "Timestamp: 2026-03-01T09:15:00Z\n"
                       "Limba: ro\n"
                       "Aplicatie destinatie lipire: Notes\n"
                       "Bundle ID destinatie: com.apple.Notes\n"
                       "Timestamp lipire: 2026-03-01T09:15:01Z\n"
                       "Brut:\n"
                       "salut lume\n"
                       "\n"
                       "Rafinat:\n"
                       "Salut, lume!\n"
                       "\n"));
}

TEST(HistoryExportFormatter, AnEmptyTargetKeepsItsNameLineAlone) {
    HistoryEntry entry = entryWithoutPaste();
    entry.pasteTargetAppName = QString();
    entry.pasteTargetBundleID = QString();
    EXPECT_EQ(HistoryExportFormatter::format({ entry }),
        QStringLiteral("=== Entry 1 ===\n"
                       "Timestamp: 2026-03-01T09:15:00Z\n"
                       "Language: ro\n"
                       "Paste Target App: \n"
                       "Raw:\n"
                       "salut lume\n"
                       "\n"
                       "Refined:\n"
                       "Salut, lume!\n"
                       "\n"));
}

TEST(HistoryExportFormatter, EmptyTextsKeepTheirLines) {
    HistoryEntry entry = entryWithoutPaste();
    entry.rawText.clear();
    entry.refinedText.clear();
    EXPECT_TRUE(HistoryExportFormatter::format({ entry }).endsWith(u"\nRaw:\n\n\nRefined:\n\n\n"));
}

TEST(HistoryExportFormatter, APlaceholderInATextStandsAsItIs) {
    HistoryEntry entry = pastedEntry();
    entry.rawText = QStringLiteral("%1 %2");
    entry.pasteTargetAppName = QStringLiteral("%2");
    const QString text = HistoryExportFormatter::format({ entry });
    EXPECT_TRUE(text.contains(u"\nPaste Target App: %2\n"));
    EXPECT_TRUE(text.contains(u"\nRaw:\n%1 %2\n"));
}

TEST(HistoryExportFormatter, CutsTheTimeToWholeSeconds) {
    EXPECT_EQ(timeLine(Date::fromSecondsSince1970(-0.5)), u"Timestamp: 1969-12-31T23:59:59Z");
    EXPECT_EQ(timeLine(Date { 0 }), u"Timestamp: 2001-01-01T00:00:00Z");
    EXPECT_EQ(timeLine(Date { 0.9999999 }), u"Timestamp: 2001-01-01T00:00:00Z");
}

TEST(HistoryExportFormatter, BoundsTimesThatNoCalendarShows) {
    EXPECT_EQ(timeLine(Date { 1e300 }), u"Timestamp: 9999-12-31T23:59:59Z");
    EXPECT_EQ(timeLine(Date { -1e300 }), u"Timestamp: 0001-01-01T00:00:00Z");
}
