#include "TolmiApp/Texts/L10nTable.h"

#include "Support/Print.h"
#include "TolmiApp/Texts/L10n.h"

#include <QRegularExpression>

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

using L10n::Phrase;

namespace {
constexpr AppLanguage english = AppLanguage::English;
constexpr AppLanguage romanian = AppLanguage::Romanian;

const std::set<Phrase> withVersion { Phrase::updateFoundTitle, Phrase::updateFoundHint,
    Phrase::updateUpToDateHint, Phrase::updateDownloadingTitle, Phrase::updateDownloadedTitle };

QString nameOf(Phrase phrase) {
    return L10n::names[std::size_t(phrase)];
}

std::vector<Phrase> phrasesOfUpdates() {
    std::vector<Phrase> phrases;
    for (std::size_t place = L10n::keyCount; place < L10n::textCount; ++place) {
        if (nameOf(Phrase(place)).startsWith(u"update"))
            phrases.push_back(Phrase(place));
    }
    return phrases;
}

/// The distinct placeholders of a text: "%1" and so on.
std::set<QString> placesIn(QStringView text) {
    static const QRegularExpression place(QStringLiteral("%[1-9]"));
    std::set<QString> places;
    for (const auto &found : place.globalMatch(text.toString()))
        places.insert(found.captured());
    return places;
}
} // namespace

TEST(TextTable, IsCompleteInBothLanguages) {
    for (const AppLanguage language : allCases<AppLanguage>()) {
        for (std::size_t place = 0; place < L10n::textCount; ++place)
            EXPECT_FALSE(L10n::table[std::size_t(language)][place].isEmpty()) << L10n::names[place].data();
    }
}

TEST(TextTable, HasTheSamePlaceholdersInEveryLanguageAndOnEveryDesktop) {
    for (std::size_t place = 0; place < L10n::textCount; ++place) {
        const auto expected = placesIn(L10n::table[std::size_t(english)][place]);
        for (const L10n::Table *table : { &L10n::table, &L10n::linuxTable }) {
            for (const AppLanguage language : allCases<AppLanguage>()) {
                const QStringView text = (*table)[std::size_t(language)][place];
                EXPECT_TRUE(text.isNull() || placesIn(text) == expected) << L10n::names[place].data();
            }
        }
    }
}

TEST(TextTable, HasLinuxOverridesInBothLanguagesOrNeither) {
    for (std::size_t place = 0; place < L10n::textCount; ++place) {
        EXPECT_EQ(L10n::linuxTable[std::size_t(english)][place].isNull(),
            L10n::linuxTable[std::size_t(romanian)][place].isNull())
            << L10n::names[place].data();
    }
}

TEST(Phrases, AreWrittenWithoutDiacriticsInRomanian) {
    for (std::size_t place = L10n::keyCount; place < L10n::textCount; ++place) {
        const QString text = L10n::text(Phrase(place), romanian);
        EXPECT_TRUE(std::all_of(text.begin(), text.end(), [](QChar letter) {
            return letter < u'\x7f' || letter == u'\u2318';
        })) << text.toStdString();
    }
}

TEST(Phrases, InsertTheirValues) {
    EXPECT_EQ(L10n::text(Phrase::onboardingProgress, english, { QStringLiteral("2"), QStringLiteral("3") }),
        u"Progress: 2/3");
    EXPECT_EQ(L10n::text(Phrase::percent, english, { QStringLiteral("7") }), u"7 %");
}

TEST(Phrases, InsertAValueUnchanged) {
    EXPECT_EQ(
        L10n::text(Phrase::labelled, english, { QStringLiteral("%2"), QStringLiteral("%1 %") }), u"%2: %1 %");
    EXPECT_EQ(L10n::text(Phrase::updateFoundTitle, english, { QStringLiteral("%1 & <b>") }),
        u"Tolmi %1 & <b> is available");
}

TEST(Phrases, IgnoreSurplusValuesAndKeepUnfilledPlaceholders) {
    EXPECT_EQ(L10n::text(Phrase::updateLater, english, { QStringLiteral("2.0") }), u"Later");
    EXPECT_EQ(L10n::text(Phrase::labelled, english, { QStringLiteral("Model") }), u"Model: %2");
}

TEST(Phrases, KeepTheirLineEnds) {
    EXPECT_EQ(L10n::text(Phrase::templateActionItems, romanian, { QStringLiteral("- [ ] x") }),
        u"Pasi de actiune\n\n- [ ] x");
}

TEST(UpdatePhrases, DifferBetweenTheLanguages) {
    ASSERT_EQ(phrasesOfUpdates().size(), 20u);
    for (const Phrase phrase : phrasesOfUpdates())
        EXPECT_NE(L10n::text(phrase, english), L10n::text(phrase, romanian));
}

TEST(UpdatePhrases, HaveAPlaceholderForTheVersion) {
    const QString version = QStringLiteral("2.0");
    for (const Phrase phrase : phrasesOfUpdates()) {
        for (const AppLanguage language : allCases<AppLanguage>()) {
            const bool isExpected = withVersion.contains(phrase);
            EXPECT_EQ(L10n::text(phrase, language).count(QStringLiteral("%1")), isExpected)
                << nameOf(phrase).toStdString();
            EXPECT_EQ(L10n::text(phrase, language, { version }).contains(version), isExpected)
                << nameOf(phrase).toStdString();
        }
    }
}
