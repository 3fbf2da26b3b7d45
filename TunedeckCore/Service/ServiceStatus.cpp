#include "TunedeckCore/Service/ServiceStatus.h"

#include "TunedeckCore/Support/Json/Record.h"
#include "TunedeckCore/Support/Text/Time.h"

namespace tunedeck {

std::optional<QDateTime> ServiceStatus::Job::date() const {
    return parseTimestamp(finishedAt ? finishedAt : createdAt);
}

std::optional<QDateTime> ServiceStatus::Library::Backup::date() const {
    return parseTimestamp(createdAt);
}

std::expected<ServiceStatus, json::Error> ServiceStatus::decode(const QByteArray& bytes) {
    return json::decode<ServiceStatus>(bytes, json::Keys::SnakeToCamel);
}

} // namespace tunedeck
