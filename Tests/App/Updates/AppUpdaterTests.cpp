#include "TolmiApp/Updates/AppUpdater.h"

#include "Support/FakeUpdaterController.h"
#include "Support/VirtualClock.h"

#include <gtest/gtest.h>

namespace {
BundleInfo bundleWith(const QVariantMap &dictionary) {
    return { QString(), FileURL(QStringLiteral("/opt/tolmi")), dictionary };
}

BundleInfo configuredBundle() {
    return bundleWith({ { QStringLiteral("SUFeedURL"), QStringLiteral("https://example.org/feed.xml") },
        { QStringLiteral("SUPublicEDKey"), QStringLiteral("key") } });
}

class AppUpdaterTest : public testing::Test {
protected:
    void make(const BundleInfo &bundle) {
        testing::internal::CaptureStderr();
        m_updater = std::make_unique<AppUpdater>(
            bundle,
            [this] {
                ++m_controllerCount;
                return m_controller;
            },
            m_clock);
        m_log = testing::internal::GetCapturedStderr();
    }
    void expectOff() const {
        EXPECT_FALSE(m_updater->isConfigured());
        EXPECT_FALSE(m_updater->canCheckForUpdates());
        EXPECT_FALSE(m_updater->automaticallyChecksForUpdates());
        EXPECT_EQ(m_updater->updaterController(), nullptr);
        EXPECT_EQ(m_controllerCount, 0);
        EXPECT_EQ(m_log, "Tolmi: Sparkle updater disabled because SUFeedURL/SUPublicEDKey are missing.\n");
    }

    VirtualClock m_clock;
    std::shared_ptr<FakeUpdaterController> m_controller = std::make_shared<FakeUpdaterController>();
    int m_controllerCount = 0;
    std::unique_ptr<AppUpdater> m_updater;
    std::string m_log;
};

TEST_F(AppUpdaterTest, IsDisabledUnlessBothBundleKeysAreStrings) {
    const QVariant feed = QStringLiteral("https://example.org/feed.xml");
    const QVariant key = QStringLiteral("key");
    const QVariant blank = QStringLiteral(" \t\r\n\u00a0\u2003");
    const std::vector<std::pair<QVariant, QVariant>> cases { { {}, {} }, { feed, {} }, { {}, key },
        { QString(), key }, { feed, QString() }, { blank, key }, { feed, blank }, { blank, blank },
        { 7, key }, { feed, true }, { feed, QByteArray("key") } };
    for (const auto &[feedValue, keyValue] : cases) {
        QVariantMap dictionary;
        if (feedValue.isValid())
            dictionary[QStringLiteral("SUFeedURL")] = feedValue;
        if (keyValue.isValid())
            dictionary[QStringLiteral("SUPublicEDKey")] = keyValue;
        make(bundleWith(dictionary));
        expectOff();
    }
}

TEST_F(AppUpdaterTest, DoesNotValidateFeedAndKey) {
    make(bundleWith({ { QStringLiteral("SUFeedURL"), QStringLiteral(" no address ") },
        { QStringLiteral("SUPublicEDKey"), QStringLiteral("?") } }));
    EXPECT_TRUE(m_updater->isConfigured());
    EXPECT_EQ(m_controllerCount, 1);
}

TEST_F(AppUpdaterTest, CheckingWhileDisabledDoesNothing) {
    make(bundleWith({}));
    m_updater->checkForUpdates();
    m_clock.runPosted();
    expectOff();
    EXPECT_EQ(m_controller->checkCount, 0);
}

TEST_F(AppUpdaterTest, WritingTheSettingWhileDisabledDoesNothing) {
    make(bundleWith({}));
    m_updater->setAutomaticallyChecksForUpdates(true);
    m_clock.runPosted();
    EXPECT_FALSE(m_controller->isStarted);
    EXPECT_EQ(m_controller->automaticWrites, std::vector<bool> {});
    EXPECT_FALSE(m_updater->isConfigured());
    EXPECT_FALSE(m_updater->canCheckForUpdates());
}

TEST_F(AppUpdaterTest, StartsTheControllerAndReadsItsFlagsAtOnce) {
    m_controller = std::make_shared<FakeUpdaterController>(false);
    make(configuredBundle());
    EXPECT_EQ(m_log, "");
    EXPECT_TRUE(m_controller->isStarted);
    EXPECT_TRUE(m_updater->isConfigured());
    EXPECT_TRUE(m_updater->canCheckForUpdates());
    EXPECT_FALSE(m_updater->automaticallyChecksForUpdates());
    EXPECT_EQ(m_updater->updaterController(), m_controller);
}

TEST_F(AppUpdaterTest, ForwardsACheck) {
    make(configuredBundle());
    m_updater->checkForUpdates();
    EXPECT_EQ(m_controller->checkCount, 1);
}

TEST_F(AppUpdaterTest, FollowsTheControllersFlagsInALaterTurn) {
    make(configuredBundle());
    m_clock.runPosted();
    m_controller->setCanCheck(false);
    m_controller->setAutomatic(false);
    EXPECT_TRUE(m_updater->canCheckForUpdates());
    EXPECT_TRUE(m_updater->automaticallyChecksForUpdates());
    m_clock.runPosted();
    EXPECT_FALSE(m_updater->canCheckForUpdates());
    EXPECT_FALSE(m_updater->automaticallyChecksForUpdates());
}

TEST_F(AppUpdaterTest, ForwardsTheViewsSettingInALaterTurn) {
    make(configuredBundle());
    m_clock.runPosted();
    m_controller->automaticWrites.clear();
    m_updater->setAutomaticallyChecksForUpdates(false);
    EXPECT_EQ(m_controller->automaticWrites, std::vector<bool> {});
    m_clock.runPosted();
    EXPECT_EQ(m_controller->automaticWrites, std::vector { false });
    EXPECT_FALSE(m_controller->automaticallyChecksForUpdates());
}

TEST_F(AppUpdaterTest, DoesNotForwardTheInitialValue) {
    m_controller = std::make_shared<FakeUpdaterController>(false);
    make(configuredBundle());
    EXPECT_EQ(m_controller->automaticWrites, std::vector<bool> {});
    // Observing the controller starts with the current value, which is the first one forwarded.
    m_clock.runPosted();
    EXPECT_EQ(m_controller->automaticWrites, std::vector { false });
}

TEST_F(AppUpdaterTest, ForwardsEqualValuesOnce) {
    make(configuredBundle());
    m_clock.runPosted();
    m_controller->automaticWrites.clear();
    for (const bool value : { false, false, true, true, false })
        m_updater->setAutomaticallyChecksForUpdates(value);
    m_clock.runPosted();
    EXPECT_EQ(m_controller->automaticWrites, (std::vector { false, true, false }));
}

TEST_F(AppUpdaterTest, AControllersChangeIsForwardedBackAtMostOnce) {
    make(configuredBundle());
    m_clock.runPosted();
    m_controller->automaticWrites.clear();
    m_controller->setAutomatic(false);
    m_clock.runPosted();
    EXPECT_EQ(m_controller->automaticWrites, std::vector { false });
    EXPECT_FALSE(m_updater->automaticallyChecksForUpdates());
}

TEST_F(AppUpdaterTest, PendingChangesSurviveADestroyedUpdater) {
    make(configuredBundle());
    m_clock.runPosted();
    m_controller->setCanCheck(false);
    m_updater->setAutomaticallyChecksForUpdates(false);
    m_updater.reset();
    m_controller->automaticWrites.clear();
    m_controller.reset();
    m_clock.runPosted();
}
} // namespace
