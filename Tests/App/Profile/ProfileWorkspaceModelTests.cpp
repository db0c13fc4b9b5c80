#include "TolmiApp/Profile/ProfileWorkspaceModel.h"

#include "Support/ProfileModelFixture.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

namespace {

class ProfileWorkspaceModelTest : public testing::Test {
protected:
    /// The user chooses the picture, or thinks better of it.
    void import(const std::optional<FileURL> &picture) {
        model.importAvatar();
        place.panel.choose(picture);
    }

    ProfileModelFixture place;
    SettingsStore &store = place.store;
    ProfileWorkspaceModel &model = (place.open(), *place.model);
};

} // namespace

TEST_F(ProfileWorkspaceModelTest, ANewUserHasEverythingAhead) {
    EXPECT_FALSE(model.profileStepComplete());
    EXPECT_FALSE(model.permissionsStepComplete());
    EXPECT_FALSE(model.dictationStepComplete());
    EXPECT_EQ(model.onboardingProgressText(), u"Progress: 0/3");
    EXPECT_EQ(model.scoreText(), u"0/100");
    EXPECT_EQ(model.recommendations(),
        QStringList(
            { QStringLiteral("Grant microphone access."), QStringLiteral("Grant accessibility access."),
                QStringLiteral("Complete one successful dictation test."),
                QStringLiteral("Set a personalized display name."),
                QStringLiteral("Pick a custom avatar or a non-default preset.") }));
    EXPECT_TRUE(model.showsOnboardingReminder());
    EXPECT_FALSE(model.hasCustomAvatar());
}

TEST_F(ProfileWorkspaceModelTest, EveryStepCounts) {
    model.setDisplayName(QStringLiteral("Ana"));
    EXPECT_TRUE(model.profileStepComplete());
    EXPECT_EQ(model.scoreText(), u"20/100");
    model.setAvatarPreset(QStringLiteral("sparkles"));
    EXPECT_EQ(model.scoreText(), u"40/100");
    place.addDictation();
    EXPECT_TRUE(model.dictationStepComplete());
    EXPECT_EQ(model.onboardingProgressText(), u"Progress: 2/3");
    EXPECT_EQ(model.scoreText(), u"60/100");
    place.microphone.present = AuthorizationStatus::Authorized;
    model.refresh();
    EXPECT_FALSE(model.permissionsStepComplete());
    EXPECT_EQ(model.recommendations(), QStringList { QStringLiteral("Grant accessibility access.") });
}

TEST_F(ProfileWorkspaceModelTest, WithEverythingDoneNothingIsRecommended) {
    place.grantEverything();
    model.setDisplayName(QStringLiteral("Ana"));
    model.setAvatarPreset(QStringLiteral("sparkles"));
    place.addDictation();
    model.refresh();
    EXPECT_EQ(model.scoreText(), u"100/100");
    EXPECT_TRUE(model.recommendations().isEmpty());
    EXPECT_EQ(model.onboardingProgressText(), u"Progress: 3/3");
}

TEST_F(ProfileWorkspaceModelTest, PermissionsShowWhenItLooksAgain) {
    place.microphone.present = AuthorizationStatus::Authorized;
    EXPECT_EQ(model.scoreText(), u"0/100");
    QSignalSpy changes(&model, &ProfileWorkspaceModel::readinessChanged);
    model.refresh();
    EXPECT_EQ(changes.size(), 1);
    EXPECT_EQ(model.scoreText(), u"20/100");
}

TEST_F(ProfileWorkspaceModelTest, PermissionsShowWhenADictationHasAskedForThem) {
    place.microphone.present = AuthorizationStatus::Authorized;
    Q_EMIT place.flow->stateChanged();
    EXPECT_EQ(model.scoreText(), u"20/100");
}

TEST_F(ProfileWorkspaceModelTest, PermissionsShowWhenTheFlowLooksAtThem) {
    place.microphone.present = AuthorizationStatus::Authorized;
    Q_EMIT place.fakes.application.didBecomeActive();
    place.clock.runPosted();
    EXPECT_EQ(model.scoreText(), u"20/100");
}

TEST_F(ProfileWorkspaceModelTest, OnlyAnAuthorisedMicrophoneCounts) {
    for (const AuthorizationStatus status : { AuthorizationStatus::NotDetermined,
             AuthorizationStatus::Restricted, AuthorizationStatus::Denied }) {
        place.microphone.present = status;
        model.refresh();
        EXPECT_EQ(model.scoreText(), u"0/100");
    }
}

