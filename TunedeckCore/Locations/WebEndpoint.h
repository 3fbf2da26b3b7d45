#pragma once

#include <QString>
#include <QUrl>

/// The product's place on the web and the key that signs its update feed, both set when the program is built.
namespace tunedeck::WebEndpoint {

/// A page or file on the web endpoint, by its path from the root ("/connect/claude").
QUrl url(const QString& path);

/// The endpoint's name for people ("tunedeck.example").
QString host();

/// Base64 of the 32-byte Ed25519 public key that the release's feed is signed with.
QString feedKey();

} // namespace tunedeck::WebEndpoint
