#pragma once

#include "Foundation/Error.h"

/// Why an update is not available. The messages are English in every interface language, like those of
/// HttpError.
class UpdateError final : public LocalizedError {
public:
    enum class Code {
        /// The URL is not safe to request.
        Insecure,
        InvalidPublicKey,
        /// The server sent no file or an incomplete one.
        Refused,
        InvalidFeed,
        Unsigned,
        /// The feed gives no size or an unreasonable one.
        InvalidSize,
        WrongSize,
        WrongSignature,
        /// The version does not match the signed one.
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
