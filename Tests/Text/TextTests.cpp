#include "Text/Text.h"

#include <gtest/gtest.h>

#include <limits>

namespace {
const QString loneHighSurrogate(QChar(0xD83D));
const QString loneLowSurrogate(QChar(0xDE00));

struct Change {
    QString given;
    QString expected;
};

class Trimmed : public testing::TestWithParam<Change> { };

TEST_P(Trimmed, RemovesWhiteSpaceAtBothEnds) {
    EXPECT_EQ(Text::trimmed(GetParam().given), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Text, Trimmed,
    testing::Values(Change { {}, {} }, Change { QStringLiteral(" "), {} },
        Change { QStringLiteral(" \t\n\v\f\r\u0085 "), {} },
        Change { QStringLiteral("  a b  "), QStringLiteral("a b") },
        Change { QStringLiteral("\r\nție\r\n"), QStringLiteral("ție") },
        Change { QStringLiteral("\u00A0\u1680\u2000\u200A\u2028\u2029\u202F\u205F\u3000a\u3000"),
            QStringLiteral("a") },
        // Neither white space nor separators: zero-width space, joiners, byte order mark, controls.
        Change { QStringLiteral("\u200Ba\u200D"), QStringLiteral("\u200Ba\u200D") },
        Change { QStringLiteral("\uFEFFa"), QStringLiteral("\uFEFFa") },
        Change { QStringLiteral("\u180Ea"), QStringLiteral("\u180Ea") },
        Change { QStringLiteral("\u001Ca\u001F"), QStringLiteral("\u001Ca\u001F") },
        Change { QStringLiteral(" \U0001F600 "), QStringLiteral("\U0001F600") },
        Change { u' ' + loneHighSurrogate + u' ', loneHighSurrogate },
        Change { u' ' + loneLowSurrogate + u' ', loneLowSurrogate }));

struct Parting {
    QString text;
    QStringList betweenBlanks;
    QStringList betweenBlanksAndLineEnds;
};

class Pieces : public testing::TestWithParam<Parting> { };

TEST_P(Pieces, LieBetweenSeparators) {
    const Parting &parting = GetParam();
    EXPECT_EQ(Text::pieces(parting.text, Text::Separators::Blanks), parting.betweenBlanks);
    EXPECT_EQ(
        Text::pieces(parting.text, Text::Separators::BlanksAndLineEnds), parting.betweenBlanksAndLineEnds);
}

INSTANTIATE_TEST_SUITE_P(Text, Pieces,
    testing::Values(Parting { {}, {}, {} }, Parting { QStringLiteral(" \t "), {}, {} },
        Parting { QStringLiteral("one"), { "one" }, { "one" } },
        Parting { QStringLiteral("  one \t two\u00A0three\u3000"), { "one", "two", "three" },
            { "one", "two", "three" } },
        Parting { QStringLiteral("a\nb\r\nc d"), { "a\nb\r\nc", "d" }, { "a", "b", "c", "d" } },
        Parting { QStringLiteral("a\u2028b\u2029c\u0085d\ve\ff"),
            { QStringLiteral("a\u2028b\u2029c\u0085d\ve\ff") }, { "a", "b", "c", "d", "e", "f" } },
        // A blank separates even if it is followed by a combining mark.
        Parting { QStringLiteral("a \u0301b"), { "a", QStringLiteral("\u0301b") },
            { "a", QStringLiteral("\u0301b") } },
        Parting { QStringLiteral("a\u200Bb \U0001F600"),
            { QStringLiteral("a\u200Bb"), QStringLiteral("\U0001F600") },
            { QStringLiteral("a\u200Bb"), QStringLiteral("\U0001F600") } }));

class CaseFolded : public testing::TestWithParam<Change> { };

TEST_P(CaseFolded, IsTheSameForTextsThatDifferInCaseAndComposition) {
    EXPECT_EQ(Text::caseFolded(GetParam().given), Text::caseFolded(GetParam().expected));
}

INSTANTIATE_TEST_SUITE_P(Text, CaseFolded,
    testing::Values(Change { {}, {} }, Change { QStringLiteral("ȘEDINȚĂ"), QStringLiteral("ședință") },
        Change { QStringLiteral("S\u0326EDIN\u021A\u0102"), QStringLiteral("ședință") },
        Change { QStringLiteral("STRASSE"), QStringLiteral("straße") },
        Change { QStringLiteral("ΟΔΟΣ"), QStringLiteral("οδος") },
        Change { QStringLiteral("\uFB01n"), QStringLiteral("FIN") },
        Change { QStringLiteral("J\u030C"), QStringLiteral("\u01F0") },
        Change { QStringLiteral("\U00010400"), QStringLiteral("\U00010428") }));

TEST(Text, CaseFoldingKeepsDiacritics) {
    EXPECT_NE(Text::caseFolded(QStringLiteral("ș")), Text::caseFolded(QStringLiteral("s")));
    EXPECT_NE(Text::caseFolded(QStringLiteral("ș")), Text::caseFolded(QStringLiteral("ş")));
}

TEST(Text, CaseFoldingLeavesBrokenTextAsItIs) {
    EXPECT_EQ(Text::caseFolded(loneHighSurrogate), loneHighSurrogate);
    EXPECT_EQ(Text::caseFolded(u'A' + loneLowSurrogate), u'a' + loneLowSurrogate);
}

TEST(Text, LowerAndUpperCase) {
    EXPECT_EQ(Text::lowerCased(QStringLiteral("ĂÂÎȘȚ I É Ω")), QStringLiteral("ăâîșț i é ω"));
    EXPECT_EQ(Text::upperCased(QStringLiteral("ăâîșț i é ω")), QStringLiteral("ĂÂÎȘȚ I É Ω"));
    EXPECT_EQ(Text::upperCased(QStringLiteral("straße ﬁ")), QStringLiteral("STRASSE FI"));
    EXPECT_EQ(Text::lowerCased(QStringLiteral("ΟΔΟΣ")), QStringLiteral("οδος"));
    EXPECT_EQ(Text::lowerCased(QStringLiteral("İ")), QStringLiteral("i\u0307"));
    EXPECT_EQ(Text::lowerCased(QStringLiteral("\U00010400")), QStringLiteral("\U00010428"));
    EXPECT_EQ(Text::lowerCased({}), QString());
    EXPECT_EQ(Text::upperCased(loneHighSurrogate), loneHighSurrogate);
}

struct Count {
    QString text;
    qint64 expected;
};

class CharacterCount : public testing::TestWithParam<Count> { };

TEST_P(CharacterCount, CountsGraphemeClusters) {
    EXPECT_EQ(Text::characterCount(GetParam().text), GetParam().expected);
    EXPECT_EQ(Text::firstCharacters(GetParam().text, GetParam().expected), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(Text, CharacterCount,
    testing::Values(Count { {}, 0 }, Count { QStringLiteral("abc"), 3 }, Count { QStringLiteral("ție"), 3 },
        Count { QStringLiteral("t\u0326ie"), 3 }, Count { QStringLiteral("\r\n"), 1 },
        Count { QStringLiteral("\n\r"), 2 }, Count { QStringLiteral("\U0001F600"), 1 },
        Count { QStringLiteral("\U0001F468\u200D\U0001F469\u200D\U0001F467"), 1 },
        Count { QStringLiteral("\U0001F44D\U0001F3FD"), 1 },
        Count { QStringLiteral("\U0001F1F7\U0001F1F4\U0001F1EC\U0001F1E7"), 2 },
        Count { QStringLiteral("\u1100\u1161\u11A8"), 1 }, Count { QStringLiteral("\u0301a"), 2 },
        Count { QStringLiteral("a\u0301\u0302\u0303"), 1 }, Count { loneHighSurrogate, 1 },
        Count { loneLowSurrogate + loneHighSurrogate, 2 }));

TEST(Text, FirstCharactersNeverCutOneInTwo) {
    const QString family = QStringLiteral("\U0001F468\u200D\U0001F469\u200D\U0001F467");
    EXPECT_EQ(Text::firstCharacters(family + QStringLiteral("ab"), 2), family + u'a');
    EXPECT_EQ(Text::firstCharacters(QStringLiteral("e\u0301a"), 1), QStringLiteral("e\u0301"));
    EXPECT_EQ(Text::firstCharacters(QStringLiteral("abc"), 0), QString());
    EXPECT_EQ(Text::firstCharacters(QStringLiteral("abc"), -1), QString());
    EXPECT_EQ(Text::firstCharacters(QStringLiteral("abc"), 99), QStringLiteral("abc"));
}

class AlphanumericCount : public testing::TestWithParam<Count> { };

TEST_P(AlphanumericCount, CountsLettersMarksAndNumbers) {
    EXPECT_EQ(Text::alphanumericCount(GetParam().text), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Text, AlphanumericCount,
    testing::Values(Count { {}, 0 }, Count { QStringLiteral("ok, 12."), 4 },
        Count { QStringLiteral("t\u0326"), 2 }, Count { QStringLiteral("\u0301"), 1 },
        Count { QStringLiteral("½Ⅷ٣"), 3 }, Count { QStringLiteral("_-+$€"), 0 },
        Count { QStringLiteral("\U0001D400\U0001F600"), 1 }, Count { QStringLiteral("漢字"), 2 },
        Count { loneHighSurrogate, 0 }, Count { loneLowSurrogate + u'a', 1 }));

class WordCount : public testing::TestWithParam<Count> { };

TEST_P(WordCount, CountsPiecesBetweenWhiteSpace) {
    EXPECT_EQ(Text::wordCount(GetParam().text), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Text, WordCount,
    testing::Values(Count { {}, 0 }, Count { QStringLiteral(" \n "), 0 }, Count { QStringLiteral("a"), 1 },
        Count { QStringLiteral("a\t\n b"), 2 }, Count { QStringLiteral(" a  b "), 2 },
        Count { QStringLiteral("a\u00A0b\u2028c\u3000d\u0085e\u202Ff"), 6 },
        Count { QStringLiteral("... ... ..."), 3 }, Count { QStringLiteral("a\u200Bb"), 1 },
        Count { QStringLiteral("a-b,c"), 1 }, Count { QStringLiteral("\U0001F600 \U0001F600"), 2 },
        Count { loneHighSurrogate + u' ' + loneLowSurrogate, 2 }));

struct Decimal {
    double number;
    const char *expected;
};

class ShortestDecimal : public testing::TestWithParam<Decimal> { };

TEST_P(ShortestDecimal, ReadsBackAsTheSameNumber) {
    const QString text = Text::shortestDecimal(GetParam().number);
    EXPECT_EQ(text, QString::fromUtf8(GetParam().expected));
    EXPECT_EQ(text.toDouble(), GetParam().number);
}

INSTANTIATE_TEST_SUITE_P(Text, ShortestDecimal,
    testing::Values(Decimal { 3.0, "3.0" }, Decimal { 0.0, "0.0" }, Decimal { 0.2, "0.2" },
        Decimal { 0.1 + 0.2, "0.30000000000000004" }, Decimal { -1.5, "-1.5" }, Decimal { 100.0, "100.0" },
        Decimal { 100000.0, "100000.0" }, Decimal { 123456789.5, "123456789.5" },
        Decimal { 1e15, "1000000000000000.0" }, Decimal { 1e16, "1e+16" }, Decimal { 2.5e20, "2.5e+20" },
        Decimal { 0.0001, "0.0001" }, Decimal { 0.00001, "1e-05" }, Decimal { 1.0 / 3, "0.3333333333333333" },
        Decimal { std::numeric_limits<double>::infinity(), "inf" }));
} // namespace
