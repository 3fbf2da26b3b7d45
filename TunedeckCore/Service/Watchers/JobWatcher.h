#pragma once

#include "TunedeckCore/Service/ServiceStatus.h"
#include "TunedeckCore/Service/Watchers/JobEvent.h"

#include <QHash>
#include <QString>

#include <optional>
#include <vector>

namespace tunedeck {

/// Compares successive lists of jobs. The first list is the baseline and gives no events.
class JobWatcher {
public:
    /// The events since the last call, in the order of the list.
    std::vector<JobEvent> update(const std::vector<ServiceStatus::Job>& jobs);

private:
    std::optional<QHash<QString, QString>> m_known; ///< state by job id
};

} // namespace tunedeck
