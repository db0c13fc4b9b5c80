#pragma once

#include "Foundation/Error.h"

/// Why there is no update to be had. The texts are English whatever the interface language, like those of
/// HttpError.
class UpdateError final : public LocalizedError {
public:
    enum class Code {
        /// An address that is not safe to ask.
        Insecure,
        InvalidPublicKey,
        /// The server gave no file, or not the whole of it.
        Refused,
        InvalidFeed,
        Unsigned,
        /// The feed tells no size, or one beyond all reason.
        InvalidSize,
        WrongSize,
        WrongSignature,
        /// The version is not the one that the makers gave the file.
        WrongVersion,
        Cancelled,
    };

    UpdateError(Code code)
        : m_code(code) { }

    Code code() const { return m_code; }
    QString errorDescription() const override;

private:
    Code m_code;
};
