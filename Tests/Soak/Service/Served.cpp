#include "Tests/Soak/Service/Served.h"

#include "Tests/Soak/Timeline.h"
#include "TunedeckCore/Support/Json/Record.h"

namespace tunedeck::soak {

using namespace Qt::StringLiterals;

namespace {

std::string stamped(char kind, std::uint16_t port) {
    return std::string(1, kind) + '\t' + std::to_string(realTime().count()) + '\t' + std::to_string(port);
}

} // namespace

void Served::document(const demo::State& state) {
    std::string line = "D";
    for (const demo::Job& job : state.jobs.recent) {
        line += (u'\t' + job.id + u'\t' + job.state + u'\t' + job.playlist).toStdString();
    }
    line += "\t|";
    if (state.library && state.library->lastApplied) {
        const auto& applied = *state.library->lastApplied;
        line += (u'\t' + *json::encode(applied.at).as<QString>() + u'\t' + applied.version.value_or(u"-"_s) + u'\t' +
                 applied.summary)
                    .toStdString();
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
