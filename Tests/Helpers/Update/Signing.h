#pragma once

#include <QByteArray>
#include <QString>

namespace tunedeck::test {

/// An Ed25519 key for tests.
class SigningKey {
public:
    /// A new one.
    SigningKey();
    /// The one of this private half: 32 bytes.
    explicit SigningKey(const QByteArray& secret);
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
