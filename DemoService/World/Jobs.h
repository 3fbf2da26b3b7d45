#pragma once

#include "DemoService/World/StepContext.h"
#include "TunedeckCore/Support/Json/Members.h"

#include <QByteArray>
#include <QLatin1StringView>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace tunedeck::demo {

namespace job_state {
inline constexpr QLatin1StringView queued("queued");
inline constexpr QLatin1StringView running("running");
inline constexpr QLatin1StringView done("done");
inline constexpr QLatin1StringView failed("failed");
} // namespace job_state

/// One request for music.
struct Job {
    QString jobId;
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

    static constexpr auto members =
        json::members<&Job::jobId, &Job::state, &Job::playlist, &Job::message, &Job::createdAt, &Job::finishedAt,
                      &Job::links, &Job::tracks, &Job::errors, &Job::xmlVersion>;
    static constexpr auto internalMembers =
        json::members<&Job::requested, &Job::downloaded, &Job::willFail, &Job::nextStep>;
};

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

    /// An XML file that Rekordbox can import, with each playlist that a finished job added to.
    QByteArray importXml(const QString& version) const;

    /// Names of playlists for requests.
    static QStringList playlists();

    static constexpr auto members =
        json::members<&Jobs::recent, &Jobs::lastNumber, &Jobs::xmlVersion, &Jobs::nextArrival>;

private:
    void step(Job& job, StepContext& context);
    void finish(Job& job, StepContext& context);
};

} // namespace tunedeck::demo
