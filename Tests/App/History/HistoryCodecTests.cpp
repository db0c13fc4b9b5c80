#include "App/History/HistoryEntries.h"
#include "Support/Print.h"
#include "TolmiApp/History/HistoryCodec.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace {
using Entries = QList<HistoryEntry>;

/// The required fields of plainHistoryEntry(), without the braces.
const QByteArray requiredFields = R"("id":"0D5B6F0E-8E44-4C3B-9B1D-3A6E1C2F7A10","timestamp":769156800.25,)"
                                  R"("rawText":"salut lume","refinedText":"Salut, lume!","language":"ro")";

/// A file with one entry: the required fields and `more`.
QByteArray fileWith(const QByteArray &more) {
    return "[{" + requiredFields + ',' + more + "}]";
}

/// The file of one plain entry with `found` replaced.
QByteArray fileReplacing(const QByteArray &found, const QByteArray &replacement) {
    QByteArray json = "[{" + requiredFields + "}]";
    EXPECT_TRUE(json.contains(found)) << found.toStdString();
    return json.replace(found, replacement);
}

QByteArray repeated(const char *text, qsizetype count) {
    return QByteArray(text).repeated(count);
}

/// `text` as it stands in the file, without its quotes.
QByteArray encodedText(const QString &text) {
    HistoryEntry entry = plainHistoryEntry();
    entry.rawText = text;
    const QByteArray json = HistoryCodec::encode({ entry }).value();
    const qsizetype start = json.indexOf(R"("rawText":")") + 11;
    return json.mid(start, json.indexOf(R"(","refinedText")") - start);
}

QByteArray encodedNumber(double number) {
    HistoryEntry entry = plainHistoryEntry();
    entry.timestamp = { number };
    const QByteArray json = HistoryCodec::encode({ entry }).value();
    const qsizetype start = json.indexOf(R"("timestamp":)") + 12;
    return json.mid(start, json.indexOf(',', start) - start);
}
} // namespace

TEST(HistoryCodec, WritesNoEntriesAsAnEmptyArray) {
    EXPECT_EQ(HistoryCodec::encode({}), QByteArray("[]"));
}

TEST(HistoryCodec, LeavesAbsentFieldsOut) {
    EXPECT_EQ(HistoryCodec::encode({ plainHistoryEntry() }).value().toStdString(),
        (fileWith(R"("qualityPass":"single","isPinned":false)")).toStdString());
}

TEST(HistoryCodec, WritesEveryField) {
    EXPECT_EQ(HistoryCodec::encode({ fullHistoryEntry(), plainHistoryEntry() }).value().toStdString(),
        ("[{" + requiredFields
            + R"(,"durationSeconds":4.2,"pasteTargetAppName":"Notes","pasteTargetBundleID":"com.apple.Notes",)"
              R"("pasteTimestamp":769156800.75,)"
              R"("audioFileRelativePath":"recording-0D5B6F0E-8E44-4C3B-9B1D-3A6E1C2F7A10.wav",)"
              R"("qualityPass":"fallback","isPinned":true},{)"
            + requiredFields + R"(,"qualityPass":"single","isPinned":false}])")
            .toStdString());
}

TEST(HistoryCodec, EscapesWhatJsonForbidsAndTheSlash) {
    EXPECT_EQ(encodedText(QStringLiteral("a/b")), R"(a\/b)");
    EXPECT_EQ(encodedText(QStringLiteral("\"\\")), R"(\"\\)");
    EXPECT_EQ(encodedText(QStringLiteral("\b\f\n\r\t")), R"(\b\f\n\r\t)");
    EXPECT_EQ(encodedText(QString(QChar(u'\0')) + QChar(0x1B) + QChar(0x1F)), R"(\u0000\u001b\u001f)");
    EXPECT_EQ(encodedText(QStringLiteral("\u007f\u2028ă😀'<")), QByteArray("\u007f\u2028ă😀'<"));
    EXPECT_EQ(encodedText({}), "");
}

