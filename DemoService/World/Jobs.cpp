#include "DemoService/World/Jobs.h"

#include "DemoService/World/Catalogue.h"
#include "DemoService/World/Words.h"

#include <algorithm>

namespace tunedeck::demo {

using namespace std::chrono_literals;

namespace {

constexpr std::size_t keptJobs = 20;
constexpr auto subject = "jobs";

} // namespace

void Jobs::request(Turn& turn) {
    Job job;
    job.id = "job-" + std::to_string(++lastNumber);
    job.state = job_state::queued;
    job.playlist = turn.random.oneOf(catalogue::playlists());
    job.message = "Waiting to start";
    job.createdAt = wholeSecond(turn.now);
    job.wanted = static_cast<int>(turn.random.between(1, 7));
    job.links = job.wanted > 3 ? 1 : job.wanted;
    job.doomed = turn.random.chance(12);
    job.nextStep = turn.within(2s, 4s);
    turn.info(subject, job.id + " requested: " + counted(*job.links, "link") + " for " + inQuotes(job.playlist));
    recent.insert(recent.begin(), std::move(job));
    if (recent.size() > keptJobs) {
        recent.resize(keptJobs);
    }
}

std::vector<const Job*> Jobs::advance(Turn& turn, bool toolsReady) {
    std::vector<const Job*> done;
    for (Job& job : recent) {
        if (job.isFinished() || !isDue(job.nextStep, turn.now) || (job.state == job_state::queued && !toolsReady)) {
            continue;
        }
        step(job, turn);
        if (job.state == job_state::done) {
            done.push_back(&job);
        }
    }
    return done;
}

void Jobs::step(Job& job, Turn& turn) {
    if (job.state == job_state::queued) {
        job.state = job_state::running;
        turn.info(subject, job.id + " started");
    } else {
        ++job.got;
        if (job.got >= job.wanted || (job.doomed && job.got * 2 >= job.wanted)) {
            finish(job, turn);
            return;
        }
        turn.debug(subject, job.id + " got " + std::to_string(job.got) + " of " + std::to_string(job.wanted));
    }
    job.message = "Downloading " + std::to_string(job.got + 1) + " of " + std::to_string(job.wanted);
    job.nextStep = turn.within(3s, 7s);
}

void Jobs::finish(Job& job, Turn& turn) {
    job.finishedAt = wholeSecond(turn.now);
    job.nextStep.reset();
    if (job.doomed) {
        job.state = job_state::failed;
        job.message = turn.random.oneOf(catalogue::downloadFailures());
        job.tracks = 0;
        job.errors = job.wanted;
        turn.error(subject, job.id + " failed: " + job.message);
        return;
    }
    job.errors = job.wanted > 4 && turn.random.chance(25) ? 1 : 0;
    job.tracks = job.wanted - *job.errors;
    job.state = job_state::done;
    job.xmlVersion = std::to_string(++xmlVersion);
    job.message = "Added " + counted(*job.tracks, "track") + " to " + inQuotes(job.playlist);
    if (*job.errors > 0) {
        job.message += "; " + std::to_string(*job.errors) + " wasn't found";
        turn.warn(subject, job.id + ": " + counted(*job.errors, "track") + " not found");
    }
    turn.info(subject, job.id + " done: " + counted(*job.tracks, "track") + ", XML v" + *job.xmlVersion);
}

void Jobs::scheduleArrival(Turn& turn, Span least, Span most) {
    nextArrival = turn.within(least, most);
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

} // namespace tunedeck::demo
