#pragma once

#include <QString>

namespace tunedeck {

namespace Diagnostics {

/// Replaces bearer tokens, Telegram start codes and isolated runs of at least 24 token characters (letters, digits,
/// "_",
/// "-") by "…"; the first four characters of such a run stay. Takes linear time.
QString mask(const QString& text);

/// Replaces secrets that are too short for mask() but unmistakable: the user in a URL, values of "password=" and the
/// like, the headers Cookie and Authorization, keys of cloud services, private keys, private links. Takes linear time.
QString maskCredentials(const QString& text);

} // namespace Diagnostics

/// A private URL as shown while secrets are hidden: only the first four characters of the path component before "mcp".
QString maskingSecretPath(const QString& url);

} // namespace tunedeck