TEST(HistoryCodec, ReplacesHalfASurrogatePair) {
    EXPECT_EQ(encodedText(QStringLiteral("a") + QChar(0xD83D)), QByteArray("a\uFFFD"));
    EXPECT_EQ(encodedText(QChar(0xDE00) + QStringLiteral("a")), QByteArray("\uFFFDa"));
}

TEST(HistoryCodec, WritesTheShortestNumberThatReadsBack) {
    EXPECT_EQ(encodedNumber(0), "0");
    EXPECT_EQ(encodedNumber(769000000), "769000000");
    EXPECT_EQ(encodedNumber(-1.5), "-1.5");
    EXPECT_EQ(encodedNumber(0.1), "0.1");
    EXPECT_EQ(encodedNumber(0.1 + 0.2), "0.30000000000000004");
    EXPECT_EQ(encodedNumber(0.0001), "0.0001");
    EXPECT_EQ(encodedNumber(1e16), "1e+16");
    EXPECT_EQ(encodedNumber(1.25e-7), "1.25e-07");
    EXPECT_EQ(encodedNumber(std::numeric_limits<double>::max()), "1.7976931348623157e+308");
}

TEST(HistoryCodec, CannotWriteWhatIsNoNumber) {
    for (const double number : { std::numeric_limits<double>::infinity(), std::nan("") }) {
        HistoryEntry entry = plainHistoryEntry();
        entry.durationSeconds = number;
        EXPECT_EQ(HistoryCodec::encode({ plainHistoryEntry(), entry }), std::nullopt);
    }
}

TEST(HistoryCodec, PrependingIsWritingAllAgain) {
    QByteArray json = HistoryCodec::encode({}).value();
    Entries entries;
    for (const HistoryEntry &entry : { plainHistoryEntry(), fullHistoryEntry(), plainHistoryEntry() }) {
        entries.prepend(entry);
        ASSERT_TRUE(HistoryCodec::prepend(json, entry));
        EXPECT_EQ(json, HistoryCodec::encode(entries));
    }
}

TEST(HistoryCodec, ReplacingIsWritingAllAgain) {
    QList<HistoryEntry> entries;
    for (const char *text : { "first", "\"id\":\"[{,}]\"", "a\\/\n", "last" }) {
        HistoryEntry entry { { .rawText = QString::fromUtf8(text) }, QUuid::createUuid(), { 1.5 } };
        entries.append(entry);
    }
    for (qsizetype index = 0; index < entries.size(); ++index) {
        QByteArray json = HistoryCodec::encode(entries).value();
        QList<HistoryEntry> changed = entries;
        changed[index].isPinned = true;
        ASSERT_TRUE(HistoryCodec::replace(json, entries[index], changed[index]));
        EXPECT_EQ(json, HistoryCodec::encode(changed));
        changed.removeAt(index);
        json = HistoryCodec::encode(entries).value();
        ASSERT_TRUE(HistoryCodec::replace(json, entries[index], std::nullopt));
        EXPECT_EQ(json, HistoryCodec::encode(changed));
    }
    QByteArray json = HistoryCodec::encode(entries).value();
    for (const HistoryEntry &entry : entries)
        ASSERT_TRUE(HistoryCodec::replace(json, entry, std::nullopt));
    EXPECT_EQ(json, "[]");
}

TEST(HistoryCodec, ReplacingWhatIsNotThereOrCannotBeWrittenChangesNothing) {
    const HistoryEntry entry { { .rawText = QStringLiteral("there") }, QUuid::createUuid(), { 1 } };
    HistoryEntry other = entry;
    other.id = QUuid::createUuid();
    HistoryEntry endless = entry;
    endless.durationSeconds = std::numeric_limits<double>::infinity();
    const QByteArray before = HistoryCodec::encode({ entry }).value();
    QByteArray json = before;
    EXPECT_FALSE(HistoryCodec::replace(json, other, entry));
    EXPECT_FALSE(HistoryCodec::replace(json, other, std::nullopt));
    EXPECT_FALSE(HistoryCodec::replace(json, entry, endless));
    EXPECT_FALSE(HistoryCodec::replace(json, endless, entry));
    EXPECT_EQ(json, before);
}

