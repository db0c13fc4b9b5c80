#pragma once

#include <QImage>

class SettingsStore;

namespace ProfileAvatarImageLoader {

/// The small form of the user's own avatar, read from its file at each call: the file changes while its path
/// stays the same. A null image when there is none or it cannot be read.
QImage thumbnailImage(SettingsStore &settings);

} // namespace ProfileAvatarImageLoader
