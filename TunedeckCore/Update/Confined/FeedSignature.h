#pragma once

#include <QByteArray>
#include <QString>

namespace tunedeck {

/// Whether `signature` is a valid Ed25519 signature (RFC 8032) of exactly these bytes. `signature`: base64 of 64 bytes,
/// surrounding white space allowed; `publicKey`: base64 of 32 bytes.
bool isSignedBy(const QByteArray& bytes, const QString& signature, const QString& publicKey);

} // namespace tunedeck
