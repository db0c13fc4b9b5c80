#include "TolmiApp/Profile/ProfileAvatarImageLoader.h"
#include "TolmiApp/Profile/ProfileChipModel.h"

#include "Support/SettingsStoreFixture.h"

#include <QCoreApplication>
#include <QDir>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

/// The fakes know that the files are there, the pictures in them lie on the disk.
class ProfileChip : public testing::Test {
protected:
    ProfileChip() {
        folders.files.applicationSupport = FileURL(disk.path());
        folders.files.files[pathOf(original)] = "an image";
        folders.files.files[pathOf(thumbnail)] = "a smaller one";
        QDir(disk.path()).mkpath(QStringLiteral("Tolmi/profile"));
    }

    QString pathOf(const QString &relativePath) const {
        return disk.path() + QStringLiteral("/Tolmi/") + relativePath;
    }
    void draw(const QColor &color) const {
        QImage image(8, 8, QImage::Format_RGB32);
        image.fill(color);
        ASSERT_TRUE(image.save(pathOf(thumbnail)));
    }
    void useCustomAvatar() { folders.store.setCustomAvatar(original, thumbnail); }

    static QColor colorOf(const QImage &image) { return image.pixelColor(4, 4); }

    const QString original = QStringLiteral("profile/avatar-original.png");
    const QString thumbnail = QStringLiteral("profile/avatar-thumb.bmp");
    QTemporaryDir disk;
    SettingsStoreFixture folders;
};

} // namespace

TEST_F(ProfileChip, WithoutAnAvatarThereIsNoImage) {
    EXPECT_TRUE(ProfileAvatarImageLoader::thumbnailImage(folders.store).isNull());
}

TEST_F(ProfileChip, ThumbnailIsTheImage) {
    draw(Qt::red);
    useCustomAvatar();
    EXPECT_EQ(ProfileAvatarImageLoader::thumbnailImage(folders.store).size(), QSize(8, 8));
    EXPECT_EQ(colorOf(ProfileAvatarImageLoader::thumbnailImage(folders.store)), QColor(Qt::red));
}

TEST_F(ProfileChip, WhatIsNoPictureIsNoImage) {
    QFile file(pathOf(thumbnail));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("no picture");
    file.close();
    useCustomAvatar();
    EXPECT_TRUE(ProfileAvatarImageLoader::thumbnailImage(folders.store).isNull());
}

TEST_F(ProfileChip, AMissingThumbnailIsNoImageAndIsForgotten) {
    draw(Qt::red);
    useCustomAvatar();
    folders.files.files.erase(pathOf(thumbnail));
    EXPECT_TRUE(ProfileAvatarImageLoader::thumbnailImage(folders.store).isNull());
    EXPECT_FALSE(folders.store.profileAvatarThumbnailRelativePath());
}

TEST_F(ProfileChip, ShowsNameAndPresetOfTheSettings) {
    ProfileChipModel model(folders.store);
    QSignalSpy names(&model, &ProfileChipModel::displayNameChanged);
    QSignalSpy symbols(&model, &ProfileChipModel::symbolChanged);
    EXPECT_EQ(model.displayName(), QStringLiteral("User"));
    EXPECT_EQ(model.symbol(), QStringLiteral("person.crop.circle.fill"));
    folders.store.setProfileDisplayName(QStringLiteral("Ana"));
    folders.store.setProfileAvatarID(QStringLiteral("sparkles"));
    EXPECT_EQ(model.displayName(), QStringLiteral("Ana"));
    EXPECT_EQ(model.symbol(), QStringLiteral("sparkles"));
    EXPECT_EQ(names.size(), 1);
    EXPECT_EQ(symbols.size(), 1);
}

TEST_F(ProfileChip, ANewPictureAtTheOldPathIsSeen) {
    draw(Qt::red);
    useCustomAvatar();
    ProfileChipModel model(folders.store);
    EXPECT_EQ(colorOf(model.picture()), QColor(Qt::red));
    QSignalSpy changes(&model, &ProfileChipModel::pictureChanged);
    draw(Qt::blue);
    useCustomAvatar();
    QCoreApplication::processEvents();
    EXPECT_EQ(colorOf(model.picture()), QColor(Qt::blue));
    EXPECT_EQ(changes.size(), 1);
    folders.store.clearCustomAvatar();
    QCoreApplication::processEvents();
    EXPECT_TRUE(model.picture().isNull());
}

TEST_F(ProfileChip, RefreshingSeesAFileThatChangedByItself) {
    draw(Qt::red);
    useCustomAvatar();
    ProfileChipModel model(folders.store);
    QSignalSpy changes(&model, &ProfileChipModel::pictureChanged);
    model.refreshPicture();
    EXPECT_EQ(changes.size(), 0);
    draw(Qt::green);
    model.refreshPicture();
    EXPECT_EQ(colorOf(model.picture()), QColor(Qt::green));
    EXPECT_EQ(changes.size(), 1);
}
