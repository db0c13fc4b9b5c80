#include "TolmiApp/Updates/AppcastUpdater.h"

#include "App/Updates/UpdateFixture.h"
#include "Support/FakeAtomicFileWriter.h"
#include "Support/FakeFileListing.h"
#include "Support/FakeFileManager.h"
#include "Support/FakeHttpClient.h"
#include "Support/FakeUserDefaults.h"
#include "Support/Print.h"
#include "Support/UntilTrue.h"
#include "Support/VirtualClock.h"

#include <gtest/gtest.h>

#include <future>

namespace {
using Phase = UpdatePrompt::Phase;

constexpr double day = 24 * 3600;
const QString lastCheckKey = QStringLiteral("tolmi.updates.lastCheck");
const QString automaticKey = QStringLiteral("tolmi.updates.automaticallyChecks");

class AppcastUpdaterTest : public testing::Test {
protected:
    void make() {
        m_updater = AppcastUpdater::create({ m_http, m_defaults, m_clock, m_fileManager, m_fileListing,
                                               m_fileWriter, m_signatures, m_fileQueue },
            m_update.source(QUrl(QStringLiteral("https://example.org/feed.xml")),
                FileURL(QStringLiteral("/home/user/Downloads"))),
            m_prompt);
    }
    void makeAndStart() {
        make();
        m_updater->start();
    }
    void answerWith(const QByteArray &body) { m_http.replies.push_back(HttpResponse { 200, body }); }
    void storeLastCheck(double secondsAgo) {
        m_defaults.values[lastCheckKey] = m_clock.now().secondsSince1970() - secondsAgo;
    }
    void findUpdateVisibly() {
        answerWith(m_update.feed());
        m_updater->checkForUpdates();
        ASSERT_EQ(m_prompt.phase(), Phase::Found);
    }
    /// Runs the queued file work and its consequences.
    void workOffTheFileQueue() {
        for (int step = 0; step < 4; ++step) {
            m_fileQueue.sync([] {});
            m_clock.runPosted();
        }
    }
    void waitForTheFileQueue() {
        ASSERT_TRUE(untilTrue([this] {
            m_clock.runPosted();
            return m_updater->canCheckForUpdates();
        }));
    }

