#include "App/Updates/UpdateFixture.h"
#include "Platform/Desktop/QtHttpClient.h"
#include "Platform/Linux/Files/LinuxAtomicFileWriter.h"
#include "Platform/Linux/Files/LinuxFileListing.h"
#include "Platform/Linux/Files/LinuxFileManager.h"
#include "Support/AwaitTask.h"
#include "Support/FakeUserDefaults.h"
#include "Support/MisbehavingServer.h"
#include "Support/Print.h"
#include "Support/UntilTrue.h"
#include "Support/VirtualClock.h"
#include "TolmiApp/Updates/AppcastUpdater.h"
#include "TolmiApp/Updates/UpdateError.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {
using Code = UpdateError::Code;

bool isLoopback(const QUrl &url) {
    return isSecureURL(url) || url.host() == u"127.0.0.1";
}

/// The whole process with a real server and a real folder.
class UpdateServerTest : public testing::Test {
protected:
    UpdatePlatform platform() {
        return { m_http, m_defaults, m_clock, m_fileManager, m_fileListing, m_fileWriter, m_signatures,
            m_fileQueue };
    }
    UpdateSource source() const {
        UpdateSource source = m_update.source(
            m_server.url().resolved(QUrl(QStringLiteral("/feed.xml"))), FileURL(downloads()));
        source.mayAsk = &isLoopback;
        return source;
    }
    QString downloads() const { return m_folder.filePath(QStringLiteral("Downloads")); }
    QStringList downloadedFiles() const { return QDir(downloads()).entryList(QDir::Files | QDir::Hidden); }
    QByteArray contentOf(const QString &path) const {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    void answerWith(const QByteArray &body, int status = 200) {
        m_server.script.push_back({ MisbehavingServer::send(MisbehavingServer::answer(status, body)) });
    }
    template <typename T>
    T await(Task<T> task) {
        return awaitTask(std::move(task), [this] {
            bool isFirstTurn = true;
            untilTrue([&] { return !std::exchange(isFirstTurn, false); });
            m_clock.runPosted();
        });
    }
    std::optional<AppcastItem> find() { return await(findUpdate(platform(), source())); }
    /// Finds and downloads the update.
    FileURL fetch(HttpProgress progress = [](qint64) { return true; }) {
        return await(downloadUpdate(platform(), source(), find().value(), std::move(progress)));
    }
    template <typename Work>
    void expectError(Code code, Work work) {
        try {
            work();
            ADD_FAILURE() << "no error";
        } catch (const UpdateError &error) {
            EXPECT_EQ(error.code(), code) << error.what();
        }
        EXPECT_EQ(downloadedFiles(), QStringList());
    }

    PublishedUpdate m_update;
    MisbehavingServer m_server;
    QTemporaryDir m_folder;
    VirtualClock m_clock;
    QtHttpClient m_http { m_clock };
    FakeUserDefaults m_defaults;
    LinuxFileManager m_fileManager;
    LinuxFileListing m_fileListing;
    LinuxAtomicFileWriter m_fileWriter;
    SodiumSignatureVerifier m_signatures;
    SerialQueue m_fileQueue { QStringLiteral("UpdateServerTest") };
};

TEST_F(UpdateServerTest, AGoodUpdateIsSavedInTheDownloadFolder) {
    answerWith(m_update.feed());
    answerWith(m_update.content);
    qint64 received = 0;
    const FileURL url = fetch([&](qint64 size) {
        EXPECT_GE(size, received);
        received = size;
        return true;
    });
    EXPECT_EQ(received, m_update.content.size());
    EXPECT_EQ(url.path(), downloads() + QStringLiteral("/tolmi-2.0.tar.xz"));
    EXPECT_EQ(contentOf(url.path()), m_update.content);
    EXPECT_EQ(downloadedFiles(), QStringList { QStringLiteral("tolmi-2.0.tar.xz") });
    EXPECT_TRUE(m_server.requests.at(1).startsWith("GET /files/tolmi-2.0.tar.xz "));
}

TEST_F(UpdateServerTest, AnExistingFileIsKept) {
    const QString name = QStringLiteral("tolmi-2.0.tar.xz");
    answerWith(m_update.feed());
    answerWith(m_update.content);
    const QString first = fetch().path();
    answerWith(m_update.feed());
    answerWith(m_update.content);
    EXPECT_EQ(fetch().path(), downloads() + QStringLiteral("/2-") + name);
    EXPECT_EQ(downloadedFiles().size(), 2);
    EXPECT_EQ(contentOf(first), m_update.content);
}

TEST_F(UpdateServerTest, TheUrlYieldsAPlainFileName) {
    const std::vector<std::pair<QByteArray, QString>> cases { { "a/b.tar?x=1#y", QStringLiteral("b.tar") },
        { "a%2F..%2F..%2Fevil", QStringLiteral("evil") }, { ".hidden", QStringLiteral("hidden") },
        { "..", QStringLiteral("tolmi-update") }, { "folder/", QStringLiteral("2-tolmi-update") },
        { "a%0Ab%1Bc", QStringLiteral("abc") } };
    for (const auto &[address, name] : cases) {
        m_update.url = address;
        answerWith(m_update.feed());
        answerWith(m_update.content);
        EXPECT_EQ(fetch().path(), downloads() + u'/' + name) << address.toStdString();
    }
}

TEST_F(UpdateServerTest, AnOlderOrEqualVersionIsNoUpdate) {
    for (const char *version : { "0.9", "1.0", "1.0.0", "1.0-beta" }) {
        m_update.version = version;
        answerWith(m_update.feed());
        EXPECT_EQ(find(), std::nullopt) << version;
    }
}

TEST_F(UpdateServerTest, ATamperedFileIsRejected) {
    answerWith(m_update.feed());
    answerWith("the bad program");
    ASSERT_EQ(m_update.content.size(), 15);
    expectError(Code::WrongSignature, [this] { fetch(); });
}

TEST_F(UpdateServerTest, ASignatureOfAnotherKeyIsRejected) {
    m_update.signature = SigningKey().sign(m_update.content);
    answerWith(m_update.feed());
    answerWith(m_update.content);
    expectError(Code::WrongSignature, [this] { fetch(); });
}

TEST_F(UpdateServerTest, UnsignedUpdateIsNotOffered) {
    for (const QByteArray &signature : { QByteArray(), QByteArray("short"), QByteArray(65, 'x') }) {
        m_update.signature = signature;
        answerWith(m_update.feed());
        expectError(Code::Unsigned, [this] { find(); });
    }
}

TEST_F(UpdateServerTest, OlderFileIsNotOfferedAsANewerVersion) {
    PublishedUpdate older = m_update;
    older.version = "0.9";
    const QByteArray olderStatement = versionStatement(QStringLiteral("0.9"), older.signature);
    for (const QByteArray &statement : { olderStatement, QByteArray("2.0"), QByteArray() }) {
        m_update.versionSignature = m_update.key.sign(statement);
        answerWith(m_update.feed());
        expectError(Code::WrongVersion, [this] { find(); });
    }
    for (const QByteArray &signature : { QByteArray(), QByteArray("short") }) {
        m_update.versionSignature = signature;
        answerWith(m_update.feed());
        expectError(Code::Unsigned, [this] { find(); });
    }
}

TEST_F(UpdateServerTest, TheSizeMustBeGivenAndReasonable) {
    for (const char *length : { "", "0", "-1", "many", "536870913", "99999999999999999999" }) {
        m_update.length = length;
        answerWith(m_update.feed());
        expectError(Code::InvalidSize, [this] { find(); });
    }
}

TEST_F(UpdateServerTest, AFileOfAnotherSizeIsRejected) {
    for (const QByteArray &content : { m_update.content.chopped(1), m_update.content + ' ', QByteArray() }) {
        answerWith(m_update.feed());
        answerWith(content);
        expectError(Code::WrongSize, [this] { fetch(); });
    }
}

TEST_F(UpdateServerTest, AnEndlessFileIsAbortedAtItsAnnouncedSize) {
    answerWith(m_update.feed());
    m_server.script.push_back(
        { MisbehavingServer::send("HTTP/1.1 200 OK\r\n\r\n"), m_server.stream(1LL << 40) });
    expectError(Code::WrongSize, [this] { fetch(); });
    EXPECT_LT(m_server.streamedByteCount, 64 * 1024 * 1024);
}

TEST_F(UpdateServerTest, BrokenConnectionLeavesNoFile) {
    answerWith(m_update.feed());
    const QByteArray answer = MisbehavingServer::answer(200, m_update.content);
    m_server.script.push_back({ MisbehavingServer::send(answer.chopped(3)), MisbehavingServer::close() });
    EXPECT_THROW(fetch(), HttpError);
    EXPECT_EQ(downloadedFiles(), QStringList());
}

TEST_F(UpdateServerTest, ACancelledDownloadStops) {
    answerWith(m_update.feed());
    answerWith(m_update.content);
    expectError(Code::WrongSize, [this] { fetch([](qint64) { return false; }); });
}

TEST_F(UpdateServerTest, ATruncatedFeedIsRejected) {
    const QByteArray feed = m_update.feed();
    for (const qsizetype size : { feed.size() - 1, feed.size() / 2, qsizetype(0) }) {
        answerWith(feed.left(size));
        expectError(Code::InvalidFeed, [this] { find(); });
    }
}

TEST_F(UpdateServerTest, AnOversizedFeedIsRejected) {
    answerWith(m_update.feed() + QByteArray(maximumFeedSize, ' '));
    expectError(Code::InvalidFeed, [this] { find(); });
}

TEST_F(UpdateServerTest, AnEmptyReplyIsDistinguishedFromNoUpdates) {
    for (const int status : { 404, 500, 204 }) {
        answerWith({}, status);
        expectError(Code::Refused, [this] { find(); });
    }
    answerWith(m_update.feed());
    answerWith("gone", 404);
    expectError(Code::Refused, [this] { fetch(); });
}

/// The update dialog with a real server, starting with the user's click.
class UpdateDialogOverServerTest : public UpdateServerTest {
protected:
    using Phase = UpdatePrompt::Phase;

