#include "TolmiApp/Texts/PlatformTexts.h"

#include "Support/Print.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

using L10n::Key;
using L10n::Phrase;

namespace {
const std::set<Key> overridden {
    Key::commandCenterDictationHint,
    Key::dictationLiveHotkey,
    Key::historyNoTranscriptionsHint,
    Key::settingsRightOption,
    Key::historyAudioRevealInFinder,
    Key::historyAudioPlayFailedMessage,
    Key::healthEnableMicHint,
    Key::healthRecheckPermissions,
    Key::healthGrantAccessibilityHint,
    Key::settingsUpdatesNotConfiguredHint,
};

const auto languages = allCases<AppLanguage>();

std::vector<Phrase> allPhrases() {
    std::vector<Phrase> phrases;
    for (std::size_t index = 0; index < L10n::phraseCount; ++index)
        phrases.push_back(Phrase(L10n::keyCount + index));
    return phrases;
}

/// The first word in `text` that makes sense only on macOS; empty if there is none.
QString macWord(const QString &text) {
    for (const char16_t *word : { u"Option", u"\u2325", u"\u2318", u"Finder", u"System Settings",
             u"Privacy & Security", u"app bundle", u"bundle-ului", u"Sparkle" }) {
        if (text.contains(QStringView(word), Qt::CaseInsensitive))
            return QStringView(word).toString();
    }
    return QString();
}
} // namespace

TEST(PlatformTexts, AreTheTableOnMacOS) {
    const PlatformTexts texts = PlatformTexts::forMacOS();
    for (const Key key : L10n::allKeys()) {
        for (const AppLanguage language : languages)
            EXPECT_EQ(texts.text(key, language), L10n::text(key, language));
    }
    for (const AppLanguage language : languages) {
        EXPECT_EQ(texts.text(Phrase::settingsShortcut, language), u"\u2318,");
        EXPECT_EQ(texts.text(Phrase::quitShortcut, language), u"\u2318Q");
    }
}

TEST(PlatformTexts, DifferOnLinuxWhereTheTableNamesWhatOnlyMacOSHas) {
    const PlatformTexts texts = PlatformTexts::forLinux();
    for (const Key key : L10n::allKeys()) {
        for (const AppLanguage language : languages) {
            const QString text = texts.text(key, language);
            EXPECT_EQ(text != L10n::text(key, language), overridden.count(key) == 1) << text.toStdString();
            EXPECT_EQ(macWord(text), QString()) << text.toStdString();
        }
    }
    for (const Phrase phrase : allPhrases()) {
        for (const AppLanguage language : languages)
            EXPECT_EQ(macWord(texts.text(phrase, language)), QString());
    }
    for (const AppLanguage language : languages) {
        EXPECT_EQ(texts.text(Phrase::settingsShortcut, language), u"Ctrl+,");
        EXPECT_EQ(texts.text(Phrase::quitShortcut, language), u"Ctrl+Q");
    }
}

TEST(PlatformTexts, NameTheKeyOfALinuxKeyboard) {
    const PlatformTexts texts = PlatformTexts::forLinux();
    EXPECT_EQ(texts.text(Key::settingsRightOption, AppLanguage::English), u"Right Alt (AltGr)");
    for (const Key key :
        { Key::commandCenterDictationHint, Key::dictationLiveHotkey, Key::historyNoTranscriptionsHint }) {
        for (const AppLanguage language : languages) {
            EXPECT_TRUE(texts.text(key, language).contains(texts.text(Key::settingsRightOption, language)));
        }
    }
}

TEST(PlatformTexts, KeepRomanianWithoutDiacritics) {
    const PlatformTexts texts = PlatformTexts::forLinux();
    for (const Key key : overridden) {
        const QString text = texts.text(key, AppLanguage::Romanian);
        EXPECT_TRUE(std::all_of(text.begin(), text.end(), [](QChar character) {
            return character < u'\x7f';
        })) << text.toStdString();
        EXPECT_NE(text, texts.text(key, AppLanguage::English));
    }
}
