#include "TolmiApp/Profile/ProfileAvatarImageLoader.h"

#include "TolmiApp/Settings/SettingsStore.h"

QImage ProfileAvatarImageLoader::thumbnailImage(SettingsStore &settings) {
    const std::optional<FileURL> url = settings.resolvedCustomAvatarThumbnailURL();
    return url ? QImage(url->path()) : QImage();
}
