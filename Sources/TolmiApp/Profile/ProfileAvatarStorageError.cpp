#include "TolmiApp/Profile/ProfileAvatarStorageError.h"

ProfileAvatarStorageError ProfileAvatarStorageError::fileTooLarge(qint64 maxBytes) {
    return { Kind::FileTooLarge, maxBytes };
}

L10n::Key ProfileAvatarStorageError::messageKey() const {
    switch (m_kind) {
    case Kind::FileTooLarge:
        return L10n::Key::profileAvatarErrorTooLarge;
    case Kind::UnsupportedType:
        return L10n::Key::profileAvatarErrorUnsupportedType;
    case Kind::DecodeFailed:
        return L10n::Key::profileAvatarErrorDecodeFailed;
    case Kind::WriteFailed:
        return L10n::Key::profileAvatarErrorWriteFailed;
    }
    Q_UNREACHABLE();
}

QString ProfileAvatarStorageError::errorDescription() const {
    return L10n::text(messageKey(), AppLanguage::English);
}