    PublishedUpdate m_update;
    FakeHttpClient m_http;
    FakeUserDefaults m_defaults;
    VirtualClock m_clock;
    FakeFileManager m_fileManager;
    FakeFileListing m_fileListing;
    FakeAtomicFileWriter m_fileWriter;
    SodiumSignatureVerifier m_signatures;
    SerialQueue m_fileQueue { QStringLiteral("AppcastUpdaterTest") };
    UpdatePrompt m_prompt;
    std::shared_ptr<AppcastUpdater> m_updater;
};

TEST_F(AppcastUpdaterTest, ChecksOnlyOnceItIsStarted) {
    make();
    EXPECT_FALSE(m_updater->canCheckForUpdates());
    m_updater->checkForUpdates();
    m_clock.advance(2 * day);
    EXPECT_TRUE(m_http.requests.empty());
    m_updater->start();
    EXPECT_TRUE(m_updater->canCheckForUpdates());
}

TEST_F(AppcastUpdaterTest, ShowsANewerVersionWithItsNotes) {
    makeAndStart();
    findUpdateVisibly();
    EXPECT_EQ(m_prompt.version(), QStringLiteral("2.0"));
    EXPECT_EQ(m_prompt.releaseNotes(), QStringLiteral("Faster"));
    ASSERT_EQ(m_http.requests.size(), 1u);
    EXPECT_EQ(m_http.requests[0].maximumBodySize, maximumFeedSize);
    EXPECT_TRUE(m_fileWriter.writes.empty());
}

TEST_F(AppcastUpdaterTest, ReportsThatNothingIsNewer) {
    m_update.version = "1.0";
    makeAndStart();
    answerWith(m_update.feed());
    m_updater->checkForUpdates();
    EXPECT_EQ(m_prompt.phase(), Phase::UpToDate);
    EXPECT_TRUE(m_updater->canCheckForUpdates());
}

TEST_F(AppcastUpdaterTest, ReportsWhyACheckFailed) {
    makeAndStart();
    m_http.replies.push_back(HttpError(HttpError::Code::HostNotFound));
    m_updater->checkForUpdates();
    EXPECT_EQ(m_prompt.phase(), Phase::Failed);
    EXPECT_EQ(m_prompt.message(), QStringLiteral("The server's name is not known."));
    EXPECT_TRUE(m_updater->canCheckForUpdates());
}

TEST_F(AppcastUpdaterTest, DownloadsOnRequest) {
    makeAndStart();
    findUpdateVisibly();
    answerWith(m_update.content);
    m_prompt.download();
    EXPECT_EQ(m_prompt.phase(), Phase::Downloading);
    EXPECT_EQ(m_prompt.progress(), 1);
    EXPECT_FALSE(m_updater->canCheckForUpdates());
    waitForTheFileQueue();
    EXPECT_EQ(m_prompt.phase(), Phase::Downloaded);
    EXPECT_EQ(m_prompt.filePath(), QStringLiteral("/home/user/Downloads/tolmi-2.0.tar.xz"));
    EXPECT_EQ(m_fileWriter.writes,
        (std::vector<FakeAtomicFileWriter::Write> {
            { m_prompt.filePath(), m_update.content, FilePrivacy::AsUsual } }));
}

TEST_F(AppcastUpdaterTest, ReportsWhyADownloadFailed) {
    makeAndStart();
    findUpdateVisibly();
    answerWith(m_update.content);
    m_fileWriter.failures.emplace_back(QStringLiteral("No space left on device: /home"));
    m_prompt.download();
    waitForTheFileQueue();
    EXPECT_EQ(m_prompt.phase(), Phase::Failed);
    EXPECT_EQ(m_prompt.message(), QStringLiteral("No space left on device: /home"));
}

TEST_F(AppcastUpdaterTest, RetriesAfterAFailure) {
    makeAndStart();
    m_http.replies.push_back(HttpError(HttpError::Code::CannotConnect));
    m_updater->checkForUpdates();
    answerWith(m_update.feed());
    m_prompt.retry();
    EXPECT_EQ(m_prompt.phase(), Phase::Found);
    m_prompt.retry();
    EXPECT_EQ(m_http.requests.size(), 2u);
}

TEST_F(AppcastUpdaterTest, DismissedDownloadShowsNothingMore) {
    makeAndStart();
    findUpdateVisibly();
    answerWith(m_update.content);
    m_prompt.download();
    m_prompt.dismiss();
    EXPECT_EQ(m_prompt.phase(), Phase::Hidden);
    EXPECT_TRUE(m_updater->canCheckForUpdates());
    m_fileQueue.sync([] {});
    m_clock.runPosted();
    EXPECT_EQ(m_prompt.phase(), Phase::Hidden);
}

TEST_F(AppcastUpdaterTest, OnlyAFoundUpdateCanBeDownloaded) {
    makeAndStart();
    m_prompt.download();
    m_update.version = "0.1";
    answerWith(m_update.feed());
    m_updater->checkForUpdates();
    m_prompt.download();
    EXPECT_EQ(m_http.requests.size(), 1u);
    EXPECT_EQ(m_prompt.phase(), Phase::UpToDate);
}

TEST_F(AppcastUpdaterTest, ChecksAutomaticallySoonAfterTheFirstStartAndThenDaily) {
    m_update.version = "1.0";
    makeAndStart();
    for (int count = 0; count < 3; ++count)
        answerWith(m_update.feed());
    EXPECT_TRUE(m_http.requests.empty());
    m_clock.advance(10);
    EXPECT_EQ(m_http.requests.size(), 1u);
    m_clock.advance(day - 1);
    EXPECT_EQ(m_http.requests.size(), 1u);
    m_clock.advance(1);
    EXPECT_EQ(m_http.requests.size(), 2u);
    m_clock.advance(day);
    EXPECT_EQ(m_http.requests.size(), 3u);
    EXPECT_EQ(m_prompt.phase(), Phase::Hidden);
}

TEST_F(AppcastUpdaterTest, RemembersTheLastCheckOfAnEarlierRun) {
    m_update.version = "1.0";
    storeLastCheck(day - 100);
    makeAndStart();
    answerWith(m_update.feed());
    m_clock.advance(99);
    EXPECT_TRUE(m_http.requests.empty());
    m_clock.advance(1);
    EXPECT_EQ(m_http.requests.size(), 1u);
    EXPECT_EQ(m_defaults.doubleValue(lastCheckKey), m_clock.now().secondsSince1970());
}

TEST_F(AppcastUpdaterTest, CancellingDuringVerificationLeavesNoFile) {
    makeAndStart();
    findUpdateVisibly();
    answerWith(m_update.content);
    m_prompt.download();
    m_prompt.dismiss();
    workOffTheFileQueue();
    EXPECT_TRUE(m_fileWriter.writes.empty());
    EXPECT_EQ(m_prompt.phase(), Phase::Hidden);
}

TEST_F(AppcastUpdaterTest, CancellingDuringTheWriteRemovesTheFile) {
    makeAndStart();
    findUpdateVisibly();
    answerWith(m_update.content);
    m_prompt.download();
    m_fileQueue.sync([] {});
    std::promise<void> release;
    m_fileQueue.async([released = release.get_future().share()] { released.wait(); });
    m_clock.runPosted();
    m_prompt.dismiss();
    release.set_value();
    workOffTheFileQueue();
    EXPECT_EQ(m_fileWriter.writes.size(), 1u);
    EXPECT_EQ(
        m_fileListing.removals, std::vector { QStringLiteral("/home/user/Downloads/tolmi-2.0.tar.xz") });
    EXPECT_EQ(m_prompt.phase(), Phase::Hidden);
}

TEST_F(AppcastUpdaterTest, ALastCheckInTheFutureIsIgnored) {
    storeLastCheck(-1000 * day);
    makeAndStart();
    answerWith(m_update.feed());
    m_clock.advance(10);
    EXPECT_EQ(m_http.requests.size(), 1u);
}

TEST_F(AppcastUpdaterTest, AManualCheckPostponesTheAutomaticOne) {
    makeAndStart();
    findUpdateVisibly();
    m_clock.advance(day - 1);
    EXPECT_EQ(m_http.requests.size(), 1u);
    answerWith(m_update.feed());
    m_clock.advance(3600);
    EXPECT_EQ(m_http.requests.size(), 2u);
}

TEST_F(AppcastUpdaterTest, ShowsWhatAnAutomaticCheckFound) {
    makeAndStart();
    answerWith(m_update.feed());
    m_clock.advance(10);
    EXPECT_EQ(m_prompt.phase(), Phase::Found);
    EXPECT_TRUE(m_fileWriter.writes.empty());
}

TEST_F(AppcastUpdaterTest, AutomaticChecksFailSilentlyAndWaitADay) {
    makeAndStart();
    m_http.replies.push_back(HttpError(HttpError::Code::CannotConnect));
    testing::internal::CaptureStderr();
    m_clock.advance(day);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
        "Tolmi: the automatic check for updates failed: The server does not accept connections.\n");
    EXPECT_EQ(m_prompt.phase(), Phase::Hidden);
    EXPECT_EQ(m_http.requests.size(), 1u);
}

