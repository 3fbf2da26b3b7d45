#include "Tests/Helpers/Update/Signing.h"

#include <openssl/evp.h>

namespace tunedeck::test {

namespace {

EVP_PKEY* key(void* stored) {
    return static_cast<EVP_PKEY*>(stored);
}

} // namespace

SigningKey::SigningKey() : m_key(EVP_PKEY_Q_keygen(nullptr, nullptr, "ED25519")) {}

SigningKey::SigningKey(const QByteArray& secret)
    : m_key(EVP_PKEY_new_raw_private_key(EVP_PKEY_ED25519, nullptr,
                                         reinterpret_cast<const unsigned char*>(secret.constData()),
                                         static_cast<std::size_t>(secret.size()))) {}

SigningKey::~SigningKey() {
    EVP_PKEY_free(key(m_key));
}

QString SigningKey::publicKey() const {
    QByteArray raw(32, '\0');
    std::size_t size = 32;
    EVP_PKEY_get_raw_public_key(key(m_key), reinterpret_cast<unsigned char*>(raw.data()), &size);
    return QString::fromLatin1(raw.toBase64());
}

QByteArray SigningKey::sign(const QByteArray& bytes) const {
    QByteArray signature(64, '\0');
    std::size_t size = 64;
    EVP_MD_CTX* context = EVP_MD_CTX_new();
    EVP_DigestSignInit(context, nullptr, nullptr, nullptr, key(m_key));
    EVP_DigestSign(context, reinterpret_cast<unsigned char*>(signature.data()), &size,
                   reinterpret_cast<const unsigned char*>(bytes.constData()), static_cast<std::size_t>(bytes.size()));
    EVP_MD_CTX_free(context);
    return signature.toBase64();
}

} // namespace tunedeck::test
