// Built with separate tables, which include a further language only by adding its file.

#include "TolmiApp/Texts/L10n.h"
#include "TolmiApp/Texts/PickerOptions.h"
#include "TolmiApp/Texts/PlatformTexts.h"

#include "Support/Print.h"

#include <gtest/gtest.h>

using L10n::Key;
using L10n::Phrase;

namespace {
constexpr AppLanguage third = AppLanguage::Esperanto;
} // namespace

TEST(ThirdLanguage, IsALanguageOfTheInterface) {
    const std::array expected { AppLanguage::Romanian, AppLanguage::English, third };
    EXPECT_EQ(allCases<AppLanguage>(), expected);
    EXPECT_EQ(rawValue(third), u"eo");
    EXPECT_EQ(rawValueOrDefault<AppLanguage>(QStringLiteral("EO")), third);
    EXPECT_EQ(rawValueOrDefault<AppLanguage>(QStringLiteral("xx")), AppLanguage::Romanian);
}

TEST(ThirdLanguage, CanBePickedByItsName) {
    const QVariantList options
        = PickerOptions::of(allCases<AppLanguage>(), L10n::appLanguageName, AppLanguage::Romanian);
    ASSERT_EQ(options.size(), 3);
    EXPECT_EQ(options[0].toMap()[QStringLiteral("text")], QStringLiteral("Romana"));
    EXPECT_EQ(options[2], PickerOptions::option(QStringLiteral("eo"), QStringLiteral("Esperanto")));
}

TEST(ThirdLanguage, ReturnsItsTexts) {
    EXPECT_EQ(L10n::text(Key::routeHistory, third), u"Historio");
    EXPECT_EQ(L10n::copyTitle(QStringLiteral("Output"), third), u"Kopiu: Output");
}

TEST(ThirdLanguage, FallsBackToEnglish) {
    EXPECT_EQ(L10n::text(Key::menuBarSettings, third), u"Settings...");
    EXPECT_EQ(L10n::text(Key::routeSettings, third), u"Settings");
    EXPECT_EQ(L10n::pinnedCount(3, third), u"Pinned: 3.");
    EXPECT_EQ(L10n::transcriptionLanguageName(QStringLiteral("de"), third), u"German");
}

TEST(ThirdLanguage, InsertsEnglishTextsIntoItsOwnPhrase) {
    EXPECT_EQ(L10n::pasteTargetLabel(QStringLiteral("Notes"), third), u"Pasted to = Notes");
}

TEST(ThirdLanguage, IsWordedForTheDesktop) {
    EXPECT_EQ(PlatformTexts::forLinux().text(Key::dictationLiveHotkey, third), u"Klavo: dekstra Alt (AltGr)");
    EXPECT_EQ(
        PlatformTexts::forMacOS().text(Key::dictationLiveHotkey, third), u"Klavo: Right Option (\u2325)");
    EXPECT_EQ(PlatformTexts::forLinux().text(Key::settingsRightOption, third), u"Right Alt (AltGr)");
    EXPECT_EQ(PlatformTexts::forLinux().text(Phrase::quitShortcut, third), u"Ctrl+Q");
    EXPECT_EQ(PlatformTexts::forLinux().text(Key::routeHistory, third), u"Historio");
}

TEST(ThirdLanguage, DoesNotAffectTheOthers) {
    EXPECT_EQ(L10n::text(Key::routeHistory, AppLanguage::English), u"History");
    EXPECT_EQ(L10n::text(Key::routeHistory, AppLanguage::Romanian), u"Istoric");
}
