#include "Tests/Helpers/Update/Signing.h"

#include <openssl/evp.h>

namespace tunedeck::test {

namespace {

unsigned char* raw(QByteArray& bytes) {
    return reinterpret_cast<unsigned char*>(bytes.data());
}

const unsigned char* raw(const QByteArray& bytes) {
    return reinterpret_cast<const unsigned char*>(bytes.constData());
}

} // namespace

SigningKey::SigningKey(const QByteArray& secret)
    : m_key(EVP_PKEY_new_raw_private_key(EVP_PKEY_ED25519, nullptr, raw(secret), 32), &EVP_PKEY_free) {}

QString SigningKey::publicKey() const {
    QByteArray bytes(32, '\0');
    std::size_t size = 32;
    EVP_PKEY_get_raw_public_key(m_key.get(), raw(bytes), &size);
    return QString::fromLatin1(bytes.toBase64());
}

QByteArray SigningKey::sign(const QByteArray& bytes) const {
    QByteArray signature(64, '\0');
    std::size_t size = 64;
    const std::unique_ptr<EVP_MD_CTX, decltype(&EVP_MD_CTX_free)> context(EVP_MD_CTX_new(), &EVP_MD_CTX_free);
    EVP_DigestSignInit(context.get(), nullptr, nullptr, nullptr, m_key.get());
    EVP_DigestSign(context.get(), raw(signature), &size, raw(bytes), static_cast<std::size_t>(bytes.size()));
    return signature.toBase64();
}

} // namespace tunedeck::test
