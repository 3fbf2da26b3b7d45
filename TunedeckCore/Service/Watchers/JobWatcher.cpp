#include "TunedeckCore/Service/Watchers/JobWatcher.h"

#include "TunedeckCore/Service/Watchers/JobEvent.h"

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

} // namespace tunedeck
