#pragma once

#include "TunedeckCore/Service/ServiceStatus.h"

#include <QHash>
#include <QString>

#include <optional>
#include <vector>

namespace tunedeck {

/// Something that happened to a download job.
struct JobEvent {
    enum class Kind { requested, finished, failed };
    Kind kind = Kind::requested;
    ServiceStatus::Job job;
    bool operator==(const JobEvent&) const = default;
};

/// Turns successive lists of jobs into events; silent about the first.
class JobWatcher {
public:
    /// The events since the last call, in the order of the jobs.
    std::vector<JobEvent> update(const std::vector<ServiceStatus::Job>& jobs);

private:
    std::optional<QHash<QString, QString>> m_known; ///< state by job id
};

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
