#include "Tests/Soak/Service/Whims.h"

#include <utility>

namespace tunedeck::soak {

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;
using namespace tunedeck::demo;

namespace {

constexpr std::size_t mostBackups = 12;
constexpr std::size_t mostChanges = 8;
constexpr std::size_t mostLinks = 6;
constexpr int percent = 3; ///< of the visits change something

/// Each request's playlist is told by its name, also in a notification.
void nameApart(State& state) {
    for (Job& job : state.jobs.recent) {
        if (!job.playlist.endsWith(job.id)) {
            job.playlist += u" · "_s + job.id;
        }
    }
}

template<class T>
void limit(std::vector<T>& list, std::size_t most) {
    if (list.size() > most) {
        list.resize(most / 2, list.front());
    }
}

} // namespace

void Whims::visit(World& world, Moment now) {
    State state = world.state();
    std::vector<Log::Line> lines;
    StepContext context{.now = now, .speed = 1, .random = m_random, .lines = lines};
    if (m_random.chance(percent)) {
        switch (m_random.between(0, 5)) {
        case 0:
            toLibrary(state);
            break;
        case 1:
            toTheRest(state, now);
            break;
        default:
            toJobs(state, context);
        }
    }
    if (state.library) {
        limit(state.library->backups, mostBackups);
        limit(state.library->pending, mostChanges);
        limit(state.library->failed, mostChanges);
    }
    limit(state.links.all, mostLinks);
    nameApart(state);
    world = World(std::move(state), 1);
}

void Whims::toJobs(State& state, StepContext& context) {
    auto& jobs = state.jobs.recent;
    if (m_random.chance(30) || jobs.empty()) {
        for (auto count = m_random.between(1, 4); count > 0; --count) {
            state.jobs.request(context);
        }
        return;
    }
    const auto at = static_cast<std::size_t>(m_random.between(0, static_cast<std::int64_t>(jobs.size()) - 1));
    Job& job = jobs[at];
    switch (m_random.between(0, 5)) {
    case 0: // tried again
        if (job.state == job_state::failed) {
            job.state = job_state::queued;
            job.downloaded = 0;
            job.finishedAt.reset();
            job.nextStep = context.afterBetween(2s, 8s);
        }
        break;
    case 1: // gone
        m_vanished = {job};
        jobs.erase(jobs.begin() + static_cast<std::ptrdiff_t>(at));
        break;
    case 2: // and back as it was
        for (Job& back : std::exchange(m_vanished, {})) {
            jobs.insert(jobs.begin(), std::move(back));
        }
        break;
    case 3: // a word that clients don't know, or the end of it
        if (job.state == u"paused"_s) {
            job.state = job_state::running;
            job.nextStep = context.afterBetween(2s, 8s);
        } else if (job.state == job_state::running) {
            job.state = u"paused"_s;
            job.nextStep.reset();
        }
        break;
    case 4: // fails at once
        if (!job.isFinished()) {
            job.state = job_state::failed;
            job.message = u"The disk is full.\nNothing of it was kept: "_s + QString(200, u'x');
            job.finishedAt = context.timestamp();
            job.nextStep.reset();
        }
        break;
    default: // a clean list, once in a while
        if (m_random.chance(20)) {
            jobs.clear();
        }
    }
}

void Whims::toLibrary(State& state) {
    if (!state.library) {
        state.library = std::exchange(m_library, std::nullopt).value_or(Library{});
    } else if (m_random.chance(30)) {
        m_library = std::exchange(state.library, std::nullopt);
    } else if (state.library->lastApplied) {
        m_applied = std::exchange(state.library->lastApplied, std::nullopt);
    } else {
        state.library->lastApplied = m_applied;
    }
}

void Whims::toTheRest(State& state, Moment now) {
    switch (m_random.between(0, 3)) {
    case 0:
        state.toolbox = Toolbox::make(m_random.chance(70), now);
        break;
    case 1:
        state.cloud.enabled = !state.cloud.enabled;
        break;
    case 2:
        if (!std::exchange(state.stagedFolder, std::nullopt)) {
            state.stagedFolder = {.path = u"/media/stick"_s,
                                  .source = u"default"_s,
                                  .writable = false,
                                  .error = u"The drive is read-only."_s};
        }
        break;
    default:
        if (!state.links.all.empty()) {
            state.links.all.pop_back();
        }
    }
}

} // namespace tunedeck::soak