TEST_F(ProfileWorkspaceModelTest, TheRightToWatchKeysShowsAtOnce) {
    place.grantEverything();
    EXPECT_TRUE(model.permissionsStepComplete());
}

TEST_F(ProfileWorkspaceModelTest, NamesAreStoredAsTheSettingsKeepThem) {
    QSignalSpy changes(&model, &ProfileWorkspaceModel::displayNameChanged);
    model.setDisplayName(QStringLiteral("  Ana \n Maria "));
    EXPECT_EQ(model.displayName(), u"Ana Maria");
    EXPECT_EQ(changes.size(), 1);
    model.setDisplayName(QStringLiteral("   "));
    EXPECT_EQ(model.displayName(), u"User");
    EXPECT_FALSE(model.profileStepComplete());
}

TEST_F(ProfileWorkspaceModelTest, PresetsComeWithNamesAndSymbols) {
    QStringList rows;
    for (const QVariant &option : model.avatarPresets()) {
        const QVariantMap map = option.toMap();
        EXPECT_EQ(map.value(QStringLiteral("symbol")), map.value(QStringLiteral("value")));
        EXPECT_FALSE(map.value(QStringLiteral("text")).toString().isEmpty());
        rows.append(map.value(QStringLiteral("value")).toString());
    }
    EXPECT_EQ(rows,
        QStringList({ QStringLiteral("person.crop.circle.fill"), QStringLiteral("briefcase.circle.fill"),
            QStringLiteral("sparkles"), QStringLiteral("waveform.circle.fill") }));
    EXPECT_EQ(model.avatarPreset(), u"person.crop.circle.fill");
    model.setAvatarPreset(QStringLiteral("no such symbol"));
    EXPECT_EQ(model.avatarPreset(), u"person.crop.circle.fill");
}

TEST_F(ProfileWorkspaceModelTest, AsksForAPicture) {
    model.importAvatar();
    ASSERT_EQ(place.panel.requests.size(), 1u);
    EXPECT_EQ(place.panel.requests[0].title, u"Upload avatar");
    EXPECT_EQ(place.panel.requests[0].fileExtensions, ProfileAvatarStorage::imageExtensions());
    place.panel.choose(std::nullopt);
    EXPECT_EQ(store.profileAvatarImageRelativePath(), std::nullopt);
    EXPECT_EQ(model.avatarErrorMessage(), QString());
}

TEST_F(ProfileWorkspaceModelTest, TakesThePictureThatIsChosen) {
    place.writer.whileWriting = [this] { place.putAvatarFiles(); };
    import(place.picture);
    EXPECT_EQ(store.profileAvatarImageRelativePath(), QStringLiteral("profile/avatar-original.png"));
    EXPECT_EQ(store.profileAvatarThumbnailRelativePath(), QStringLiteral("profile/avatar-thumb.jpg"));
    EXPECT_EQ(store.profileSyncVersion(), 2);
    EXPECT_TRUE(model.hasCustomAvatar());
    EXPECT_EQ(model.scoreText(), u"20/100");
    EXPECT_EQ(model.avatarErrorMessage(), QString());
}

TEST_F(ProfileWorkspaceModelTest, APresetLeavesThePictureInPlace) {
    place.useCustomAvatar();
    model.setAvatarPreset(QStringLiteral("sparkles"));
    EXPECT_TRUE(model.hasCustomAvatar());
}

TEST_F(ProfileWorkspaceModelTest, RemovesThePicture) {
    place.useCustomAvatar();
    EXPECT_EQ(model.scoreText(), u"20/100");
    model.removeAvatar();
    EXPECT_EQ(
        place.listing.removals, std::vector<QString>({ place.original.path(), place.thumbnail.path() }));
    EXPECT_EQ(store.profileAvatarImageRelativePath(), std::nullopt);
    EXPECT_FALSE(model.hasCustomAvatar());
    EXPECT_EQ(model.scoreText(), u"0/100");
    EXPECT_EQ(store.profileSyncVersion(), 3);
}

TEST_F(ProfileWorkspaceModelTest, WithAnotherPresetTheScoreStaysWhenThePictureGoes) {
    model.setAvatarPreset(QStringLiteral("sparkles"));
    place.useCustomAvatar();
    EXPECT_EQ(model.scoreText(), u"20/100");
    model.removeAvatar();
    EXPECT_EQ(model.scoreText(), u"20/100");
}