TEST(HistoryCodec, PrependingWhatCannotBeWrittenChangesNothing) {
    QByteArray json = HistoryCodec::encode({ plainHistoryEntry() }).value();
    HistoryEntry entry = plainHistoryEntry();
    entry.timestamp = { std::nan("") };
    EXPECT_FALSE(HistoryCodec::prepend(json, entry));
    EXPECT_EQ(json, HistoryCodec::encode({ plainHistoryEntry() }));
}

TEST(HistoryCodec, ReadsWhatItWrote) {
    std::mt19937_64 random(7);
    const QString characters = QStringLiteral("a/\"\\\n\t ăȘ€\u0001\u2028");
    for (int round = 0; round < 200; ++round) {
        HistoryEntry entry = random() % 2 ? fullHistoryEntry() : plainHistoryEntry();
        entry.id = QUuid::createUuid();
        entry.timestamp = { double(int64_t(random())) / double(1 + random() % 1000) };
        entry.rawText.clear();
        while (random() % 40)
            entry.rawText += characters[qsizetype(random() % size_t(characters.size()))];
        const Entries entries { entry, fullHistoryEntry(), entry };
        EXPECT_EQ(HistoryCodec::decode(HistoryCodec::encode(entries).value()), entries);
    }
}

struct Accepted {
    const char *what;
    QByteArray file;
    Entries entries;
};

class HistoryCodecAccepts : public testing::TestWithParam<Accepted> { };

TEST_P(HistoryCodecAccepts, TheFile) {
    const auto entries = HistoryCodec::decode(GetParam().file);
    ASSERT_TRUE(entries.has_value());
    EXPECT_EQ(*entries, GetParam().entries);
}

