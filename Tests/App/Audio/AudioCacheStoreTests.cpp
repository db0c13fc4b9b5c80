#include "TolmiApp/Audio/AudioCacheStore.h"

#include "Foundation/Error.h"
#include "Support/FakeFileManager.h"
#include "Support/Print.h"

#include <QRegularExpression>

#include <gtest/gtest.h>

#include <cerrno>

namespace {
const QString root = QStringLiteral("/home/user/.local/share/Tolmi/audio-cache");

QString q(const char *utf8) {
    return QString::fromUtf8(utf8);
}

class AudioCacheStoreTest : public testing::Test {
protected:
    FakeFileManager files;
    AudioCacheStore store { files };
};
} // namespace

TEST_F(AudioCacheStoreTest, IsInTheApplicationFolder) {
    EXPECT_EQ(store.rootDirectoryURL().path(), root);
    EXPECT_TRUE(files.calls.empty());
}

TEST_F(AudioCacheStoreTest, IsInTheTemporaryFolderIfThereIsNoOther) {
    files.applicationSupport.reset();
    EXPECT_EQ(AudioCacheStore(files).rootDirectoryURL().path(), u"/run/user/1000/Tolmi/audio-cache");
}

TEST_F(AudioCacheStoreTest, CanPrepareTheFolderRepeatedly) {
    store.prepareDirectory();
    EXPECT_EQ(files.folders.count(root), 1u);
    store.prepareDirectory();
    EXPECT_EQ(files.folders.count(root), 1u);
}

TEST_F(AudioCacheStoreTest, CreatesANewNameEachTimeButNoFile) {
    static const QRegularExpression name(
        QStringLiteral("^recording-[0-9A-F]{8}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{12}\\.wav$"));
    const FileURL first = store.makeRecordingURL();
    const FileURL second = store.makeRecordingURL();
    EXPECT_NE(first, second);
    EXPECT_EQ(first.deletingLastPathComponent().path(), root);
    EXPECT_TRUE(name.match(first.lastPathComponent()).hasMatch()) << first.path().toStdString();
    EXPECT_EQ(files.folders.count(root), 1u);
    EXPECT_TRUE(files.files.empty());
}

TEST_F(AudioCacheStoreTest, PropagatesFileManagerErrors) {
    const SystemError full = SystemError::fromErrno(ENOSPC, root);
    files.createDirectoryFailures = { full, full };
    EXPECT_THROW(store.prepareDirectory(), SystemError);
    try {
        store.makeRecordingURL();
        ADD_FAILURE() << "nothing was thrown";
    } catch (const SystemError &error) {
        EXPECT_EQ(error.errorDescription(), full.errorDescription());
    }
}

TEST_F(AudioCacheStoreTest, RefersToARecordingByItsName) {
    const FileURL url = store.makeRecordingURL();
    EXPECT_EQ(store.relativePath(url), url.lastPathComponent());
    EXPECT_EQ(store.resolveURL(url.lastPathComponent()), url);
}

TEST_F(AudioCacheStoreTest, ReturnsThePathRelativeToTheFolder) {
    const struct {
        QString path;
        std::optional<QString> expected;
    } cases[] {
        { root + q("/a.wav"), q("a.wav") },
        { root + q("/sub/a.wav"), q("sub/a.wav") },
        { root + q("/./a.wav"), q("a.wav") },
        { root + q("/sub/../a.wav"), q("a.wav") },
        { root + q("/../audio-cache//a.wav/"), q("a.wav") },
        { q("/home/user/../user/.local/share/Tolmi/audio-cache/a.wav"), q("a.wav") },
        { root, {} },
        { root + q("/"), {} },
        { root + q("/sub/.."), {} },
        { root + q("/../a.wav"), {} },
        { q("/home/user/a.wav"), {} },
        { q("/"), {} },
        { q(""), {} },
        // a sibling whose name starts with the folder's
        { root + q("-old/a.wav"), q("-old/a.wav") },
        { root + q("s"), q("s") },
    };
    for (const auto &[path, expected] : cases)
        EXPECT_EQ(store.relativePath(FileURL(path)), expected) << path.toStdString();
}

TEST_F(AudioCacheStoreTest, ResolvesAnything) {
    EXPECT_EQ(store.resolveURL(q("missing.wav")).path(), root + q("/missing.wav"));
    EXPECT_EQ(store.resolveURL(q("sub/a.wav")).path(), root + q("/sub/a.wav"));
    EXPECT_EQ(store.resolveURL(q("../history.json")).path(), root + q("/../history.json"));
    EXPECT_EQ(store.resolveURL(q("")).path(), root);
}
