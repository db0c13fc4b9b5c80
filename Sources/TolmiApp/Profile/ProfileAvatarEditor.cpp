#include "TolmiApp/Profile/ProfileAvatarEditor.h"

#include "Platform/OpenPanel.h"
#include "TolmiApp/Settings/SettingsStore.h"

namespace {

/// Does the work; gives the key of the message for what goes wrong.
template <typename Work>
std::optional<L10n::Key> failureOf(Work work) {
    try {
        work();
    } catch (const ProfileAvatarStorageError &error) {
        return error.messageKey();
    } catch (const LocalizedError &) {
        return L10n::Key::profileAvatarErrorGeneric;
    }
    return std::nullopt;
}

} // namespace

ProfileAvatarEditor::ProfileAvatarEditor(
    SettingsStore &settings, OpenPanel &panel, ProfileAvatarStorage storage)
    : m_settings(settings)
    , m_panel(panel)
    , m_storage(std::move(storage)) { }

void ProfileAvatarEditor::importAvatar(Failure onFailure) {
    const QString title = L10n::text(L10n::Key::profileUploadAvatar, m_settings.uiLanguage());
    m_panel.run({ title, ProfileAvatarStorage::imageExtensions() },
        [this, onFailure = std::move(onFailure)](const std::optional<FileURL> &picture) {
            const std::optional<L10n::Key> failure = picture ? take(*picture) : std::nullopt;
            if (failure)
                onFailure(*failure);
        });
}

std::optional<L10n::Key> ProfileAvatarEditor::take(const FileURL &picture) {
    return failureOf([&] {
        const ProfileAvatarImportResult result = m_storage.importAvatar(picture);
        m_settings.setCustomAvatar(result.imageRelativePath, result.thumbnailRelativePath);
    });
}

std::optional<L10n::Key> ProfileAvatarEditor::removeAvatar() {
    return failureOf([this] {
        m_storage.removeAvatarFiles(
            m_settings.profileAvatarImageRelativePath(), m_settings.profileAvatarThumbnailRelativePath());
        m_settings.clearCustomAvatar();
    });
}
