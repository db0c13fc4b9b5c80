#include "TolmiApp/Templates/TemplatePreset.h"

#include "Support/Print.h"

#include <gtest/gtest.h>

using namespace TemplateText;

namespace {
const QString dictated = QStringLiteral("  we should  ship the release on friday. can you check\n"
                                        "the logs? thanks! Also update the docs.");
const QString dictatedInOneLine = QStringLiteral(
    "we should ship the release on friday. can you check the logs? thanks! Also update the docs.");
const QString sevenSentences
    = QStringLiteral("One is here. Two! Three? Four. Five goes on. Six. Seven, at last.");
const auto presets = allCases<TemplatePreset>();
const auto languages = allCases<AppLanguage>();

QString lines(const QStringList &texts) {
    return texts.join(u'\n');
}

struct Change {
    QString given;
    QString expected;
};

class Normalize : public testing::TestWithParam<Change> { };
class Subject : public testing::TestWithParam<Change> { };

struct Splitting {
    QString given;
    QStringList expected;
};

class Sentences : public testing::TestWithParam<Splitting> { };

struct Shape {
    const char *name;
    TemplatePreset preset;
    AppLanguage language;
    QString given;
    QString expected;
};

class Shapes : public testing::TestWithParam<Shape> { };
} // namespace

TEST_P(Normalize, LeavesSingleBlanks) {
    EXPECT_EQ(normalize(GetParam().given), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(TemplateText, Normalize,
    testing::Values(Change { dictated, dictatedInOneLine }, Change { {}, {} },
        Change { QStringLiteral(" \t\n\u00A0\u2028\u2029\u0085 "), {} },
        Change { QStringLiteral("a\r\n\r\nb"), QStringLiteral("a b") },
        Change { QStringLiteral("a\u00A0\u3000b\vc\fd"), QStringLiteral("a b c d") },
        Change { QStringLiteral("\u200Ba\u200B b"), QStringLiteral("\u200Ba\u200B b") },
        Change { QStringLiteral("שלום \n עולם"), QStringLiteral("שלום עולם") },
        Change { QStringLiteral("e\u0301  \U0001F468\u200D\U0001F469"),
            QStringLiteral("e\u0301 \U0001F468\u200D\U0001F469") }));

TEST_P(Sentences, EndAtAMarkBeforeWhiteSpace) {
    EXPECT_EQ(sentences(GetParam().given), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(TemplateText, Sentences,
    testing::Values(Splitting { {}, {} },
        Splitting { dictatedInOneLine,
            { "we should ship the release on friday.", "can you check the logs?", "thanks!",
                "Also update the docs." } },
        Splitting { QStringLiteral("no marks at all"), { "no marks at all" } },
        Splitting { QStringLiteral("what?no"), { "what?no" } },
        Splitting { QStringLiteral("what? no"), { "what?", "no" } },
        Splitting { QStringLiteral("wait... what"), { "wait...", "what" } },
        Splitting { QStringLiteral("... ."), { "...", "." } }, Splitting { QStringLiteral("..."), { "..." } },
        Splitting { QStringLiteral("Dr. Pop is here."), { "Dr.", "Pop is here." } },
        Splitting { QStringLiteral("at 3.14 o'clock, 1.0.2"), { "at 3.14 o'clock, 1.0.2" } },
        Splitting { QStringLiteral("\"Stop.\" he said."), { "\"Stop.\" he said." } },
        Splitting { QStringLiteral("Really?! Yes."), { "Really?!", "Yes." } },
        Splitting { QStringLiteral("A.  B.\n\nC. "), { "A.", "B.", "C." } },
        Splitting { QStringLiteral("  A. \u00A0 B  "), { "A.", "B" } },
        Splitting { QStringLiteral(" . "), { "." } }, Splitting { QStringLiteral("   "), { "   " } },
        Splitting { QStringLiteral("はい。 いいえ。"), { "はい。 いいえ。" } },
        Splitting { QStringLiteral("שלום. עולם?"), { "שלום.", "עולם?" } },
        Splitting { QStringLiteral("\U0001F600. \U0001F468\u200D\U0001F469!"),
            { QStringLiteral("\U0001F600."), QStringLiteral("\U0001F468\u200D\U0001F469!") } },
        Splitting {
            QStringLiteral("a\u0301. e\u0301"), { QStringLiteral("a\u0301."), QStringLiteral("e\u0301") } }));

TEST_P(Subject, IsTheFirstEightWordsCapitalised) {
    EXPECT_EQ(subject(GetParam().given), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(TemplateText, Subject,
    testing::Values(Change { dictatedInOneLine, QStringLiteral("We should ship the release on friday. can") },
        Change { {}, QStringLiteral("Follow-up") },
        Change { QStringLiteral(" \t "), QStringLiteral("Follow-up") },
        Change { QStringLiteral(" \n "), QStringLiteral("Follow-up") },
        Change { QStringLiteral("hello"), QStringLiteral("Hello") },
        Change { QStringLiteral("one two three"), QStringLiteral("One two three") },
        Change { QStringLiteral("1 2 3 4 5 6 7 8"), QStringLiteral("1 2 3 4 5 6 7 8") },
        Change { QStringLiteral("1 2 3 4 5 6 7 8 9"), QStringLiteral("1 2 3 4 5 6 7 8") },
        Change { QStringLiteral("a  b\tc\u00A0d"), QStringLiteral("A b c d") },
        // A line feed does not count as a blank here.
        Change { QStringLiteral("a\nb c d e f g h i"), QStringLiteral("A\nb c d e f g h i") },
        Change { QStringLiteral("\na b\n"), QStringLiteral("A b") },
        Change { QStringLiteral("3 items"), QStringLiteral("3 items") },
        Change { QStringLiteral("- item"), QStringLiteral("- item") },
        Change { QStringLiteral("iPhone works"), QStringLiteral("IPhone works") },
        Change { QStringLiteral("Already So"), QStringLiteral("Already So") },
        Change { QStringLiteral("ștefan vine"), QStringLiteral("Ștefan vine") },
        Change { QStringLiteral("e\u0301tude"), QStringLiteral("E\u0301tude") },
        Change { QStringLiteral("ßa"), QStringLiteral("SSa") },
        Change { QStringLiteral("ﬁn"), QStringLiteral("FIn") },
        Change { QStringLiteral("ǆa"), QStringLiteral("Ǆa") },
        Change { QStringLiteral("שלום עולם"), QStringLiteral("שלום עולם") },
        Change { QStringLiteral("\U00010428x"), QStringLiteral("\U00010400x") }));

TEST(TemplateText, NumbersTheFirstSentences) {
    EXPECT_EQ(numberedLines({ "A.", "B." }, 5), QStringLiteral("1. A.\n2. B."));
    EXPECT_EQ(numberedLines({ "A.", "B.", "C." }, 2), QStringLiteral("1. A.\n2. B."));
    EXPECT_EQ(numberedLines({}, 5), QStringLiteral("1. (no content)"));
    EXPECT_EQ(numberedLines({ "A." }, 0), QStringLiteral("1. (no content)"));
    EXPECT_TRUE(numberedLines(QStringList(12, "x"), 12).endsWith(QStringLiteral("\n12. x")));
}

TEST(TemplateText, PutsCheckBoxesBeforeTheFirstSentences) {
    EXPECT_EQ(checkboxLines({ "A.", "B." }, 3), QStringLiteral("- [ ] A.\n- [ ] B."));
    EXPECT_EQ(checkboxLines({ "A.", "B.", "C." }, 1), QStringLiteral("- [ ] A."));
    EXPECT_EQ(checkboxLines({}, 3), QStringLiteral("- [ ] (no action extracted)"));
    EXPECT_EQ(checkboxLines({ "A." }, 0), QStringLiteral("- [ ] (no action extracted)"));
}

TEST_P(Shapes, AreExact) {
    EXPECT_EQ(transform(GetParam().preset, GetParam().given, GetParam().language), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(TemplatePreset, Shapes,
    testing::Values(
        Shape { "EmailInEnglish", TemplatePreset::EmailClear, AppLanguage::English, dictated,
            lines({ "Subject: We should ship the release on friday. can", "", "Hello,", "",
                "we should ship the release on friday. can you check the logs? thanks! Also update the docs.",
                "", "Best regards,", "[Your Name]" }) },
        Shape { "EmailInRomanian", TemplatePreset::EmailClear, AppLanguage::Romanian, dictated,
            lines({ "Subiect: We should ship the release on friday. can", "", "Buna,", "",
                "we should ship the release on friday. can you check the logs? thanks! Also update the docs.",
                "", "Cu respect,", "[Numele tau]" }) },
        Shape { "MeetingInEnglish", TemplatePreset::MeetingSummary, AppLanguage::English, dictated,
            lines({ "Meeting Summary", "", "Key Points:", "1. we should ship the release on friday.",
                "2. can you check the logs?", "3. thanks!", "4. Also update the docs.", "",
                "Next Steps:", "- [ ] we should ship the release on friday.", "- [ ] can you check the logs?",
                "- [ ] thanks!" }) },
        Shape { "MeetingInRomanian", TemplatePreset::MeetingSummary, AppLanguage::Romanian, dictated,
            lines({ "Rezumat sedinta", "", "Puncte cheie:", "1. we should ship the release on friday.",
                "2. can you check the logs?", "3. thanks!", "4. Also update the docs.", "",
                "Pasi urmatori:", "- [ ] we should ship the release on friday.",
                "- [ ] can you check the logs?", "- [ ] thanks!" }) },
        Shape { "ActionsInEnglish", TemplatePreset::ActionItems, AppLanguage::English, dictated,
            lines({ "Action Items", "", "- [ ] we should ship the release on friday.",
                "- [ ] can you check the logs?", "- [ ] thanks!", "- [ ] Also update the docs." }) },
        Shape { "ActionsInRomanian", TemplatePreset::ActionItems, AppLanguage::Romanian, dictated,
            lines({ "Pasi de actiune", "", "- [ ] we should ship the release on friday.",
                "- [ ] can you check the logs?", "- [ ] thanks!", "- [ ] Also update the docs." }) },
        Shape { "ReplyInEnglish", TemplatePreset::CustomerReply, AppLanguage::English, dictated,
            lines({ "Hello,", "", "Thank you for your message.",
                "we should ship the release on friday. can you check the logs? thanks!", "",
                "Please let us know if you would like any additional details.", "", "Best,",
                "Support Team" }) },
        Shape { "ReplyInRomanian", TemplatePreset::CustomerReply, AppLanguage::Romanian, dictated,
            lines({ "Buna,", "", "Iti multumim pentru mesaj.",
                "we should ship the release on friday. can you check the logs? thanks!", "",
                "Spune-ne daca vrei detalii suplimentare.", "", "Cu bine,", "Echipa suport" }) },
        Shape { "EmailKeepsAllSentences", TemplatePreset::EmailClear, AppLanguage::English, sevenSentences,
            lines({ "Subject: One is here. Two! Three? Four. Five goes", "", "Hello,", "", sevenSentences, "",
                "Best regards,", "[Your Name]" }) },
        Shape { "MeetingKeepsFiveAndThree", TemplatePreset::MeetingSummary, AppLanguage::English,
            sevenSentences,
            lines({ "Meeting Summary", "", "Key Points:", "1. One is here.", "2. Two!", "3. Three?",
                "4. Four.", "5. Five goes on.", "", "Next Steps:", "- [ ] One is here.", "- [ ] Two!",
                "- [ ] Three?" }) },
        Shape { "ActionsKeepSix", TemplatePreset::ActionItems, AppLanguage::English, sevenSentences,
            lines({ "Action Items", "", "- [ ] One is here.", "- [ ] Two!", "- [ ] Three?", "- [ ] Four.",
                "- [ ] Five goes on.", "- [ ] Six." }) },
        Shape { "ReplyKeepsThree", TemplatePreset::CustomerReply, AppLanguage::English, sevenSentences,
            lines({ "Hello,", "", "Thank you for your message.", "One is here. Two! Three?", "",
                "Please let us know if you would like any additional details.", "", "Best,",
                "Support Team" }) },
        Shape { "OneSentenceWithoutAMark", TemplatePreset::MeetingSummary, AppLanguage::Romanian,
            QStringLiteral("fara semne"),
            lines({ "Rezumat sedinta", "", "Puncte cheie:", "1. fara semne", "",
                "Pasi urmatori:", "- [ ] fara semne" }) }),
    [](const auto &info) { return info.param.name; });

TEST(TemplatePreset, ReturnsNothingForWhiteSpace) {
    for (const TemplatePreset preset : presets) {
        for (const AppLanguage language : languages) {
            EXPECT_EQ(transform(preset, {}, language), QString());
            EXPECT_EQ(transform(preset, QStringLiteral(" \n\t\u00A0\u2029 "), language), QString());
        }
    }
}

TEST(TemplatePreset, RemovesLineBreaksOfTheText) {
    const QString inOneLine = QStringLiteral("First. Second? Third");
    const QString broken = QStringLiteral("First.\r\n\r\nSecond?\u2028Third\n");
    for (const TemplatePreset preset : presets) {
        for (const AppLanguage language : languages) {
            const QString output = transform(preset, broken, language);
            EXPECT_EQ(output, transform(preset, inOneLine, language));
            EXPECT_FALSE(output.endsWith(u'\n'));
        }
    }
}

TEST(TemplatePreset, AcceptsAMegabyteOfText) {
    const QString sentence = QStringLiteral("This is a sentence of the long text. ");
    const QString text = sentence.repeated(1024 * 1024 / sentence.size());
    const QString email = transform(TemplatePreset::EmailClear, text, AppLanguage::English);
    EXPECT_TRUE(email.contains(text.trimmed()));
}

TEST(TemplatePreset, IsOfferedInOrderUnderItsNames) {
    const QStringList expected { "emailClear", "meetingSummary", "actionItems", "customerReply" };
    QStringList texts;
    for (const TemplatePreset preset : presets)
        texts.append(rawValue(preset));
    EXPECT_EQ(texts, expected);
    EXPECT_EQ(caseOfRawValue<TemplatePreset>(QStringLiteral("actionItems")), TemplatePreset::ActionItems);
    EXPECT_EQ(caseOfRawValue<TemplatePreset>(QStringLiteral("ActionItems")), std::nullopt);
    EXPECT_EQ(caseOfRawValue<TemplatePreset>({}), std::nullopt);
    EXPECT_EQ(title(TemplatePreset::EmailClear, AppLanguage::English), QStringLiteral("Email Clear"));
    EXPECT_EQ(title(TemplatePreset::CustomerReply, AppLanguage::Romanian), QStringLiteral("Raspuns client"));
    EXPECT_EQ(subtitle(TemplatePreset::MeetingSummary, AppLanguage::English),
        QStringLiteral("Summarize key points and next steps"));
    EXPECT_EQ(subtitle(TemplatePreset::ActionItems, AppLanguage::Romanian),
        QStringLiteral("Extrage actiuni tip checklist"));
}
