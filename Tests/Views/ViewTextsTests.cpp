#include "TolmiApp/Shell/ViewTexts.h"

#include "Support/SettingsOverFakes.h"

#include <QMetaEnum>

#include <gtest/gtest.h>

namespace {

class ViewTextsTest : public testing::Test {
protected:
    QString text(const char *name) const { return texts.value(QLatin1String(name)).toString(); }

    SettingsOverFakes settings;
    ViewTexts texts { settings.store, PlatformTexts::forLinux() };
};

} // namespace

TEST_F(ViewTextsTest, HaveEveryKeyUnderItsName) {
    const auto keys = QMetaEnum::fromType<L10n::Key>();
    for (int index = 0; index < keys.keyCount(); ++index)
        EXPECT_FALSE(text(keys.key(index)).isEmpty()) << keys.key(index);
}

TEST_F(ViewTextsTest, FollowTheLanguageOfTheInterface) {
    settings.store.setUiLanguage(AppLanguage::English);
    EXPECT_EQ(text("routeHistory"), QStringLiteral("History"));
    settings.store.setUiLanguage(AppLanguage::Romanian);
    EXPECT_EQ(text("routeHistory"), QStringLiteral("Istoric"));
}

TEST_F(ViewTextsTest, NameTheKeysOfTheDesktop) {
    settings.store.setUiLanguage(AppLanguage::English);
    EXPECT_EQ(text("settingsRightOption"), QStringLiteral("Right Alt (AltGr)"));
    EXPECT_EQ(text("settingsShortcut"), QStringLiteral("Ctrl+,"));
    EXPECT_EQ(text("quitShortcut"), QStringLiteral("Ctrl+Q"));
}
