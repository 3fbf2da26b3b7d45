#pragma once

#include "TunedeckCore/Service/ServiceStatus.h"

#include <QString>

#include <optional>

namespace tunedeck {

/// Detects newly applied changes. The first call is the baseline and returns nothing.
class LibraryWatcher {
public:
    /// Returns the record if it is new.
    std::optional<ServiceStatus::Library::Applied> update(
        const std::optional<ServiceStatus::Library::Applied>& applied);

private:
    std::optional<std::optional<QString>> m_lastSeen; ///< its time stamp
};

} // namespace tunedeck
