#include "TolmiApp/Updates/UpdateDialogModel.h"

#include "Support/Print.h"
#include "Support/SettingsStoreFixture.h"

#include <gtest/gtest.h>

namespace {
using Phase = UpdatePrompt::Phase;

AppcastItem version(const QString &displayVersion, const QString &notes = {}) {
    AppcastItem item;
    item.displayVersion = displayVersion;
    item.releaseNotes = notes;
    return item;
}

class UpdateDialogModelTest : public testing::Test {
protected:
    UpdateDialogModelTest() {
        settings.store.setUiLanguage(AppLanguage::English);
        QObject::connect(
            &prompt, &UpdatePrompt::downloadRequested, [this] { answers << QStringLiteral("download"); });
        QObject::connect(
            &prompt, &UpdatePrompt::retryRequested, [this] { answers << QStringLiteral("retry"); });
        QObject::connect(&prompt, &UpdatePrompt::dismissed, [this] { answers << QStringLiteral("dismiss"); });
    }
    void find() { prompt.showFound(version(QStringLiteral("2.0"), QStringLiteral("Faster"))); }
    void findAndDownload() {
        find();
        prompt.showDownloading();
    }

    SettingsStoreFixture settings;
    UpdatePrompt prompt;
    QStringList answers;
    UpdateDialogModel model { prompt, settings.store, QStringLiteral("1.0"),
        [this](const FileURL &file) { answers << file.path(); } };
};

TEST_F(UpdateDialogModelTest, ShowsThatItChecks) {
    prompt.showChecking();
    EXPECT_EQ(model.phase(), Phase::Checking);
    EXPECT_EQ(model.title(), QStringLiteral("Checking for updates..."));
    EXPECT_EQ(model.actionText(), QString());
    EXPECT_EQ(model.dismissText(), QStringLiteral("Cancel"));
}

TEST_F(UpdateDialogModelTest, OffersTheFoundVersion) {
    find();
    EXPECT_EQ(model.title(), QStringLiteral("Tolmi 2.0 is available"));
    EXPECT_EQ(model.hint(), QStringLiteral("You have version 1.0. Do you want to download the new one?"));
    EXPECT_EQ(model.releaseNotes(), QStringLiteral("Faster"));
    EXPECT_EQ(model.dismissText(), QStringLiteral("Later"));
    model.act();
    EXPECT_EQ(answers, QStringList { QStringLiteral("download") });
}

TEST_F(UpdateDialogModelTest, NamesTheInstalledVersionWhenNothingIsNewer) {
    prompt.showUpToDate();
    EXPECT_EQ(model.hint(), QStringLiteral("Version 1.0 is the newest one."));
    model.act();
    EXPECT_EQ(answers, QStringList());
}

TEST_F(UpdateDialogModelTest, ShowsTheErrorAndRetries) {
    prompt.showFailure(QStringLiteral("The update is not signed."));
    EXPECT_EQ(model.problem(), QStringLiteral("The update is not signed."));
    EXPECT_FALSE(model.hint().isEmpty());
    model.act();
    EXPECT_EQ(answers, QStringList { QStringLiteral("retry") });
}

TEST_F(UpdateDialogModelTest, AnImmediatelyFailingDownloadIsNotRetriedAutomatically) {
    QObject::connect(&prompt, &UpdatePrompt::downloadRequested,
        [this] { prompt.showFailure(QStringLiteral("The address of the updates is not secure.")); });
    find();
    model.act();
    EXPECT_EQ(model.phase(), Phase::Failed);
    EXPECT_EQ(answers, QStringList { QStringLiteral("download") });
}

TEST_F(UpdateDialogModelTest, ShowsTheProgress) {
    findAndDownload();
    EXPECT_EQ(model.title(), QStringLiteral("Downloading Tolmi 2.0..."));
    const std::vector<std::pair<double, QString>> cases { { 0, QStringLiteral("0 %") },
        { 0.426, QStringLiteral("42 %") }, { 0.999, QStringLiteral("99 %") }, { 1, QStringLiteral("100 %") },
        { 7, QStringLiteral("100 %") } };
    int changeCount = 0;
    QObject::connect(&model, &UpdateDialogModel::progressChanged, [&] { ++changeCount; });
    for (const auto &[share, text] : cases) {
        prompt.showProgress(share);
        EXPECT_EQ(model.progressText(), text);
        EXPECT_LE(model.progress(), 1);
    }
    EXPECT_EQ(changeCount, 4);
}

TEST_F(UpdateDialogModelTest, RevealsTheDownloadedFile) {
    findAndDownload();
    prompt.showDownloaded(QStringLiteral("/home/user/Downloads/tolmi.tar.xz"));
    EXPECT_EQ(model.filePath(), QStringLiteral("/home/user/Downloads/tolmi.tar.xz"));
    EXPECT_EQ(model.actionText(), QStringLiteral("Show in Folder"));
    model.act();
    EXPECT_EQ(answers, QStringList { QStringLiteral("/home/user/Downloads/tolmi.tar.xz") });
    EXPECT_EQ(model.phase(), Phase::Downloaded);
}

TEST_F(UpdateDialogModelTest, APhaseShowsNothingOfAnEarlierOne) {
    findAndDownload();
    prompt.showDownloaded(QStringLiteral("/file"));
    prompt.showFailure(QStringLiteral("No."));
    prompt.showUpToDate();
    EXPECT_EQ(model.problem(), QString());
    EXPECT_EQ(model.releaseNotes(), QString());
    EXPECT_EQ(model.filePath(), QString());
}

TEST_F(UpdateDialogModelTest, TheTextsOfAPhaseAreReadyWhenItIsAnnounced) {
    QStringList titles;
    QObject::connect(&model, &UpdateDialogModel::phaseChanged, [&] { titles << model.title(); });
    find();
    prompt.dismiss();
    prompt.showUpToDate();
    EXPECT_EQ(titles.value(0), QStringLiteral("Tolmi 2.0 is available"));
    EXPECT_EQ(titles.value(2), QStringLiteral("Tolmi is up to date"));
    EXPECT_EQ(answers, QStringList { QStringLiteral("dismiss") });
}

TEST_F(UpdateDialogModelTest, FollowsTheLanguageOfTheInterface) {
    find();
    int changeCount = 0;
    QObject::connect(&model, &UpdateDialogModel::contentChanged, [&] { ++changeCount; });
    settings.store.setUiLanguage(AppLanguage::Romanian);
    EXPECT_EQ(changeCount, 1);
    EXPECT_EQ(model.windowTitle(), QStringLiteral("Actualizare software"));
    EXPECT_EQ(model.title(), QStringLiteral("Tolmi 2.0 este disponibil"));
    EXPECT_EQ(model.actionText(), QStringLiteral("Descarca"));
}
} // namespace
