#include "Support/SigningKey.h"

#include <gtest/gtest.h>

#include <sodium.h>

namespace {
unsigned char *bytes(QByteArray &array) {
    return reinterpret_cast<unsigned char *>(array.data());
}
const unsigned char *bytes(const QByteArray &array) {
    return reinterpret_cast<const unsigned char *>(array.constData());
}
} // namespace

SigningKey::SigningKey()
    : m_publicKey(crypto_sign_PUBLICKEYBYTES, '\0')
    , m_secretKey(crypto_sign_SECRETKEYBYTES, '\0') {
    if (sodium_init() < 0 || crypto_sign_keypair(bytes(m_publicKey), bytes(m_secretKey)) != 0)
        ADD_FAILURE() << "there is no key to sign with";
}

QByteArray SigningKey::sign(const QByteArray &message) const {
    QByteArray signature(crypto_sign_BYTES, '\0');
    crypto_sign_detached(bytes(signature), nullptr, bytes(message),
        static_cast<unsigned long long>(message.size()), bytes(m_secretKey));
    return signature;
}
