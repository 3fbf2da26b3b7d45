#pragma once

#include "TunedeckCore/Service/ServiceStatus.h"

#include <QString>

#include <optional>

namespace tunedeck {

/// Turns successive library sections into updates; silent about the first.
class LibraryWatcher {
public:
    /// The applied record when it is new.
    std::optional<ServiceStatus::Library::Applied> update(
        const std::optional<ServiceStatus::Library::Applied>& applied);

private:
    std::optional<std::optional<QString>> m_lastSeen; ///< the time stamp of the last one seen
};

} // namespace tunedeck
