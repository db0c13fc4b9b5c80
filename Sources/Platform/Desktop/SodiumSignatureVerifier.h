#pragma once

#include "Platform/SignatureVerifier.h"

/// Verifies signatures with libsodium.
class SodiumSignatureVerifier final : public SignatureVerifier {
public:
    SodiumSignatureVerifier();

    bool isValid(QByteArrayView signature, QByteArrayView message, QByteArrayView publicKey) const override;
};
