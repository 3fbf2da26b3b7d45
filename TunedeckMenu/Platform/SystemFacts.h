#pragma once

#include <QString>

#include <array>
#include <cstdint>

namespace tunedeck {

/// What the application knows about the machine and itself. Read once, at start.
struct SystemFacts {
    QString home;                       ///< the user's home folder, without a trailing "/"
    std::uint32_t uid = 0;              ///< real user id
    std::array<int, 3> systemVersion{}; ///< major, minor, patch
    QString systemVersionText;          ///< the system's name and version, for users
    QString architecture;               ///< "arm64", "x86_64", …
    QString bundle;                     ///< path of the application bundle
    QString bundleIdentifier;           ///< from BundleFacts
    QString appVersion;                 ///< from BundleFacts
    QString supervisorAdvice = {};      ///< what a user can do when the supervisor can't start the service, if anything
};

SystemFacts systemFacts();

} // namespace tunedeck
