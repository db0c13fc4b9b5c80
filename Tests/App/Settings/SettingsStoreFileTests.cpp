#include "TolmiApp/Settings/SettingsStore.h"

#include "Platform/Desktop/FileUserDefaults.h"
#include "Platform/Linux/Files/LinuxAtomicFileWriter.h"
#include "Platform/Linux/Files/LinuxFileManager.h"
#include "Support/Print.h"
#include "Support/VirtualClock.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {
/// The settings over several runs of the program with the same file.
class SettingsStoreFileTest : public testing::Test {
protected:
    /// One run of the program.
    struct Run {
        explicit Run(SettingsStoreFileTest &test)
            : defaults(FileURL(test.path), test.files, test.writer)
            , store(defaults, test.files, test.clock, BundleInfo()) { }

        FileUserDefaults defaults;
        SettingsStore store;
    };

    void put(const QByteArray &content) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    QByteArray content() const {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("settings.json"));
    LinuxFileManager files;
    LinuxAtomicFileWriter writer;
    VirtualClock clock;
};
} // namespace

TEST_F(SettingsStoreFileTest, KeepsChangesAcrossARestart) {
    QString profileID;
    {
        Run run(*this);
        profileID = run.store.profileID();
        run.store.setAppearance(AppAppearance::Light);
        run.store.setProcessingTransitionSoundVolume(1);
        run.store.setOllamaTimeout(20);
        run.store.setRefinementEnabled(false);
        run.store.setProfileDisplayName(QStringLiteral("Ana"));
    }
    Run run(*this);
    EXPECT_EQ(run.store.profileID(), profileID);
    EXPECT_EQ(run.store.appearance(), AppAppearance::Light);
    EXPECT_EQ(run.store.processingTransitionSoundVolume(), 1.0);
    EXPECT_EQ(run.store.ollamaTimeout(), 20.0);
    EXPECT_FALSE(run.store.refinementEnabled());
    EXPECT_EQ(run.store.profileDisplayName(), u"Ana");
    EXPECT_EQ(run.store.profileSyncVersion(), 2);
}

TEST_F(SettingsStoreFileTest, DoesNotWriteTheFileWhenNothingChanges) {
    { Run run(*this); }
    const QByteArray before = content();
    EXPECT_FALSE(before.isEmpty());
    ASSERT_TRUE(QFile::setPermissions(path, QFile::ReadOwner));
    clock.shift(60);
    { Run run(*this); }
    EXPECT_EQ(content(), before);
    EXPECT_EQ(QFile::permissions(path) & QFile::WriteOwner, QFile::Permissions());
}

TEST_F(SettingsStoreFileTest, StartsOnABrokenFileAndKeepsIt) {
    put("{\"tolmi.appearance\": \"light\",");
    { Run run(*this); }
    Run run(*this);
    EXPECT_EQ(run.store.appearance(), AppAppearance::Dark);
    QFile kept(path + QStringLiteral(".unreadable-1"));
    ASSERT_TRUE(kept.open(QIODevice::ReadOnly));
    EXPECT_EQ(kept.readAll(), "{\"tolmi.appearance\": \"light\",");
}

TEST_F(SettingsStoreFileTest, UsesTheDefaultForAValueOfTheWrongType) {
    put("{\"tolmi.appearance\": 1, \"tolmi.uiLanguage\": \"en\", \"tolmi.onboarding.version\": \"two\","
        " \"tolmi.unknown\": 5}");
    Run run(*this);
    EXPECT_EQ(run.store.appearance(), AppAppearance::Dark);
    EXPECT_EQ(run.store.uiLanguage(), AppLanguage::English);
    EXPECT_EQ(run.store.onboardingVersion(), 1);
    EXPECT_EQ(run.defaults.object(QStringLiteral("tolmi.unknown")), DefaultsValue(qint64(5)));
}
