#include "DemoService/Scenarios/Stage.h"

#include "TunedeckCore/Support/Text/Text.h"

#include <utility>

namespace tunedeck::demo {

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

static constexpr std::int64_t backupGrowth = 81'920;

Job& Stage::addJob(const QString& playlist, const QString& jobState, const QString& message, Age age) {
    auto& jobs = state.jobs.recent;
    return *jobs.insert(jobs.begin(), {.jobId = u"job-"_s + QString::number(++state.jobs.lastNumber),
                                       .state = jobState,
                                       .playlist = playlist,
                                       .message = message,
                                       .createdAt = ago(age),
                                       .links = 1});
}

void Stage::addDoneJob(const QString& playlist, int tracks, Age age) {
    const QString message = u"Added "_s + counted(tracks, u"track"_s) + u" to "_s + inQuotes(playlist);
    Job& job = addJob(playlist, job_state::done, message, age + 2min);
    job.finishedAt = ago(age);
    job.tracks = tracks;
    job.errors = 0;
    job.xmlVersion = QString::number(++state.jobs.xmlVersion);
}

void Stage::addFailedJob(const QString& playlist, const QString& message, Age age) {
    Job& job = addJob(playlist, job_state::failed, message, age + 1min);
    job.finishedAt = ago(age);
    job.tracks = 0;
    job.errors = 1;
}

void Stage::addAppliedChange(const QString& change, Library::Bump bump, Age age) {
    const auto& backup = library().addBackup(now - age, bump, u"Before: "_s + change, backupGrowth);
    library().lastApplied = {.at = backup.createdAt, .version = backup.version, .summary = change};
}

void Stage::addFirstBackup(Age age) {
    library().addBackup(now - age, Library::Minor, u"First backup, before any change"_s, backupGrowth);
}

Library::Change& Stage::addPending(const QString& summary, Age age) {
    return library().pending.emplace_back(Library::Change{
        .id = u"change-"_s + QString::number(++library().lastChange), .createdAt = ago(age), .summary = summary});
}

void Stage::addFailed(const QString& summary, const QString& error, Age age) {
    addPending(summary, age).error = error;
    library().failed.push_back(std::move(library().pending.back()));
    library().pending.pop_back();
}

Link& Stage::addLink(const QString& kind, const QString& label, Age age, std::optional<Age> usedAge) {
    std::vector<Log::Line> unused;
    StepContext context{.now = now - age, .speed = 1, .random = state.random, .lines = unused};
    Link& link = state.links.all.emplace_back(
        Link{.id = state.random.token(12), .kind = kind, .label = label, .createdAt = ago(age)});
    state.links.renewSecret(context, link);
    link.firstUseAt.reset();
    if (usedAge) {
        link.lastUsedAt = ago(*usedAge);
        if (kind == link_kind::telegram) {
            link.paired = true;
            link.telegramUsername = u"dj_nightowl"_s;
            link.expiresAt.reset();
            link.url.reset();
        }
    }
    return link;
}

} // namespace tunedeck::demo
