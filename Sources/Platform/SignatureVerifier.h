#pragma once

#include <QByteArrayView>

/// Checks Ed25519 signatures. Any thread may call it.
class SignatureVerifier {
public:
    virtual ~SignatureVerifier() = default;

    /// Whether `signature` (64 bytes) over `message` was made with the secret key of `publicKey` (32 bytes).
    virtual bool isValid(
        QByteArrayView signature, QByteArrayView message, QByteArrayView publicKey) const = 0;
};