    void check() {
        m_updater->start();
        m_updater->checkForUpdates();
        EXPECT_EQ(m_prompt.phase(), Phase::Checking);
        waitUntilItRests();
    }
    void download() {
        m_prompt.download();
        EXPECT_EQ(m_prompt.phase(), Phase::Downloading);
        waitUntilItRests();
    }
    void expectFailure(Code code) {
        EXPECT_EQ(m_prompt.phase(), Phase::Failed);
        EXPECT_EQ(m_prompt.message(), UpdateError(code).errorDescription());
        EXPECT_EQ(downloadedFiles(), QStringList());
    }

    UpdatePrompt m_prompt;

private:
    void waitUntilItRests() {
        ASSERT_TRUE(untilTrue([this] {
            m_clock.runPosted();
            return m_updater->canCheckForUpdates();
        }));
    }

    std::shared_ptr<AppcastUpdater> m_updater = AppcastUpdater::create(platform(), source(), m_prompt);
};

TEST_F(UpdateDialogOverServerTest, GoodUpdateIsOfferedAndDownloaded) {
    answerWith(m_update.feed());
    answerWith(m_update.content);
    check();
    EXPECT_EQ(m_prompt.phase(), Phase::Found);
    EXPECT_EQ(m_server.requests.size(), 1u);
    download();
    EXPECT_EQ(m_prompt.phase(), Phase::Downloaded);
    EXPECT_EQ(m_prompt.progress(), 1);
    EXPECT_EQ(contentOf(m_prompt.filePath()), m_update.content);
}

TEST_F(UpdateDialogOverServerTest, ATamperedFileIsReportedAndNotKept) {
    answerWith(m_update.feed());
    answerWith("the bad program");
    check();
    download();
    expectFailure(Code::WrongSignature);
}

TEST_F(UpdateDialogOverServerTest, AnUnsignedUpdateIsReportedAndNotOffered) {
    m_update.signature.clear();
    answerWith(m_update.feed());
    check();
    expectFailure(Code::Unsigned);
}

TEST_F(UpdateDialogOverServerTest, ATruncatedOrOversizedFeedIsReported) {
    for (const QByteArray &feed :
        { m_update.feed().chopped(5), m_update.feed() + QByteArray(maximumFeedSize, ' ') }) {
        answerWith(feed);
        check();
        expectFailure(Code::InvalidFeed);
    }
}

TEST_F(UpdateDialogOverServerTest, AnOlderVersionIsNoUpdate) {
    m_update.version = "0.9";
    answerWith(m_update.feed());
    check();
    EXPECT_EQ(m_prompt.phase(), Phase::UpToDate);
}

TEST_F(UpdateServerTest, NothingIsRequestedFromAnInsecureUrl) {
    UpdateSource strict = source();
    strict.mayAsk = &isSecureURL;
    expectError(Code::Insecure, [&] { await(findUpdate(platform(), strict)); });
    EXPECT_TRUE(m_server.requests.empty());
}

TEST_F(UpdateServerTest, SecureFeedCannotNameAnInsecureFile) {
    m_update.url = "http://example.org/tolmi.tar";
    answerWith(m_update.feed());
    expectError(Code::Insecure, [this] { find(); });
}

TEST_F(UpdateServerTest, NothingIsRequestedWithAnUnusableKey) {
    for (const char *key : { "", "?", "c2hvcnQ=" }) {
        UpdateSource spoiled = source();
        spoiled.publicKey = QString::fromLatin1(key);
        expectError(Code::InvalidPublicKey, [&] { await(findUpdate(platform(), spoiled)); });
    }
    EXPECT_TRUE(m_server.requests.empty());
}

TEST(SecureURL, IsHttpsWithAHost) {
    EXPECT_TRUE(isSecureURL(QUrl(QStringLiteral("https://example.org/feed.xml"))));
    for (const char *url : { "", "http://example.org", "file:///feed.xml", "https:///feed.xml", "feed.xml" })
        EXPECT_FALSE(isSecureURL(QUrl(QString::fromLatin1(url)))) << url;
}
} // namespace
