#pragma once

#include "TunedeckCore/Service/ServiceStatus.h"

namespace tunedeck {

/// A change in the state of a download job.
struct JobEvent {
    enum class Kind { requested, finished, failed };
    Kind kind = Kind::requested;
    ServiceStatus::Job job;
    bool operator==(const JobEvent&) const = default;
};

} // namespace tunedeck
