#pragma once

#include "DemoService/World/Job.h"
#include "DemoService/World/StepContext.h"

#include <QStringList>

#include <vector>

namespace tunedeck::demo {

/// The download jobs: they arrive, wait for the tools, download track by track, and are done or fail.
struct Jobs {
    std::vector<Job> recent; ///< newest first
    int lastNumber = 0;
    int xmlVersion = 0;                ///< of the import XML written by the last finished job
    std::optional<Moment> nextArrival; ///< of a request; none when requests don't arrive on their own

    /// Adds a new request.
    void request(StepContext& context);
    /// Advances the jobs and returns those that are done now. No job starts before the tools are ready.
    std::vector<Job> advance(StepContext& context, bool toolsReady);
    std::optional<Moment> nextEvent(bool toolsReady) const;

    /// Names of playlists for requests.
    static QStringList playlists();

private:
    void step(Job& job, StepContext& context);
    void finish(Job& job, StepContext& context);
};

} // namespace tunedeck::demo

template<>
struct tunedeck::json::Members<tunedeck::demo::Jobs> {
    using Jobs = demo::Jobs;
    static constexpr auto list =
        std::tuple{member("recent", &Jobs::recent), member("last_number", &Jobs::lastNumber),
                   member("xml_version", &Jobs::xmlVersion), member("next_arrival", &Jobs::nextArrival)};
};
