#pragma once

#include <QByteArray>

/// A fresh key pair for Ed25519 signatures.
class SigningKey {
public:
    SigningKey();

    const QByteArray &publicKey() const { return m_publicKey; }
    QByteArray sign(const QByteArray &message) const;

private:
    QByteArray m_publicKey;
    QByteArray m_secretKey;
};
