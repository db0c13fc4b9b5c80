#include "TolmiApp/Profile/ProfileChipModel.h"

#include "TolmiApp/Profile/ProfileAvatarImageLoader.h"
#include "TolmiApp/Settings/ProfileAvatarPreset.h"
#include "TolmiApp/Settings/SettingsStore.h"

ProfileChipModel::ProfileChipModel(SettingsStore &settings, QObject *parent)
    : ObservableObject(parent)
    , m_settings(settings) {
    refreshPicture();
    connect(
        &settings, &SettingsStore::profileDisplayNameChanged, this, &ProfileChipModel::displayNameChanged);
    connect(&settings, &SettingsStore::profileAvatarIDChanged, this, &ProfileChipModel::symbolChanged);
    // A new picture takes the path of the one before, so that the path itself does not change: what tells of
    // it is the assignment. It is read in a later turn of the loop, when the assignment is over.
    connect(
        &settings, &SettingsStore::profileAvatarThumbnailRelativePathWillChange, this,
        [this] { refreshPicture(); }, Qt::QueuedConnection);
}

const QString &ProfileChipModel::displayName() const {
    return m_settings.profileDisplayName();
}

QString ProfileChipModel::symbol() const {
    return normalizedProfileAvatarID(m_settings.profileAvatarID());
}

void ProfileChipModel::refreshPicture() {
    setPicture(ProfileAvatarImageLoader::thumbnailImage(m_settings));
}
