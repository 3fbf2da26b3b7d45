#pragma once

#include <QString>

#include <cstdint>
#include <stop_token>

namespace tunedeck {

/// Bounds on what an archive may unpack to.
struct ArchiveLimits {
    std::int64_t entries = 20'000;
    std::int64_t bytes = std::int64_t{3} * 512 * 1024 * 1024;
};

/// Unpacks a zip archive into an existing folder, with permissions and the links inside it. False, with nothing
/// written outside the folder, when it can't be read to its end, is encrypted, exceeds the limits, or holds an entry
/// that has no business in an application: an absolute name or one with "..", a name that comes twice or leads
/// through a link, a link that leaves the folder, a hard link, a device, a setuid or setgid bit. All names
/// are looked at before anything is written.
bool unpackZip(const QString& archive, const QString& folder, std::stop_token stop = {}, ArchiveLimits limits = {});

} // namespace tunedeck
