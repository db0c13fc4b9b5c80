#include "TolmiApp/Dictation/PastableText.h"

#include "Support/Print.h"

#include <gtest/gtest.h>

namespace {
struct PastedCase {
    const char *name;
    QString text;
    QString pasted;
    QString pastedIntoTerminal;
};

class PastableText : public testing::TestWithParam<PastedCase> { };

INSTANTIATE_TEST_SUITE_P(Table, PastableText,
    testing::Values(
        PastedCase { "Plain", QString::fromUtf16(u"Să ne vedem. 👍🏽"),
            QString::fromUtf16(u"Să ne vedem. 👍🏽"), QString::fromUtf16(u"Să ne vedem. 👍🏽") },
        PastedCase { "Empty", QString(), QString(), QString() },
        PastedCase { "Lines", QString::fromUtf16(u"a\nb\n\nc\n"), QString::fromUtf16(u"a\nb\n\nc\n"),
            QString::fromUtf16(u"a b  c ") },
        PastedCase { "OtherLineEnds", QString::fromUtf16(u"a\r\nb\rc"), QString::fromUtf16(u"a\nb\nc"),
            QString::fromUtf16(u"a b c") },
        PastedCase {
            "Tab", QString::fromUtf16(u"a\tb"), QString::fromUtf16(u"a\tb"), QString::fromUtf16(u"a\tb") },
        PastedCase { "Escape", QString::fromUtf16(u"a\x1b]0;x\ab"), QString::fromUtf16(u"a]0;xb"),
            QString::fromUtf16(u"a]0;xb") },
        PastedCase { "EndOfBracketedPaste", QString::fromUtf16(u"\x1b[201~rm -r\n"),
            QString::fromUtf16(u"[201~rm -r\n"), QString::fromUtf16(u"[201~rm -r ") },
        PastedCase {
            "Zero", QString::fromUtf16(u"a\0b", 3), QString::fromUtf16(u"ab"), QString::fromUtf16(u"ab") },
        PastedCase { "Interrupt", QString::fromUtf16(u"\x03\x04\x15\x16\x1a\x7f"), QString(), QString() },
        PastedCase { "UpperControls", QString::fromUtf16(u"a\u0080b\u0085c\u009bd"),
            QString::fromUtf16(u"abcd"), QString::fromUtf16(u"abcd") },
        PastedCase { "NoControls", QString::fromUtf16(u"a\u00a0b\u200dc\u2028d"),
            QString::fromUtf16(u"a\u00a0b\u200dc\u2028d"), QString::fromUtf16(u"a\u00a0b\u200dc\u2028d") }),
    [](const auto &info) { return info.param.name; });

TEST_P(PastableText, HasNothingThatAnApplicationObeys) {
    EXPECT_EQ(pastableText(GetParam().text, false), GetParam().pasted);
    EXPECT_EQ(pastableText(GetParam().text, true), GetParam().pastedIntoTerminal);
}
} // namespace
