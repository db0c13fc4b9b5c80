#pragma once

#include "Foundation/Error.h"
#include "TolmiApp/Texts/L10n.h"

/// Why a picture did not become the user's avatar.
class ProfileAvatarStorageError final : public LocalizedError {
public:
    enum class Kind {
        FileTooLarge,
        UnsupportedType,
        DecodeFailed,
        WriteFailed,
    };

    /// The file has more than `maxBytes` bytes.
    static ProfileAvatarStorageError fileTooLarge(qint64 maxBytes);
    static ProfileAvatarStorageError unsupportedType() { return { Kind::UnsupportedType }; }
    static ProfileAvatarStorageError decodeFailed() { return { Kind::DecodeFailed }; }
    static ProfileAvatarStorageError writeFailed() { return { Kind::WriteFailed }; }

    Kind kind() const { return m_kind; }
    /// The limit of a file that is too large, in bytes; 0 for every other error.
    qint64 maxBytes() const { return m_maxBytes; }
    /// The text that a view shows.
    L10n::Key messageKey() const;
    QString errorDescription() const override;

    friend bool operator==(const ProfileAvatarStorageError &left, const ProfileAvatarStorageError &right) {
        return left.m_kind == right.m_kind && left.m_maxBytes == right.m_maxBytes;
    }

private:
    ProfileAvatarStorageError(Kind kind, qint64 maxBytes = 0)
        : m_kind(kind)
        , m_maxBytes(maxBytes) { }

    Kind m_kind;
    qint64 m_maxBytes;
};
