#include "Text/RegularExpression.h"

#include <gtest/gtest.h>

#include <array>
#include <thread>

namespace {
struct Replacement {
    QString pattern;
    QString text;
    QString replacement;
    QString expected;
};

class Replacing : public testing::TestWithParam<Replacement> { };

TEST_P(Replacing, ReplacesEveryMatch) {
    const RegularExpression expression(GetParam().pattern);
    EXPECT_EQ(expression.replacingMatches(GetParam().text, GetParam().replacement), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(RegularExpression, Replacing,
    testing::Values(Replacement { QStringLiteral("b"), QStringLiteral("abcb"), QStringLiteral("x"),
                        QStringLiteral("axcx") },
        Replacement { QStringLiteral("b"), {}, QStringLiteral("x"), {} },
        Replacement { QStringLiteral("b"), QStringLiteral("ac"), QStringLiteral("x"), QStringLiteral("ac") },
        Replacement {
            QStringLiteral("x*"), QStringLiteral("axb"), QStringLiteral("-"), QStringLiteral("-a--b-") },
        Replacement { QStringLiteral("^"), QStringLiteral("ab"), QStringLiteral("-"), QStringLiteral("-ab") },
        Replacement { QStringLiteral("x*"), QStringLiteral("\U0001F600"), QStringLiteral("-"),
            QStringLiteral("-\U0001F600-") },
        Replacement {
            QStringLiteral("a"), QStringLiteral("a"), QStringLiteral("$0\\1"), QStringLiteral("$0\\1") },
        Replacement { QStringLiteral(R"(\s+)"), QStringLiteral("a\u00A0\n\tb"), QStringLiteral(" "),
            QStringLiteral("a b") },
        Replacement { QStringLiteral(R"(\bum\b)"), QStringLiteral("um, dum um\u0301 um"), {},
            QStringLiteral(", dum um\u0301 ") },
        Replacement { QStringLiteral("[^a-z]"), QStringLiteral("a\U0001F600b"), QStringLiteral(" "),
            QStringLiteral("a b") }));

TEST(RegularExpression, ReturnsGroupRanges) {
    const RegularExpression expression(QStringLiteral("(a)|(b)(c)?"));
    const auto matches = expression.matches(QStringLiteral("\U0001F600a-bc"));
    ASSERT_EQ(matches.size(), 2U);
    const auto range = [&matches](size_t match, size_t group) {
        return std::pair(matches[match][group].start, matches[match][group].length);
    };
    EXPECT_EQ(matches[0].size(), 4U);
    EXPECT_EQ(range(0, 0), std::pair(qsizetype(2), qsizetype(1)));
    EXPECT_EQ(range(0, 1), std::pair(qsizetype(2), qsizetype(1)));
    EXPECT_EQ(range(0, 2), std::pair(qsizetype(-1), qsizetype(0)));
    EXPECT_EQ(range(1, 0), std::pair(qsizetype(4), qsizetype(2)));
    EXPECT_EQ(range(1, 1), std::pair(qsizetype(-1), qsizetype(0)));
    EXPECT_EQ(range(1, 3), std::pair(qsizetype(5), qsizetype(1)));
}

TEST(RegularExpression, FindsEmptyMatches) {
    EXPECT_EQ(RegularExpression(QStringLiteral("x*")).matches({}).size(), 1U);
    EXPECT_EQ(RegularExpression(QStringLiteral("x*")).matches(QStringLiteral("ab")).size(), 3U);
}

TEST(RegularExpression, IsCaseSensitiveByDefault) {
    const QString text = QStringLiteral("PĂI păi");
    using Option = RegularExpression::Option;
    EXPECT_EQ(RegularExpression(QStringLiteral("păi")).matches(text).size(), 1U);
    EXPECT_EQ(RegularExpression(QStringLiteral("păi"), Option::CaseInsensitive).matches(text).size(), 2U);
}

TEST(RegularExpression, AnInvalidPatternMatchesNothing) {
    for (const QString &pattern :
        { QStringLiteral("("), QStringLiteral("[a"), QStringLiteral("*"), QString() }) {
        const RegularExpression expression(pattern);
        EXPECT_FALSE(expression.isValid()) << pattern.toStdString();
        EXPECT_TRUE(expression.matches(QStringLiteral("a(")).empty());
        EXPECT_EQ(
            expression.replacingMatches(QStringLiteral("a("), QStringLiteral("x")), QStringLiteral("a("));
    }
    EXPECT_TRUE(RegularExpression(QStringLiteral("a")).isValid());
}

TEST(RegularExpression, UnpairedSurrogatesStayAsTheyAre) {
    const QString text = QString(QChar(0xD83D)) + u'a' + QChar(0xDE00);
    const RegularExpression expression(QStringLiteral("a"));
    EXPECT_EQ(expression.replacingMatches(text, {}), QString(QChar(0xD83D)) + QChar(0xDE00));
}

TEST(RegularExpression, MovesItsPattern) {
    RegularExpression first(QStringLiteral("a"));
    const RegularExpression second(std::move(first));
    EXPECT_EQ(second.matches(QStringLiteral("aa")).size(), 2U);
}

TEST(RegularExpression, IsThreadSafe) {
    const RegularExpression expression(QStringLiteral(R"((\w)\s+)"));
    std::array<size_t, 4> counts {};
    std::vector<std::thread> threads;
    for (size_t thread = 0; thread < counts.size(); ++thread) {
        threads.emplace_back([&expression, &counts, thread] {
            const QString text = QStringLiteral("a ").repeated(int(thread + 1) * 50);
            for (int round = 0; round < 50; ++round)
                counts[thread] += expression.matches(text).size();
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    for (size_t thread = 0; thread < counts.size(); ++thread)
        EXPECT_EQ(counts[thread], (thread + 1) * 50 * 50);
}
} // namespace
