#include "TunedeckCore/Service/Watchers/LibraryWatcher.h"

namespace tunedeck {

std::optional<ServiceStatus::Library::Applied> LibraryWatcher::update(
    const std::optional<ServiceStatus::Library::Applied>& applied) {
    const bool first = !m_lastSeen.has_value();
    const std::optional<QString> previous = m_lastSeen.value_or(std::nullopt);
    m_lastSeen = applied ? std::optional(applied->at) : std::nullopt;
    return first || !applied || previous == applied->at ? std::nullopt : applied;
}

} // namespace tunedeck
