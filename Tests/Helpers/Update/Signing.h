#pragma once

#include <QByteArray>
#include <QString>

#include <memory>

struct evp_pkey_st;

namespace tunedeck::test {

/// An Ed25519 key for tests.
class SigningKey {
public:
    /// `secret`: the private key, 32 bytes.
    explicit SigningKey(const QByteArray& secret = QByteArray(32, 's'));

    /// Base64 of the public key.
    [[nodiscard]] QString publicKey() const;
    /// Base64 of the signature.
    [[nodiscard]] QByteArray sign(const QByteArray& bytes) const;

private:
    std::shared_ptr<evp_pkey_st> m_key;
};

} // namespace tunedeck::test
