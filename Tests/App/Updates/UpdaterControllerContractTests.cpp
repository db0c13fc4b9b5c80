#include "App/Updates/UpdateFixture.h"
#include "Support/FakeAtomicFileWriter.h"
#include "Support/FakeFileListing.h"
#include "Support/FakeFileManager.h"
#include "Support/FakeHttpClient.h"
#include "Support/FakeUpdaterController.h"
#include "Support/FakeUserDefaults.h"
#include "Support/Print.h"
#include "Support/VirtualClock.h"
#include "TolmiApp/Updates/AppcastUpdater.h"

#include <gtest/gtest.h>

namespace {
class MadeFake {
public:
    UpdaterController &controller() { return m_controller; }

private:
    FakeUpdaterController m_controller;
};

class MadeAppcastUpdater {
public:
    UpdaterController &controller() { return *m_controller; }

private:
    FakeHttpClient m_http;
    FakeUserDefaults m_defaults;
    VirtualClock m_clock;
    FakeFileManager m_fileManager;
    FakeFileListing m_fileListing;
    FakeAtomicFileWriter m_fileWriter;
    SodiumSignatureVerifier m_signatures;
    SerialQueue m_fileQueue { QStringLiteral("UpdaterControllerContract") };
    UpdatePrompt m_prompt;
    std::shared_ptr<AppcastUpdater> m_controller
        = AppcastUpdater::create({ m_http, m_defaults, m_clock, m_fileManager, m_fileListing, m_fileWriter,
                                     m_signatures, m_fileQueue },
            PublishedUpdate().source(QUrl(QStringLiteral("https://example.org/feed.xml")),
                FileURL(QStringLiteral("/home/user/Downloads"))),
            m_prompt);
};

/// The behaviour of every updater controller.
template <typename Made>
class UpdaterControllerContract : public testing::Test {
protected:
    UpdaterController &controller() { return m_made.controller(); }

private:
    Made m_made;
};

using Controllers = testing::Types<MadeFake, MadeAppcastUpdater>;
TYPED_TEST_SUITE(UpdaterControllerContract, Controllers);

TYPED_TEST(UpdaterControllerContract, AllowsChecksOnceItIsStarted) {
    EXPECT_FALSE(this->controller().canCheckForUpdates());
    this->controller().start();
    EXPECT_TRUE(this->controller().canCheckForUpdates());
}

TYPED_TEST(UpdaterControllerContract, LooksByItselfUnlessToldOtherwise) {
    EXPECT_TRUE(this->controller().automaticallyChecksForUpdates());
    for (const bool isAutomatic : { false, true, true }) {
        this->controller().setAutomaticallyChecksForUpdates(isAutomatic);
        EXPECT_EQ(this->controller().automaticallyChecksForUpdates(), isAutomatic);
    }
}

TYPED_TEST(UpdaterControllerContract, ObserverHearsOfTheValueOfNowAndOfEachAssignment) {
    std::vector<bool> canCheck;
    std::vector<bool> automatic;
    this->controller().observeCanCheckForUpdates(
        [&] { canCheck.push_back(this->controller().canCheckForUpdates()); });
    this->controller().observeAutomaticallyChecksForUpdates(
        [&] { automatic.push_back(this->controller().automaticallyChecksForUpdates()); });
    this->controller().start();
    for (const bool isAutomatic : { true, false, false })
        this->controller().setAutomaticallyChecksForUpdates(isAutomatic);
    EXPECT_EQ(canCheck, (std::vector { false, true }));
    EXPECT_EQ(automatic, (std::vector { true, true, false, false }));
}

TYPED_TEST(UpdaterControllerContract, NewObserverReplacesTheOneBefore) {
    int firstCount = 0;
    int secondCount = 0;
    this->controller().observeAutomaticallyChecksForUpdates([&] { ++firstCount; });
    this->controller().observeAutomaticallyChecksForUpdates([&] { ++secondCount; });
    this->controller().setAutomaticallyChecksForUpdates(false);
    EXPECT_EQ(firstCount, 1);
    EXPECT_EQ(secondCount, 2);
}
} // namespace