TEST_F(ProfileWorkspaceModelTest, EveryFailureOfAnImportHasItsMessage) {
    const auto expectMessage = [this](const QString &expected) {
        EXPECT_EQ(model.avatarErrorMessage(), expected);
        EXPECT_EQ(store.profileAvatarImageRelativePath(), std::nullopt);
        model.dismissAvatarError();
        EXPECT_EQ(model.avatarErrorMessage(), QString());
    };
    import(FileURL(QStringLiteral("/home/user/notes.txt")));
    expectMessage(QStringLiteral("Only image files are supported."));
    const FileURL large(QStringLiteral("/home/user/large.png"));
    place.listing.items.push_back({ large, { .isRegularFile = true, .size = 10485761 } });
    import(large);
    expectMessage(QStringLiteral("This file is too large. Choose an image under 10MB."));
    const FileURL text(QStringLiteral("/home/user/text.png"));
    place.put(text, "only words");
    import(text);
    expectMessage(QStringLiteral("The selected image could not be processed."));
    place.writer.failures = { SystemError(QStringLiteral("full")) };
    import(place.picture);
    expectMessage(QStringLiteral("Tolmi could not save the selected avatar."));
    place.files.createDirectoryFailures = { SystemError(QStringLiteral("refused")) };
    import(place.picture);
    expectMessage(QStringLiteral("Could not update the avatar. Please try again."));
}

TEST_F(ProfileWorkspaceModelTest, WhatCannotBeRemovedStays) {
    place.useCustomAvatar();
    place.listing.unremovable = { place.original.path() };
    model.removeAvatar();
    EXPECT_EQ(model.avatarErrorMessage(), u"Could not update the avatar. Please try again.");
    EXPECT_TRUE(model.hasCustomAvatar());
    EXPECT_EQ(store.profileAvatarThumbnailRelativePath(), QStringLiteral("profile/avatar-thumb.jpg"));
}

TEST_F(ProfileWorkspaceModelTest, APictureThatIsGoneIsForgottenAtTheNextLook) {
    place.useCustomAvatar();
    place.forget(place.thumbnail);
    model.refresh();
    EXPECT_FALSE(model.hasCustomAvatar());
    EXPECT_EQ(store.profileAvatarImageRelativePath(), std::nullopt);
    EXPECT_EQ(store.profileSyncVersion(), 2);
}

TEST_F(ProfileWorkspaceModelTest, APictureThatAFailedImportHasRemovedIsNotShown) {
    place.useCustomAvatar();
    EXPECT_TRUE(model.hasCustomAvatar());
    EXPECT_EQ(model.scoreText(), u"20/100");
    model.importAvatar();
    // The new picture takes its place, and then cannot be written.
    place.writer.failures = { SystemError(QStringLiteral("full")) };
    place.forget(place.thumbnail);
    place.panel.choose(place.picture);
    EXPECT_EQ(model.avatarErrorMessage(), u"Tolmi could not save the selected avatar.");
    EXPECT_FALSE(model.hasCustomAvatar());
    EXPECT_EQ(model.scoreText(), u"0/100");
}

TEST_F(ProfileWorkspaceModelTest, AnAnswerAfterItsEndIsHarmless) {
    model.importAvatar();
    place.model.reset();
    place.panel.choose(FileURL(QStringLiteral("/home/user/notes.txt")));
    EXPECT_EQ(store.profileAvatarImageRelativePath(), std::nullopt);
}

TEST_F(ProfileWorkspaceModelTest, TextsFollowTheLanguage) {
    import(FileURL(QStringLiteral("/home/user/notes.txt")));
    store.setUiLanguage(AppLanguage::Romanian);
    EXPECT_EQ(model.avatarErrorMessage(), u"Sunt acceptate doar fisiere imagine.");
    EXPECT_EQ(model.recommendations().first(), u"Acorda acces la microfon.");
    EXPECT_NE(model.onboardingProgressText(), u"Progress: 0/3");
}

TEST_F(ProfileWorkspaceModelTest, TheReminderGoesWhenTheWizardIsFinished) {
    QSignalSpy changes(&model, &ProfileWorkspaceModel::onboardingReminderChanged);
    model.resumeOnboarding();
    EXPECT_EQ(place.resumeCount, 1);
    store.markOnboardingCompleted();
    EXPECT_GE(changes.size(), 1);
    EXPECT_FALSE(model.showsOnboardingReminder());
}
