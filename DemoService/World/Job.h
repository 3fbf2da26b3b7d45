#pragma once

#include "DemoService/World/Moment.h"
#include "TunedeckCore/Support/Json/Record.h"

#include <QLatin1StringView>
#include <QString>

#include <optional>
#include <tuple>

namespace tunedeck::demo {

namespace job_state {
inline constexpr QLatin1StringView queued("queued");
inline constexpr QLatin1StringView running("running");
inline constexpr QLatin1StringView done("done");
inline constexpr QLatin1StringView failed("failed");
} // namespace job_state

/// One request for music.
struct Job {
    QString id;
    QString state;
    QString playlist;
    QString message;
    std::optional<Moment> createdAt;
    std::optional<Moment> finishedAt;
    std::optional<int> links;
    std::optional<int> tracks;
    std::optional<int> errors;
    std::optional<QString> xmlVersion;

    int requested = 0;              ///< tracks
    int downloaded = 0;             ///< of them
    bool willFail = false;          ///< halfway through
    std::optional<Moment> nextStep; ///< none when the job doesn't change

    bool isFinished() const { return state == job_state::done || state == job_state::failed; }
};

} // namespace tunedeck::demo

template<>
struct tunedeck::json::Members<tunedeck::demo::Job> {
    using Job = demo::Job;
    static constexpr auto list = std::tuple{member("job_id", &Job::id),
                                            member("state", &Job::state),
                                            member("playlist", &Job::playlist),
                                            member("message", &Job::message),
                                            member("created_at", &Job::createdAt),
                                            member("finished_at", &Job::finishedAt),
                                            member("links", &Job::links),
                                            member("tracks", &Job::tracks),
                                            member("errors", &Job::errors),
                                            member("xml_version", &Job::xmlVersion)};
    static constexpr auto internal =
        std::tuple{member("requested", &Job::requested), member("downloaded", &Job::downloaded),
                   member("will_fail", &Job::willFail), member("next_step", &Job::nextStep)};
};
