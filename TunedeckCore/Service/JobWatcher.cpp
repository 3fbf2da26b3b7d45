#include "TunedeckCore/Service/JobWatcher.h"

namespace tunedeck {

using namespace Qt::StringLiterals;

std::vector<JobEvent> JobWatcher::update(const std::vector<ServiceStatus::Job>& jobs) {
    std::vector<JobEvent> events;
    QHash<QString, QString> states;
    for (const ServiceStatus::Job& job : jobs) {
        states.insert(job.jobId, job.state);
        if (!m_known) {
            continue;
        }
        const auto previous = m_known->constFind(job.jobId);
        const bool isNew = previous == m_known->constEnd();
        const bool changed = isNew || *previous != job.state;
        if (job.state == "done"_L1 && changed) {
            events.push_back({JobEvent::Kind::finished, job});
        } else if (job.state == "failed"_L1 && changed) {
            events.push_back({JobEvent::Kind::failed, job});
        } else if ((job.state == "queued"_L1 || job.state == "running"_L1) && isNew) {
            events.push_back({JobEvent::Kind::requested, job});
        }
    }
    m_known = std::move(states);
    return events;
}

std::optional<ServiceStatus::Library::Applied> LibraryWatcher::update(
    const std::optional<ServiceStatus::Library::Applied>& applied) {
    const bool first = !m_lastSeen.has_value();
    const std::optional<QString> previous = m_lastSeen.value_or(std::nullopt);
    m_lastSeen = applied ? std::optional(applied->at) : std::nullopt;
    return first || !applied || previous == applied->at ? std::nullopt : applied;
}

} // namespace tunedeck
