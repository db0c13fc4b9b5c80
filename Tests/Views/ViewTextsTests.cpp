#include "TolmiApp/Shell/ViewTexts.h"

#include "Support/SettingsStoreFixture.h"

#include <gtest/gtest.h>

namespace {

class ViewTextsTest : public testing::Test {
protected:
    QString text(const char *name) const { return texts.value(QLatin1String(name)).toString(); }

    SettingsStoreFixture settings;
    ViewTexts texts { settings.store, PlatformTexts::forLinux() };
};

} // namespace

TEST_F(ViewTextsTest, HaveEveryKeyByName) {
    for (const L10n::Key key : L10n::allKeys()) {
        const QByteArray name = L10n::rawValue(key).toLatin1();
        EXPECT_FALSE(text(name.constData()).isEmpty()) << name.constData();
    }
}

TEST_F(ViewTextsTest, FollowTheLanguageOfTheInterface) {
    settings.store.setUiLanguage(AppLanguage::English);
    EXPECT_EQ(text("routeHistory"), QStringLiteral("History"));
    settings.store.setUiLanguage(AppLanguage::Romanian);
    EXPECT_EQ(text("routeHistory"), QStringLiteral("Istoric"));
}

TEST_F(ViewTextsTest, LabelAValue) {
    EXPECT_EQ(
        texts.labelled(QStringLiteral("Microphone"), QStringLiteral("Granted")), u"Microphone: Granted");
}

TEST_F(ViewTextsTest, NameTheKeysOfTheDesktop) {
    settings.store.setUiLanguage(AppLanguage::English);
    EXPECT_EQ(text("settingsRightOption"), QStringLiteral("Right Alt (AltGr)"));
    EXPECT_EQ(text("settingsShortcut"), QStringLiteral("Ctrl+,"));
    EXPECT_EQ(text("quitShortcut"), QStringLiteral("Ctrl+Q"));
}