TEST_F(AppcastUpdaterTest, DoesNotCheckAutomaticallyIfDisabled) {
    m_defaults.values[automaticKey] = false;
    makeAndStart();
    EXPECT_FALSE(m_updater->automaticallyChecksForUpdates());
    EXPECT_EQ(m_clock.pendingCallCount(), 0u);
    m_clock.advance(3 * day);
    EXPECT_TRUE(m_http.requests.empty());
}

TEST_F(AppcastUpdaterTest, SettingIsStoredAndTakesEffectAtOnce) {
    m_defaults.values[automaticKey] = false;
    makeAndStart();
    answerWith(m_update.feed());
    m_updater->setAutomaticallyChecksForUpdates(true);
    EXPECT_EQ(m_defaults.boolean(automaticKey), true);
    m_clock.advance(0);
    EXPECT_EQ(m_http.requests.size(), 1u);
    m_updater->setAutomaticallyChecksForUpdates(false);
    EXPECT_EQ(m_defaults.boolean(automaticKey), false);
    m_clock.advance(3 * day);
    EXPECT_EQ(m_http.requests.size(), 1u);
    EXPECT_EQ(m_clock.pendingCallCount(), 0u);
}

TEST_F(AppcastUpdaterTest, ObserversGetTheCurrentAndEachNewValue) {
    make();
    std::vector<bool> canCheck;
    std::vector<bool> automatic;
    m_updater->observeCanCheckForUpdates([&] { canCheck.push_back(m_updater->canCheckForUpdates()); });
    m_updater->observeAutomaticallyChecksForUpdates(
        [&] { automatic.push_back(m_updater->automaticallyChecksForUpdates()); });
    m_updater->start();
    findUpdateVisibly();
    m_updater->setAutomaticallyChecksForUpdates(true);
    m_updater->setAutomaticallyChecksForUpdates(false);
    EXPECT_EQ(canCheck, (std::vector { false, true, false, true }));
    EXPECT_EQ(automatic, (std::vector { true, true, false }));
}

TEST_F(AppcastUpdaterTest, TheTimerSurvivesADestroyedUpdater) {
    makeAndStart();
    m_updater.reset();
    m_clock.advance(day);
    m_prompt.dismiss();
    EXPECT_TRUE(m_http.requests.empty());
}
} // namespace
