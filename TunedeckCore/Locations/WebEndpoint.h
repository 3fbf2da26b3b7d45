#pragma once

#include <QString>
#include <QUrl>

/// The product's website and the key of its update feed, both set at build time.
namespace tunedeck::WebEndpoint {

/// The URL of an absolute path ("/connect/claude").
QUrl url(const QString& path);

/// The host name ("tunedeck.example").
QString host();

/// Base64 of the 32-byte Ed25519 public key that the release's feed is signed with.
QString feedKey();

} // namespace tunedeck::WebEndpoint
