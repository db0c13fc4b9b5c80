#include "Platform/Desktop/SodiumSignatureVerifier.h"

#include "Foundation/Log.h"

#include <sodium.h>

namespace {
const unsigned char *bytes(QByteArrayView view) {
    return reinterpret_cast<const unsigned char *>(view.data());
}
} // namespace

SodiumSignatureVerifier::SodiumSignatureVerifier() {
    if (sodium_init() < 0)
        fatalError(QStringLiteral("Tolmi: signatures cannot be checked."));
}

bool SodiumSignatureVerifier::isValid(
    QByteArrayView signature, QByteArrayView message, QByteArrayView publicKey) const {
    if (signature.size() != crypto_sign_BYTES || publicKey.size() != crypto_sign_PUBLICKEYBYTES)
        return false;
    return crypto_sign_verify_detached(bytes(signature), bytes(message),
               static_cast<unsigned long long>(message.size()), bytes(publicKey))
        == 0;
}
