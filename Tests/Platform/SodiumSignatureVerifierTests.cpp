#include "Platform/Desktop/SodiumSignatureVerifier.h"
#include "Support/SigningKey.h"

#include <gtest/gtest.h>

namespace {
class SodiumSignatureVerifierTest : public testing::Test {
protected:
    const QByteArray m_message = "the whole file";
    SigningKey m_key;
    QByteArray m_signature = m_key.sign(m_message);
    SodiumSignatureVerifier m_verifier;
};

TEST_F(SodiumSignatureVerifierTest, AcceptsTheSignatureOfTheKey) {
    EXPECT_TRUE(m_verifier.isValid(m_signature, m_message, m_key.publicKey()));
}

TEST_F(SodiumSignatureVerifierTest, AcceptsThePublishedTestVector) {
    // The first example of RFC 8032, section 7.1: an empty message.
    const QByteArray publicKey
        = QByteArray::fromHex("d75a980182b10ab7d54bfed3c964073a0ee172f3daa62325af021a68f707511a");
    const QByteArray signature
        = QByteArray::fromHex("e5564300c360ac729086e2cc806e828a84877f1eb8e5d974d873e06522490155"
                              "5fb8821590a33bacc61e39701cf9b46bd25bf5f0595bbe24655141438e7a100b");
    EXPECT_TRUE(m_verifier.isValid(signature, QByteArray(), publicKey));
}

TEST_F(SodiumSignatureVerifierTest, RejectsAnotherMessage) {
    EXPECT_FALSE(m_verifier.isValid(m_signature, m_message + ' ', m_key.publicKey()));
    EXPECT_FALSE(m_verifier.isValid(m_signature, QByteArray(), m_key.publicKey()));
}

TEST_F(SodiumSignatureVerifierTest, RejectsTheSignatureOfAnotherKey) {
    EXPECT_FALSE(m_verifier.isValid(SigningKey().sign(m_message), m_message, m_key.publicKey()));
}

TEST_F(SodiumSignatureVerifierTest, RejectsASignatureWithAnyFlippedBit) {
    for (int index = 0; index < m_signature.size(); ++index) {
        QByteArray changed = m_signature;
        changed[index] = char(changed[index] ^ 1);
        EXPECT_FALSE(m_verifier.isValid(changed, m_message, m_key.publicKey())) << index;
    }
}

TEST_F(SodiumSignatureVerifierTest, RejectsWrongKeyAndSignatureSizes) {
    const QByteArray key = m_key.publicKey();
    for (const QByteArray &signature : { QByteArray(), m_signature.chopped(1), m_signature + 'x' })
        EXPECT_FALSE(m_verifier.isValid(signature, m_message, key)) << signature.size();
    for (const QByteArray &wrongKey : { QByteArray(), key.chopped(1), key + 'x' })
        EXPECT_FALSE(m_verifier.isValid(m_signature, m_message, wrongKey)) << wrongKey.size();
}
} // namespace
