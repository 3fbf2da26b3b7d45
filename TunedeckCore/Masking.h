#pragma once

#include <QString>

namespace tunedeck {

/// A private URL as it is shown while secrets are hidden.
QString maskingSecretPath(const QString& url);

} // namespace tunedeck
