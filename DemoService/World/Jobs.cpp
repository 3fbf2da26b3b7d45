#include "DemoService/World/Jobs.h"

#include "TunedeckCore/Support/Text/Text.h"

#include <set>

namespace tunedeck::demo {

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

constexpr std::size_t keptJobs = 20;
constexpr auto part = "jobs"_L1;

QStringList failures() {
    return {u"yt-dlp: this video isn't available in your country"_s, u"spotdl: no match found for 3 of 3 tracks"_s,
            u"The link is private or doesn't exist any more."_s,
            u"The connection was lost while downloading. Ask for it again to retry."_s};
}

QString tracks(int count) {
    return counted(count, u"track"_s);
}

} // namespace

QStringList Jobs::playlists() {
    return {u"Friday"_s,         u"Warm-up"_s,        u"Peak Time"_s,     u"Closing"_s,
            u"House Classics"_s, u"Sunday Rooftop"_s, u"Drum & Bass"_s,   u"Wedding Anna & Tom"_s,
            u"Disco Edits"_s,    u"Afterhours"_s,     u"New This Week"_s, u"Café del Sol"_s};
}

void Jobs::request(StepContext& context) {
    Job job;
    job.jobId = u"job-"_s + QString::number(++lastNumber);
    job.state = job_state::queued;
    job.playlist = context.random.oneOf(playlists());
    job.message = u"Waiting to start"_s;
    job.createdAt = context.timestamp();
    job.requested = static_cast<int>(context.random.between(1, 7));
    job.links = job.requested > 3 ? 1 : job.requested;
    job.willFail = context.random.chance(12);
    job.nextStep = context.afterBetween(2s, 4s);
    context.info(part,
                 job.jobId + u" requested: "_s + counted(*job.links, u"link"_s) + u" for "_s + inQuotes(job.playlist));
    recent.insert(recent.begin(), std::move(job));
    if (recent.size() > keptJobs) {
        recent.resize(keptJobs);
    }
}

std::vector<Job> Jobs::advance(StepContext& context, bool toolsReady) {
    std::vector<Job> done;
    for (Job& job : recent) {
        if (job.isFinished() || !context.isDue(job.nextStep) || (job.state == job_state::queued && !toolsReady)) {
            continue;
        }
        step(job, context);
        if (job.state == job_state::done) {
            done.push_back(job);
        }
    }
    return done;
}

void Jobs::step(Job& job, StepContext& context) {
    if (job.state == job_state::queued) {
        job.state = job_state::running;
        context.info(part, job.jobId + u" started"_s);
    } else {
        ++job.downloaded;
        if (job.downloaded >= job.requested || (job.willFail && job.downloaded * 2 >= job.requested)) {
            finish(job, context);
            return;
        }
        context.debug(part, u"%1 got %2 of %3"_s.arg(job.jobId).arg(job.downloaded).arg(job.requested));
    }
    job.message = u"Downloading %1 of %2"_s.arg(job.downloaded + 1).arg(job.requested);
    job.nextStep = context.afterBetween(3s, 7s);
}

void Jobs::finish(Job& job, StepContext& context) {
    job.finishedAt = context.timestamp();
    job.nextStep.reset();
    if (job.willFail) {
        job.state = job_state::failed;
        job.message = context.random.oneOf(failures());
        job.tracks = 0;
        job.errors = job.requested;
        context.error(part, job.jobId + u" failed: "_s + job.message);
        return;
    }
    job.errors = job.requested > 4 && context.random.chance(25) ? 1 : 0;
    job.tracks = job.requested - *job.errors;
    job.state = job_state::done;
    job.xmlVersion = QString::number(++xmlVersion);
    job.message = u"Added "_s + tracks(*job.tracks) + u" to "_s + inQuotes(job.playlist);
    if (*job.errors > 0) {
        job.message += u"; 1 wasn't found"_s;
        context.warn(part, job.jobId + u": 1 track not found"_s);
    }
    context.info(part, job.jobId + u" done: "_s + tracks(*job.tracks) + u", XML v"_s + *job.xmlVersion);
}

std::optional<Moment> Jobs::nextEvent(bool toolsReady) const {
    auto next = nextArrival;
    for (const Job& job : recent) {
        if (!job.isFinished() && (toolsReady || job.state != job_state::queued)) {
            next = earlier(next, job.nextStep);
        }
    }
    return next;
}

QByteArray Jobs::importXml(const QString& version) const {
    std::set<QString> playlists;
    for (const Job& job : recent) {
        if (job.state == job_state::done) {
            playlists.insert(job.playlist);
        }
    }
    QString nodes;
    for (const QString& playlist : playlists) {
        nodes += uR"(      <NODE Type="1" Name="%1" KeyType="0" Entries="0"/>)"_s.arg(playlist.toHtmlEscaped()) + u'\n';
    }
    return uR"(<?xml version="1.0" encoding="UTF-8"?>
<DJ_PLAYLISTS Version="1.0.0">
  <PRODUCT Name="Tunedeck" Version="%1"/>
  <COLLECTION Entries="0"/>
  <PLAYLISTS>
    <NODE Type="0" Name="ROOT" Count="%2">
%3    </NODE>
  </PLAYLISTS>
</DJ_PLAYLISTS>
)"_s.arg(version.toHtmlEscaped(), QString::number(playlists.size()), nodes)
        .toUtf8();
}

} // namespace tunedeck::demo
