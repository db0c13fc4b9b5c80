#include "TolmiCore/RuleBasedRefiner.h"

#include "Support/AwaitTask.h"

#include <gtest/gtest.h>

namespace {
QString refined(const QString &text) {
    return awaitTask(RuleBasedRefiner().refine(text), [] { throw std::logic_error("it suspended"); });
}

struct Refinement {
    const char *text;
    const char *expected;
};

class RuleBasedRefinerTest : public testing::TestWithParam<Refinement> { };

TEST_P(RuleBasedRefinerTest, FollowsItsRules) {
    EXPECT_EQ(refined(QString::fromUtf8(GetParam().text)), QString::fromUtf8(GetParam().expected));
}

INSTANTIATE_TEST_SUITE_P(Examples, RuleBasedRefinerTest,
    testing::Values(Refinement { "deci  um, like, this is it. uh, ok? păi da", ", this is it. , ok? Da" },
        Refinement { "", "" }, Refinement { " \n\t ", "" }, Refinement { "UM hello", "hello" },
        Refinement { "hello world", "hello world" }, Refinement { "  hello\n", "hello" }));

INSTANTIATE_TEST_SUITE_P(Fillers, RuleBasedRefinerTest,
    testing::Values(Refinement { "a deci b", "a b" }, Refinement { "Deci, da", ", da" },
        Refinement { "decizie", "decizie" }, Refinement { "a păi b", "a b" }, Refinement { "a PĂI b", "a b" },
        Refinement { "a pai b", "a b" }, Refinement { "paie", "paie" }, Refinement { "aaa", "aaa" },
        Refinement { "x aaaa y", "x y" }, Refinement { "x aaaaaaa y", "x y" }, Refinement { "mm", "mm" },
        Refinement { "x mmm y", "x y" }, Refinement { "îî", "îî" }, Refinement { "x îîî y", "x y" },
        Refinement { "x ÎÎÎÎ y", "x y" }, Refinement { "x nu știu y", "x y" },
        Refinement { "x nu  știu y", "x nu știu y" },
        // The letter with a cedilla differs from the one with a comma below.
        Refinement { "x nu şti u", "x nu şti u" }, Refinement { "x nu ştiu y", "x nu ştiu y" },
        Refinement { "u", "u" }, Refinement { "x um y", "x y" }, Refinement { "x ummm y", "x y" },
        Refinement { "umbra", "umbra" }, Refinement { "x uh y", "x y" }, Refinement { "x uhhh y", "x y" },
        Refinement { "x you know y", "x y" }, Refinement { "you knowing", "you knowing" },
        Refinement { "like this", "like this" }, Refinement { "I like, tea", "I , tea" },
        Refinement { "I like \n, tea", "I , tea" }, Refinement { "I like, you know, tea", "I , tea" },
        Refinement { "basically yes", "basically yes" }, Refinement { "so basically, yes", "so , yes" },
        Refinement { "actually yes", "actually yes" }, Refinement { "so actually , yes", "so , yes" },
        Refinement { "unlike, x", "unlike, x" }));

INSTANTIATE_TEST_SUITE_P(Punctuation, RuleBasedRefinerTest,
    testing::Values(Refinement { "a  b", "a b" }, Refinement { "a \n b", "a b" },
        Refinement { "a\n\nb", "a b" }, Refinement { "a\nb", "a\nb" }, Refinement { "a\u00A0\u00A0b", "a b" },
        Refinement { "a,,b", "a,b" }, Refinement { "a, ,b", "a,b" }, Refinement { "a,\n,b", "a,b" },
        Refinement { "a,,,b", "a,,b" }, Refinement { "a,,,,b", "a,,b" }));

INSTANTIATE_TEST_SUITE_P(Capitals, RuleBasedRefinerTest,
    testing::Values(Refinement { "hello. world", "hello. World" },
        Refinement { "hello.world", "hello.world" },
        Refinement { "ce faci? ții minte", "ce faci? Ții minte" }, Refinement { "ok! éa", "ok! éa" },
        Refinement { "a. ă! â? î. ș! ț", "a. Ă! Â? Î. Ș! Ț" }, Refinement { "a.\nb", "a.\nB" },
        Refinement { "a. B. c", "a. B. C" }, Refinement { "a... b", "a... B" },
        Refinement { "a. 1b", "a. 1b" }, Refinement { "a; b: c", "a; b: c" },
        Refinement { "\U0001F600. b \U0001F600. c", "\U0001F600. B \U0001F600. C" },
        Refinement { "a. um b", "a. B" }, Refinement { "a. şi", "a. şi" }));

TEST(RuleBasedRefiner, KeepsCombiningSequencesIntact) {
    EXPECT_EQ(refined(QStringLiteral("x um\u0301 y")), QStringLiteral("x um\u0301 y"));
}
} // namespace
