#pragma once

#include "TunedeckCore/Service/JobEvent.h"
#include "TunedeckCore/Service/ServiceStatus.h"

#include <QHash>
#include <QString>

#include <optional>
#include <vector>

namespace tunedeck {

/// Turns successive lists of jobs into events; silent about the first.
class JobWatcher {
public:
    /// The events since the last call, in the order of the jobs.
    std::vector<JobEvent> update(const std::vector<ServiceStatus::Job>& jobs);

private:
    std::optional<QHash<QString, QString>> m_known; ///< state by job id
};

} // namespace tunedeck