namespace {
template <typename Change>
Entries changedEntry(Change change) {
    HistoryEntry entry = plainHistoryEntry();
    change(entry);
    return { entry };
}

std::vector<Accepted> acceptedFiles() {
    const Entries plain { plainHistoryEntry() };
    const auto rawText = [](const QString &text) {
        return changedEntry([&text](HistoryEntry &entry) { entry.rawText = text; });
    };
    const auto duration = [](double seconds) {
        return changedEntry([seconds](HistoryEntry &entry) { entry.durationSeconds = seconds; });
    };
    return {
        { "noEntries", "[]", {} },
        { "whiteSpaceAround", " \r\n\t[ ] \n", {} },
        { "onlyRequiredKeys", "[{" + requiredFields + "}]", plain },
        { "equalIdsStay", "[{" + requiredFields + "},{" + requiredFields + "}]", plain + plain },
        { "nullsOfOptionalKeys",
            fileWith(
                R"("durationSeconds":null,"pasteTargetAppName":null,"pasteTargetBundleID":null,)"
                R"("pasteTimestamp":null,"audioFileRelativePath":null,"qualityPass":null,"isPinned":null)"),
            plain },
        { "anotherOrderOfKeys",
            R"([{"language":"ro","refinedText":"Salut, lume!","rawText":"salut lume",)"
            R"("timestamp":769156800.25,"id":"0D5B6F0E-8E44-4C3B-9B1D-3A6E1C2F7A10"}])",
            plain },
        { "lowerCaseId", fileReplacing("0D5B6F0E-8E44", "0d5b6f0e-8e44"), plain },
        { "theNullId",
            fileReplacing("0D5B6F0E-8E44-4C3B-9B1D-3A6E1C2F7A10", "00000000-0000-0000-0000-000000000000"),
            changedEntry([](HistoryEntry &entry) { entry.id = QUuid(); }) },
        { "unknownKeys", fileWith(R"("extra":{"id":[1,{"rawText":null}],"":true},"more":[],"n":-0.5e1)"),
            plain },
        { "escapedKey", fileReplacing(R"("language")", R"("l\u0061nguage")"), plain },
        { "repeatedKeyCountsOnce", fileWith(R"("rawText":"second","isPinned":false,"isPinned":true)"),
            plain },
        { "repeatedKeyOfAnotherType", fileWith(R"("timestamp":"2026-01-01T00:00:00Z")"), plain },
        { "everyEscape", fileReplacing("salut lume", R"(\"\\\/\b\f\n\r\t\u0219\u00e9)"),
            rawText(QStringLiteral("\"\\/\b\f\n\r\tșé")) },
        { "surrogatePair", fileReplacing("salut lume", R"(\uD83D\ude00)"), rawText(QStringLiteral("😀")) },
        { "zeroCharacter", fileReplacing("salut lume", R"(a\u0000b)"),
            rawText(QStringLiteral("a") + QChar(u'\0') + QStringLiteral("b")) },
        { "rawDelete", fileReplacing("salut lume", "\x7f"), rawText(QStringLiteral("\u007f")) },
        { "hangul", fileReplacing("salut lume", "힣"), rawText(QStringLiteral("힣")) },
        { "emptyTexts", fileReplacing("salut lume", ""), rawText({}) },
        { "wholeNumber", fileWith(R"("durationSeconds":4)"), duration(4) },
        { "exponent", fileWith(R"("durationSeconds":4.2E-1)"), duration(0.42) },
        { "everyDigitCounts", fileWith(R"("durationSeconds":0.30000000000000004)"), duration(0.1 + 0.2) },
        { "numberBelowTheSmallest", fileWith(R"("durationSeconds":1e-4000)"), duration(0) },
        { "numberOfManyDigits", fileWith(R"("durationSeconds":1)" + repeated("0", 300)), duration(1e300) },
        { "byteOrderMark", QByteArray("\xEF\xBB\xBF[]"), {} },
        { "unknownKeyNestedDeep", fileWith(R"("extra":)" + repeated("[", 510) + repeated("]", 510)), plain },
    };
}

std::vector<std::pair<const char *, QByteArray>> malformedFiles() {
    return {
        { "empty", "" },
        { "whiteSpaceAlone", " \n" },
        { "byteOrderMarkAlone", "\xEF\xBB\xBF" },
        { "twoByteOrderMarks", "\xEF\xBB\xBF\xEF\xBB\xBF[]" },
        { "utf16", QByteArray("[\0]\0", 4) },
        { "theNull", "null" },
        { "anObject", "{" + requiredFields + "}" },
        { "aText", R"("[]")" },
        { "arrayOfNull", "[null]" },
        { "arrayOfNumbers", "[1]" },
        { "arrayInTheArray", "[[]]" },
        { "emptyObject", "[{}]" },
        { "cutOff", "[{" + requiredFields },
        { "unclosedText", R"([{"id":"0D5B)" },
        { "twoArrays", "[][]" },
        { "textBehindTheEnd", "[] x" },
        { "zeroByteBehindTheEnd", QByteArray("[]\0", 3) },
        { "zeroByteAndMoreBehindTheEnd", QByteArray("[]\0[]", 5) },
        { "commaAtTheEnd", "[{" + requiredFields + "},]" },
        { "commaInTheObject", "[{" + requiredFields + ",}]" },
        { "missingComma", "[{" + requiredFields + "}{" + requiredFields + "}]" },
        { "missingColon", fileReplacing(R"("language":)", R"("language" )") },
        { "comment", "[]// none" },
        { "singleQuotes", fileReplacing(R"("ro")", "'ro'") },
        { "keyWithoutQuotes", fileReplacing(R"("language")", "language") },
        { "capitalLiteral", fileWith(R"("isPinned":TRUE)") },
        { "missingId", R"([{"timestamp":1,"rawText":"","refinedText":"","language":"ro"}])" },
        { "missingTimestamp", fileReplacing(R"("timestamp")", R"("timestamps")") },
        { "missingRawText", fileReplacing(R"("rawText")", R"("rawtext")") },
        { "missingRefinedText", fileReplacing(R"("refinedText")", R"("text")") },
        { "missingLanguage", fileReplacing(R"(,"language":"ro")", "") },
        { "requiredNull", fileReplacing(R"("salut lume")", "null") },
        { "secondEntryBad", "[{" + requiredFields + "},{}]" },
        { "idWithBraces",
            fileReplacing("0D5B6F0E-8E44-4C3B-9B1D-3A6E1C2F7A10", "{0D5B6F0E-8E44-4C3B-9B1D-3A6E1C2F7A10}") },
        { "idWithoutDashes",
            fileReplacing("0D5B6F0E-8E44-4C3B-9B1D-3A6E1C2F7A10", "0D5B6F0E8E444C3B9B1D3A6E1C2F7A10") },
        { "idWithDashesElsewhere",
            fileReplacing("0D5B6F0E-8E44-4C3B-9B1D-3A6E1C2F7A10", "0D5B6F0-E8E44-4C3B-9B1D-3A6E1C2F7A10") },
        { "idWithAnotherLetter", fileReplacing("7A10", "7A1G") },
        { "idTooLong", fileReplacing("7A10", "7A100") },
        { "idAsNumber", fileReplacing(R"("0D5B6F0E-8E44-4C3B-9B1D-3A6E1C2F7A10")", "1") },
        { "timestampAsIso8601", fileReplacing("769156800.25", R"("2025-05-17T07:20:00Z")") },
        { "timestampAsText", fileReplacing("769156800.25", R"("769156800.25")") },
        { "numberAsText", fileReplacing(R"("salut lume")", "1") },
        { "objectAsText", fileReplacing(R"("salut lume")", "{}") },
        { "arrayAsText", fileReplacing(R"("salut lume")", "[]") },
        { "textAsDuration", fileWith(R"("durationSeconds":"4.2")") },
        { "booleanAsDuration", fileWith(R"("durationSeconds":true)") },
        { "numberAsAppName", fileWith(R"("pasteTargetAppName":1)") },
        { "textAsPasteTimestamp", fileWith(R"("pasteTimestamp":"now")") },
        { "unknownQualityPass", fileWith(R"("qualityPass":"triple")") },
        { "qualityPassOfAnotherCase", fileWith(R"("qualityPass":"Single")") },
        { "qualityPassAsNumber", fileWith(R"("qualityPass":0)") },
        { "oneAsBoolean", fileWith(R"("isPinned":1)") },
        { "textAsBoolean", fileWith(R"("isPinned":"true")") },
        { "plusSign", fileWith(R"("durationSeconds":+1)") },
        { "leadingZero", fileWith(R"("durationSeconds":01)") },
        { "pointWithoutDigits", fileWith(R"("durationSeconds":1.)") },
        { "digitsWithoutZero", fileWith(R"("durationSeconds":.5)") },
        { "exponentWithoutDigits", fileWith(R"("durationSeconds":1e)") },
        { "notANumber", fileWith(R"("durationSeconds":NaN)") },
        { "infinity", fileWith(R"("durationSeconds":Infinity)") },
        { "hexadecimal", fileWith(R"("durationSeconds":0x10)") },
        { "numberTooLarge", fileWith(R"("durationSeconds":1e309)") },
        { "numberJustTooLarge", fileWith(R"("durationSeconds":1.7976931348623159e308)") },
        { "exponentTooLarge", fileWith(R"("durationSeconds":1e99999999999999999999)") },
        { "tooManyDigits", fileWith(R"("durationSeconds":1)" + repeated("0", 400)) },
        { "ignoredNumberTooLarge", fileWith(R"("extra":1e309)") },
        { "loneHighSurrogate", fileReplacing("salut lume", R"(\uD83D)") },
        { "highSurrogateBeforeALetter", fileReplacing("salut lume", R"(\uD83Dabcdef)") },
        { "loneLowSurrogate", fileReplacing("salut lume", R"(\uDE00)") },
        { "loneLowSurrogateInAKey", fileWith(R"("\uDC00":1)") },
        { "loneLowSurrogateInAnIgnoredText", fileWith(R"("extra":["\uDFFF"])") },
        { "surrogatesTheWrongWay", fileReplacing("salut lume", R"(\uDE00\uD83D)") },
        { "unknownEscape", fileReplacing("salut lume", R"(\a)") },
        { "shortEscape", fileReplacing("salut lume", R"(\u12)") },
        { "rawLineEnd", fileReplacing("salut lume", "a\nb") },
        { "rawTab", fileReplacing("salut lume", "a\tb") },
        { "rawControl", fileReplacing("salut lume", "\x01") },
        { "rawZero", fileReplacing("salut lume", QByteArray("\0", 1)) },
        { "latin1", fileReplacing("salut lume", "\xE9") },
        { "loneContinuation", fileReplacing("salut lume", "\x80") },
        { "overlongSlash", fileReplacing("salut lume", "\xC0\xAF") },
        { "encodedSurrogate", fileReplacing("salut lume", "\xED\xA0\x80") },
        { "beyondUnicode", fileReplacing("salut lume", "\xF4\x90\x80\x80") },
        { "cutOffCharacter", fileReplacing("salut lume", "\xF0\x9F\x98") },
        { "badEncodingInAKey", fileWith("\"\xFF\":1") },
        { "unknownKeyNestedTooDeep", fileWith(R"("extra":)" + repeated("[", 511) + repeated("]", 511)) },
        { "aMillionArrays", fileWith(R"("extra":)" + repeated("[", 1'000'000)) },
        { "aMillionObjects", fileWith(R"("extra":)" + repeated(R"({"a":)", 1'000'000)) },
        { "aMillionArraysAtTheTop", repeated("[", 1'000'000) },
    };
}
} // namespace

