#include "TolmiApp/Transcription/TranscriptionQualityScorer.h"

#include <QStringList>

#include <gtest/gtest.h>

#include <limits>

namespace {
QString words(int count, const QString &word) {
    return QStringList(QList<QString>(count, word)).join(u' ');
}

double score(const QString &text, double peakLevel) {
    return TranscriptionQualityScorer().score(text, peakLevel);
}

struct Example {
    QString text;
    double peakLevel;
    double expected;
};

class TranscriptionQualityScorerTest : public testing::TestWithParam<Example> { };

TEST_P(TranscriptionQualityScorerTest, HasTheKnownScore) {
    EXPECT_NEAR(score(GetParam().text, GetParam().peakLevel), GetParam().expected, 5e-7);
}

INSTANTIATE_TEST_SUITE_P(Worked, TranscriptionQualityScorerTest,
    testing::Values(Example { QStringLiteral("Trimite raportul la echipă până vineri dimineață, te rog."),
                        0.21, 0.807724 },
        Example { QStringLiteral("Thank you."), 0.05, 0.351726 },
        Example { QStringLiteral("ok"), 0.5, 0.384821 },
        Example { QStringLiteral("... ... ..."), 0.4, 0.370089 },
        // Four and three clean words are on either side of the threshold for a second pass.
        Example { QStringLiteral("abcd abcd abcd abcde"), 0.3, 0.611786 },
        Example { QStringLiteral("abcd abcd abcde"), 0.3, 0.569256 }));

INSTANTIATE_TEST_SUITE_P(Edges, TranscriptionQualityScorerTest,
    testing::Values(Example { {}, 1.0, 0.0 }, Example { QStringLiteral(" \n\t "), 1.0, 0.0 },
        Example { QStringLiteral("."), 0.0, 0.0 },
        // One word below the ratio limit: both penalties.
        Example { QStringLiteral("a..."), 0.3, 0.15 + 0.4 / 14 + 0.25 * 4 / 80 + 0.2 + 0.025 - 0.2 },
        // Exactly at the ratio limit, 7 of 20: no penalty for it.
        Example { QStringLiteral("abcdefg............."), 0.3,
            0.15 + 0.4 / 14 + 0.25 * 20 / 80 + 0.2 + 0.035 - 0.1 },
        Example { QStringLiteral("abcdef.............."), 0.3,
            0.15 + 0.4 / 14 + 0.25 * 20 / 80 + 0.2 + 0.03 - 0.2 },
        // Combining marks count as code points but not as characters; the ratio is capped at 1 in the sum.
        Example { QStringLiteral("a\u0301\u0302"), 0.3, 0.15 + 0.4 / 14 + 0.25 / 80 + 0.2 + 0.1 - 0.1 },
        Example { QStringLiteral("\U0001F600 \U0001F600"), 0.3, 0.15 + 0.8 / 14 + 0.25 * 3 / 80 + 0.2 - 0.1 },
        Example { words(14, QStringLiteral("abcde")), 0.3, 1.0 },
        Example { words(14, QStringLiteral("abc..")), 0.3, 1.0 },
        Example { words(200, QStringLiteral("abcde")), 0.0, 0.15 + 0.4 + 0.25 + 0.1 * 1000 / 1199 }));

TEST(TranscriptionQualityScorer, OuterWhiteSpaceDoesNotCount) {
    EXPECT_EQ(score(QStringLiteral("\n  ok then \t"), 0.2), score(QStringLiteral("ok then"), 0.2));
}

TEST(TranscriptionQualityScorer, AnyWhiteSpaceSeparatesWords) {
    EXPECT_EQ(score(QStringLiteral("a\tb\nc"), 0.2), score(QStringLiteral("a b c"), 0.2));
    EXPECT_EQ(score(QStringLiteral("a  bc"), 0.2), score(QStringLiteral("ab  c"), 0.2));
}

TEST(TranscriptionQualityScorer, PeaksAreClamped) {
    const QString text = QStringLiteral("ok then");
    EXPECT_EQ(score(text, -5), score(text, 0));
    EXPECT_EQ(score(text, 0.3), score(text, 1));
    EXPECT_EQ(score(text, 0.3), score(text, std::numeric_limits<double>::infinity()));
    EXPECT_LT(score(text, 0.29), score(text, 0.3));
}

TEST(TranscriptionQualityScorer, StaysWithinItsRange) {
    const QString letters = QStringLiteral("ab .\u0301ț\n");
    quint32 seed = 1;
    for (int round = 0; round < 2000; ++round) {
        QString text;
        for (int length = round % 120; length > 0; --length) {
            seed = seed * 1664525 + 1013904223;
            text += letters[qsizetype((seed >> 16) % quint32(letters.size()))];
        }
        const double value = score(text, double(round % 13) / 10 - 0.1);
        ASSERT_GE(value, 0.0);
        ASSERT_LE(value, 1.0);
    }
}
} // namespace
