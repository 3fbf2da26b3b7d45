#include "DemoService/Scenarios/Staging.h"

#include "DemoService/World/Words.h"

namespace tunedeck::demo {

using namespace std::chrono_literals;

namespace {

constexpr std::int64_t backupBytes = 48'314'368;
constexpr std::int64_t backupGrowth = 81'920;

Job makeJob(State& state, std::string playlist, std::string jobState, std::string message, Moment createdAt) {
    Job job;
    job.id = "job-" + std::to_string(++state.jobs.lastNumber);
    job.playlist = std::move(playlist);
    job.state = std::move(jobState);
    job.message = std::move(message);
    job.createdAt = wholeSecond(createdAt);
    job.links = 1;
    return job;
}

} // namespace

void addDoneJob(State& state, std::string playlist, int tracks, Moment finishedAt) {
    const std::string message = "Added " + counted(tracks, "track") + " to " + inQuotes(playlist);
    Job job = makeJob(state, std::move(playlist), job_state::done, message, finishedAt - 2min);
    job.finishedAt = wholeSecond(finishedAt);
    job.tracks = tracks;
    job.errors = 0;
    job.xmlVersion = std::to_string(++state.jobs.xmlVersion);
    state.jobs.recent.insert(state.jobs.recent.begin(), std::move(job));
}

void addFailedJob(State& state, std::string playlist, std::string message, Moment finishedAt) {
    Job job = makeJob(state, std::move(playlist), job_state::failed, std::move(message), finishedAt - 1min);
    job.finishedAt = wholeSecond(finishedAt);
    job.tracks = 0;
    job.errors = 1;
    state.jobs.recent.insert(state.jobs.recent.begin(), std::move(job));
}

void addStagedJob(State& state, std::string playlist, std::string jobState, std::string message, Moment createdAt) {
    Job job = makeJob(state, std::move(playlist), std::move(jobState), std::move(message), createdAt);
    state.jobs.recent.insert(state.jobs.recent.begin(), std::move(job));
}

void addBackup(Library& library, std::string version, std::string reason, Moment createdAt) {
    library.currentVersion = version;
    const std::int64_t size = library.backups.empty() ? backupBytes : library.backups.front().sizeBytes + backupGrowth;
    library.backups.insert(library.backups.begin(), {.version = std::move(version),
                                                     .createdAt = wholeSecond(createdAt),
                                                     .reason = std::move(reason),
                                                     .sizeBytes = size});
}

void addPending(Library& library, std::string summary, Moment createdAt) {
    library.pending.push_back({.id = "change-" + std::to_string(++library.lastChange),
                               .createdAt = wholeSecond(createdAt),
                               .summary = std::move(summary),
                               .error = {},
                               .bump = static_cast<int>(Bump::patch),
                               .retried = false});
}

void addFailed(Library& library, std::string summary, std::string error, Moment createdAt) {
    addPending(library, std::move(summary), createdAt);
    library.failed.push_back(std::move(library.pending.back()));
    library.pending.pop_back();
    library.failed.back().error = std::move(error);
}

Link& addLink(State& state, const std::string& kind, std::string label, Moment createdAt,
              std::optional<Moment> usedAt) {
    Random random(state.seed);
    std::vector<LogLine> unread;
    Turn turn{.now = createdAt, .speed = 1, .random = random, .journal = unread};
    Link link;
    link.id = random.token(12);
    link.kind = kind;
    link.label = std::move(label);
    link.createdAt = wholeSecond(createdAt);
    state.links.renewSecret(turn, link);
    link.firstUseAt.reset();
    if (usedAt) {
        link.lastUsedAt = wholeSecond(*usedAt);
        if (kind == link_kind::telegram) {
            link.paired = true;
            link.telegramUsername = "dj_nightowl";
            link.expiresAt.reset();
            link.url.reset();
        }
    }
    state.seed = random.seed();
    return state.links.all.emplace_back(std::move(link));
}

Library settledLibrary(Moment now) {
    Library library;
    addBackup(library, "1.0.0", "First backup, before any change", now - 21 * 24h);
    addBackup(library, "1.1.0", "Before: Add 6 tracks to the new playlist “Warm-up”", now - 8 * 24h);
    addBackup(library, "1.1.1", "Before: Add 5 tracks to “Friday”", now - 5h);
    library.lastApplied = {.at = wholeSecond(now - 5h), .version = "1.1.1", .summary = "Add 5 tracks to “Friday”"};
    return library;
}

} // namespace tunedeck::demo
