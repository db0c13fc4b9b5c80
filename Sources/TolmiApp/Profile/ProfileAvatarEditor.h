#pragma once

#include "TolmiApp/Profile/ProfileAvatarStorage.h"
#include "TolmiApp/Texts/L10n.h"

#include <functional>

class OpenPanel;
class SettingsStore;

/// Changes the user's own picture: asks for it, stores it, and tells the settings. Main thread only.
class ProfileAvatarEditor {
public:
    /// Gets the key of the message that tells why it failed.
    using Failure = std::function<void(L10n::Key)>;

    /// `settings` and `panel` outlive the editor, and it every panel that it has opened.
    ProfileAvatarEditor(SettingsStore &settings, OpenPanel &panel, ProfileAvatarStorage storage);

    /// Lets the user choose a picture and takes it. `onFailure` is called later, if at all.
    void importAvatar(Failure onFailure);

    /// Removes the picture and its files. A failure comes as the key of its message, and the settings are
    /// kept then.
    std::optional<L10n::Key> removeAvatar();

private:
    std::optional<L10n::Key> take(const FileURL &picture);

    SettingsStore &m_settings;
    OpenPanel &m_panel;
    const ProfileAvatarStorage m_storage;
};
