#pragma once

#include <QString>

#include <array>
#include <cstdint>

namespace tunedeck {

/// What an application bundle says of itself.
struct BundleFacts {
    QString identifier; ///< by its Info.plist; the application's own without one
    QString version;    ///< by its Info.plist; "dev" without one
};

/// The facts of the bundle at a path.
BundleFacts bundleFacts(const QString& bundle);

/// The bundle that holds the program at this path, or the program's folder when it isn't in one.
QString bundleOf(const QString& program);

/// What the application needs to know of the machine and of itself.
struct SystemFacts {
    QString home;                       ///< the user's home folder, plain path without a trailing "/"
    std::uint32_t uid = 0;              ///< real user id
    std::array<int, 3> systemVersion{}; ///< major, minor, patch
    QString systemVersionText;          ///< as the system names itself
    QString architecture;               ///< "arm64", "x86_64", …
    QString bundle;                     ///< path of the application bundle, noted at start
    QString bundleIdentifier;           ///< by its Info.plist
    QString appVersion;                 ///< by its Info.plist; "dev" without one
};

/// The facts as they are at start.
SystemFacts systemFacts();

} // namespace tunedeck
