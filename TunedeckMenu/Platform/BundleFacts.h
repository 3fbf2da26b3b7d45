#pragma once

#include <QString>

namespace tunedeck {

/// What an application bundle's Info.plist says.
struct BundleFacts {
    QString identifier; ///< the application's own when there is no Info.plist
    QString version;    ///< "dev" when there is no Info.plist
};

/// The facts of the bundle at a path.
BundleFacts bundleFacts(const QString& bundle);

} // namespace tunedeck
