#pragma once

#include <QByteArray>
#include <QString>

namespace tunedeck::test {

/// An Ed25519 key made for one test.
class SigningKey {
public:
    SigningKey();
    ~SigningKey();
    SigningKey(const SigningKey&) = delete;
    SigningKey& operator=(const SigningKey&) = delete;

    /// Base64 of the public half.
    [[nodiscard]] QString publicKey() const;
    /// Base64 of the signature of these bytes.
    [[nodiscard]] QByteArray sign(const QByteArray& bytes) const;

private:
    void* m_key;
};

} // namespace tunedeck::test