INSTANTIATE_TEST_SUITE_P(Table, HistoryCodecAccepts, testing::ValuesIn(acceptedFiles()),
    [](const auto &info) { return info.param.what; });

class HistoryCodecRefuses : public testing::TestWithParam<std::pair<const char *, QByteArray>> { };

TEST_P(HistoryCodecRefuses, TheFile) {
    EXPECT_EQ(HistoryCodec::decode(GetParam().second), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(Table, HistoryCodecRefuses, testing::ValuesIn(malformedFiles()),
    [](const auto &info) { return info.param.first; });

TEST(HistoryCodec, RefusesEveryCutOffFile) {
    const QByteArray json = HistoryCodec::encode({ fullHistoryEntry(), plainHistoryEntry() }).value();
    for (qsizetype length = 0; length < json.size(); ++length)
        EXPECT_EQ(HistoryCodec::decode(json.first(length)), std::nullopt) << "cut at " << length;
}

TEST(HistoryCodec, SurvivesEveryChangedByte) {
    const QByteArray json = HistoryCodec::encode({ fullHistoryEntry(), plainHistoryEntry() }).value();
    std::mt19937_64 random(11);
    for (int round = 0; round < 5000; ++round) {
        QByteArray changed = json;
        for (int byte = 0; byte < 3; ++byte)
            changed[qsizetype(random() % size_t(json.size()))] = char(random());
        const auto entries = HistoryCodec::decode(changed);
        EXPECT_TRUE(!entries || HistoryCodec::encode(*entries).has_value());
    }
}
