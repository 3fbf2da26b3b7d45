#include "Tests/Soak/Service/Served.h"

#include "Tests/Soak/Timeline.h"

namespace tunedeck::soak {

namespace {

std::string stamped(char kind, std::uint16_t port) {
    return std::string(1, kind) + '\t' + std::to_string(realTime().count()) + '\t' + std::to_string(port);
}

} // namespace

void Served::document(const demo::State& state) {
    std::string line = "D";
    for (const demo::Job& job : state.jobs.recent) {
        line += '\t' + job.id + '\t' + job.state + '\t' + job.playlist;
    }
    line += "\t|";
    if (state.library && state.library->lastApplied) {
        const auto& applied = *state.library->lastApplied;
        line += '\t' + demo::isoText(applied.at) + '\t' + applied.version.value_or("-") + '\t' + applied.summary;
    } else if (state.library) {
        line += "\tnone";
    }
    if (line != m_last) {
        m_trail.note(line);
        m_last = std::move(line);
    }
}

void Served::sending(std::uint16_t port, bool good) const {
    m_trail.note(stamped('S', port) + (good ? "\t1" : "\t0"));
}

void Served::sent(std::uint16_t port) const {
    m_trail.note(stamped('E', port));
}

} // namespace tunedeck::soak
