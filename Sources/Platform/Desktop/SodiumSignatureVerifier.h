#pragma once

#include "Platform/SignatureVerifier.h"

/// Signatures as libsodium checks them.
class SodiumSignatureVerifier final : public SignatureVerifier {
public:
    SodiumSignatureVerifier();

    bool isValid(QByteArrayView signature, QByteArrayView message, QByteArrayView publicKey) const override;
};
