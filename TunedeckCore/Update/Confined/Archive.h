#pragma once

#include "TunedeckCore/Update/UpdateError.h"

#include <QString>

#include <cstdint>
#include <expected>

namespace tunedeck {

/// Limits of what an archive may unpack to.
struct ArchiveLimits {
    std::int64_t entries = 20'000;
    std::int64_t bytes = std::int64_t{3} * 512 * 1024 * 1024;
};

/// Unpacks a zip archive into an existing folder, keeping internal links and permissions but
/// those of others to write. Never writes outside the
/// folder. Fails with noApp if the archive is truncated, encrypted or exceeds the limits, or contains an entry that no
/// application needs: an absolute name or one with "..", a duplicate name, a name below a link, a link that leaves its
/// top folder, a hard link, a device, a setuid or setgid bit. All entries are checked before the first is written. A
/// disk that can't be written is another error.
std::expected<void, UpdateError> unpackZip(const QString& archive, const QString& folder, ArchiveLimits limits = {});

} // namespace tunedeck
