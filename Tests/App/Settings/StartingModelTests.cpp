#include "TolmiApp/Settings/StartingModel.h"

#include "Support/FakeFileManager.h"
#include "Support/FakeUserDefaults.h"
#include "Support/Print.h"

#include <gtest/gtest.h>

namespace {
const QString key = QStringLiteral("tolmi.modelPath");
const QString startingModel = QStringLiteral("/opt/tolmi/share/tolmi/models/ggml-tolmi-starter-q8_0.bin");
const QString realModel = QStringLiteral("/home/user/.local/share/Tolmi/models/ggml-base.bin");
} // namespace

class StartingModelTest : public testing::Test {
protected:
    StartingModelTest() { files.files[startingModel] = "model"; }

    void choose() {
        StartingModel::choose(
            defaults, { files, { {}, FileURL(QStringLiteral("/opt/tolmi/bin")) } }, FileURL(startingModel));
    }

    FakeFileManager files;
    FakeUserDefaults defaults;
};

TEST_F(StartingModelTest, IsInstalledBesideTheProgram) {
    EXPECT_EQ(StartingModel::url(FileURL(QStringLiteral("/opt/tolmi/bin"))).path(), startingModel);
}

TEST_F(StartingModelTest, IsUsedWhenThereIsNoOther) {
    choose();
    EXPECT_EQ(defaults.string(key), startingModel);
}

TEST_F(StartingModelTest, LeavesTheDefaultAloneWhenARealModelIsInstalled) {
    files.files[realModel] = "model";
    choose();
    EXPECT_FALSE(defaults.string(key));
}

TEST_F(StartingModelTest, IsReplacedByARealModelInstalledSince) {
    choose();
    files.files[realModel] = "model";
    choose();
    EXPECT_FALSE(defaults.string(key));
}

TEST_F(StartingModelTest, FollowsAMovedProgram) {
    defaults.values[key] = QStringLiteral("/old/share/tolmi/models/ggml-tolmi-starter-q8_0.bin");
    choose();
    EXPECT_EQ(defaults.string(key), startingModel);
}

TEST_F(StartingModelTest, NeverTouchesTheUsersChoice) {
    defaults.values[key] = QStringLiteral("/home/user/mine.bin");
    choose();
    files.files[realModel] = "model";
    choose();
    EXPECT_EQ(defaults.string(key), QStringLiteral("/home/user/mine.bin"));
    EXPECT_TRUE(defaults.writes.empty());
}

TEST_F(StartingModelTest, IsNotStoredWhenItIsNotInstalled) {
    files.files.clear();
    choose();
    EXPECT_FALSE(defaults.string(key));
}
