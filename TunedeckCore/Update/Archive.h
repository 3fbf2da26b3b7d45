#pragma once

#include <QString>

#include <cstdint>
#include <stop_token>

namespace tunedeck {

/// Limits of what an archive may unpack to.
struct ArchiveLimits {
    std::int64_t entries = 20'000;
    std::int64_t bytes = std::int64_t{3} * 512 * 1024 * 1024;
};

/// Unpacks a zip archive into an existing folder, keeping permissions and internal links. Never writes outside the
/// folder. False if the archive is truncated, encrypted or exceeds the limits, or contains an entry that no application
/// needs: an absolute name or one with "..", a duplicate name, a name below a link, a link that leaves the folder, a
/// hard link, a device, a setuid or setgid bit. All entries are checked before the first is written.
bool unpackZip(const QString& archive, const QString& folder, std::stop_token stop = {}, ArchiveLimits limits = {});

} // namespace tunedeck
