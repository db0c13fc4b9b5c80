#include "TolmiApp/Transcription/TranscriptionSanitizer.h"

#include <gtest/gtest.h>

namespace {
struct Example {
    const char *text;
    double peakLevel;
    const char *expected;
};

class TranscriptionSanitizerTest : public testing::TestWithParam<Example> { };

TEST_P(TranscriptionSanitizerTest, DropsOnlyHallucinationsOfSilence) {
    EXPECT_EQ(TranscriptionSanitizer::sanitize(QString::fromUtf8(GetParam().text), GetParam().peakLevel),
        QString::fromUtf8(GetParam().expected));
}

INSTANTIATE_TEST_SUITE_P(Table, TranscriptionSanitizerTest,
    testing::Values(Example { "Thank you.", 0.05, "" }, Example { "  THANK   YOU!!!  ", 0.01, "" },
        Example { "Thanks for watching!", 0.059, "" }, Example { "Thank you.", 0.06, "Thank you." },
        Example { "Thank you.", 0.5, "Thank you." }, Example { "Thank you.", -1, "" },
        Example { "Thank you very much.", 0.01, "Thank you very much." },
        Example { "Oh, thank you.", 0.01, "Oh, thank you." }, Example { "  Hello  ", 0.0, "Hello" },
        Example { "  Hello  ", 1.0, "Hello" }, Example { "Thank, you", 0.01, "" },
        Example { "...thank\nyou...", 0.01, "" }, Example { "thank\u00A0you", 0.01, "" },
        Example { "țthank you", 0.01, "" }, Example { "Thankyou", 0.01, "Thankyou" },
        Example { "thanksforwatching", 0.01, "thanksforwatching" },
        Example { "Thanks for watching. Thank you.", 0.01, "Thanks for watching. Thank you." },
        Example { "\u212Aeep", 0.01, "\u212Aeep" }, Example { "than\u212A you", 0.01, "" },
        Example { "Mulțumesc.", 0.01, "Mulțumesc." }, Example { "", 0.0, "" }, Example { " \n\t ", 0.0, "" },
        Example { " \n\t ", 1.0, "" }, Example { " ... ", 0.01, "..." }));
} // namespace
