#include "DemoService/World/World.h"

#include "DemoService/Files/Record.h"
#include "DemoService/World/Words.h"

namespace tunedeck::demo {

using namespace std::chrono_literals;

namespace {

constexpr Span leastPause = 50s;
constexpr Span mostPause = 140s;
constexpr int livelyFailurePercent = 8;

LibraryReply withoutLibrary() {
    return {.ok = false,
            .message = {},
            .error = "No Rekordbox library was found on this computer.",
            .version = {},
            .status = 404};
}

} // namespace

std::string stateText(const State& state) {
    return recordText(state, Audience::stateFile) + "\n";
}

std::optional<State> stateFromText(std::string_view text) {
    const auto document = parseObject(text);
    if (!document) {
        return std::nullopt;
    }
    State state;
    RecordReader reader(*document);
    State::members(state, reader);
    return state.scenario.empty() ? std::nullopt : std::optional(std::move(state));
}

World::World(State state, double speed) : m_state(std::move(state)), m_speed(speed) {}

/// Runs `action` with a turn at `now`, and keeps the state of chance.
template<class Act>
auto World::act(Moment now, Act action) {
    Random random(m_state.seed);
    Turn turn{.now = now, .speed = m_speed, .random = random, .journal = m_journal};
    struct Keeper {
        ~Keeper() { seed = random.seed(); }
        std::uint64_t& seed;
        Random& random;
    } const keeper{m_state.seed, random};
    return action(turn);
}

void World::advance(Moment now) {
    act(now, [this](Turn& turn) {
        m_state.cloud.advance(turn);
        m_state.toolbox.advance(turn);
        m_state.links.advance(turn);
        if (m_state.livesWhenConnected && m_state.links.anyConnected()) {
            comeAlive(turn);
        }
        if (isDue(m_state.jobs.nextArrival, turn.now)) {
            m_state.jobs.scheduleArrival(turn, leastPause, mostPause);
            // Nobody can ask without an assistant or through a cloud that isn't there.
            if (m_state.links.anyConnected() && m_state.cloud.connected.value_or(false)) {
                m_state.jobs.request(turn);
                m_state.links.noteUse(turn);
            }
        }
        for (const Job* job : m_state.jobs.advance(turn, m_state.toolbox.ready())) {
            if (m_state.library) {
                const bool newPlaylist = turn.random.chance(30);
                m_state.library->enqueue(turn,
                                         "Add " + counted(job->tracks.value_or(0), "track") + " to " +
                                             (newPlaylist ? "the new playlist " : "") + inQuotes(job->playlist),
                                         newPlaylist ? Bump::minor : Bump::patch);
            }
        }
        if (m_state.library) {
            m_state.library->advance(turn);
        }
    });
}

void World::comeAlive(Turn& turn) {
    m_state.livesWhenConnected = false;
    m_state.jobs.scheduleArrival(turn, 8s, 15s);
    if (m_state.library) {
        m_state.library->failurePercent = livelyFailurePercent;
        m_state.library->toggleAt = turn.within(2min, 4min);
    }
    turn.info("service", "an assistant is connected: requests can come");
}

std::optional<Moment> World::nextEvent() const {
    auto next = earlier(m_state.cloud.nextEvent(), m_state.toolbox.nextEvent());
    next = earlier(next, m_state.links.nextEvent());
    next = earlier(next, m_state.jobs.nextEvent(m_state.toolbox.ready()));
    return m_state.library ? earlier(next, m_state.library->nextEvent()) : next;
}

LibraryReply World::onLibrary(Moment now, LibraryReply (Library::*action)(Turn&)) {
    if (!m_state.library) {
        return withoutLibrary();
    }
    return act(now, [&](Turn& turn) { return ((*m_state.library).*action)(turn); });
}

LibraryReply World::restore(Moment now, const std::string& version) {
    if (!m_state.library) {
        return withoutLibrary();
    }
    return act(now, [&](Turn& turn) { return m_state.library->restore(turn, version); });
}

LibraryReply World::apply(Moment now) {
    return onLibrary(now, &Library::apply);
}
LibraryReply World::takeBaseline(Moment now) {
    return onLibrary(now, &Library::takeBaseline);
}
LibraryReply World::retryFailed(Moment now) {
    return onLibrary(now, &Library::retry);
}
LibraryReply World::dismissFailed(Moment now) {
    return onLibrary(now, &Library::dismiss);
}

void World::installTools(Moment now) {
    act(now, [this](Turn& turn) { m_state.toolbox.install(turn); });
}

/// Links are made and ended by the relay, so they need it.
std::optional<LinkProblem> World::cloudProblem(Turn& turn) const {
    std::optional<LinkProblem> problem;
    if (!m_state.cloud.enabled) {
        problem = {409, "cloud_disabled", "The cloud relay is switched off."};
    } else if (!m_state.cloud.connected.value_or(true)) {
        problem = {503, "cloud_unreachable", "The Tunedeck cloud can't be reached. Is this Mac online?"};
    }
    if (problem) {
        turn.warn("links", "refused: " + problem->error);
    }
    return problem;
}

LinkResult World::createLink(Moment now, const std::string& kind, std::optional<std::string> label) {
    return act(now, [&](Turn& turn) -> LinkResult {
        if (auto problem = cloudProblem(turn)) {
            return *problem;
        }
        return m_state.links.create(turn, kind, std::move(label));
    });
}

LinkResult World::rotateLink(Moment now, const std::string& id) {
    return act(now, [&](Turn& turn) -> LinkResult {
        if (auto problem = cloudProblem(turn)) {
            return *problem;
        }
        return m_state.links.rotate(turn, id);
    });
}

std::optional<LinkProblem> World::deleteLink(Moment now, const std::string& id) {
    return act(now, [&](Turn& turn) -> std::optional<LinkProblem> {
        if (auto problem = cloudProblem(turn)) {
            return problem;
        }
        return m_state.links.remove(turn, id);
    });
}

} // namespace tunedeck::demo
