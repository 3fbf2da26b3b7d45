#include "TunedeckCore/Service/ServiceStatus.h"

#include "TunedeckCore/Support/Json/Record.h"
#include "TunedeckCore/Support/Text/Time.h"

namespace tunedeck {

using Cloud = ServiceStatus::Cloud;
using Mcp = ServiceStatus::Mcp;
using Job = ServiceStatus::Job;
using Library = ServiceStatus::Library;

template<>
struct json::Members<Cloud> {
    static constexpr auto list = std::tuple{
        member("enabled", &Cloud::enabled), member("baseUrl", &Cloud::baseUrl), member("protocol", &Cloud::protocol),
        member("registered", &Cloud::registered), member("connected", &Cloud::connected)};
};

template<>
struct json::Members<Mcp> {
    static constexpr auto list = std::tuple{member("publicUrl", &Mcp::publicUrl), member("localUrl", &Mcp::localUrl)};
};

template<>
struct json::Members<Job> {
    static constexpr auto list =
        std::tuple{member("jobId", &Job::jobId),         member("state", &Job::state),
                   member("playlist", &Job::playlist),   member("message", &Job::message),
                   member("createdAt", &Job::createdAt), member("finishedAt", &Job::finishedAt),
                   member("links", &Job::links),         member("tracks", &Job::tracks),
                   member("errors", &Job::errors),       member("xmlVersion", &Job::xmlVersion)};
};

template<>
struct json::Members<Library::Pending> {
    static constexpr auto list =
        std::tuple{member("id", &Library::Pending::id), member("createdAt", &Library::Pending::createdAt),
                   member("summary", &Library::Pending::summary)};
};

template<>
struct json::Members<Library::Failed> {
    static constexpr auto list =
        std::tuple{member("id", &Library::Failed::id), member("summary", &Library::Failed::summary),
                   member("error", &Library::Failed::error)};
};

template<>
struct json::Members<Library::Applied> {
    static constexpr auto list =
        std::tuple{member("at", &Library::Applied::at), member("version", &Library::Applied::version),
                   member("summary", &Library::Applied::summary)};
};

template<>
struct json::Members<Library::Backup> {
    static constexpr auto list =
        std::tuple{member("version", &Library::Backup::version), member("createdAt", &Library::Backup::createdAt),
                   member("reason", &Library::Backup::reason), member("sizeBytes", &Library::Backup::sizeBytes)};
};

template<>
struct json::Members<Library> {
    static constexpr auto list = std::tuple{member("dbPath", &Library::dbPath),
                                            member("rekordboxRunning", &Library::rekordboxRunning),
                                            member("pending", &Library::pending),
                                            member("failed", &Library::failed),
                                            member("lastApplied", &Library::lastApplied),
                                            member("lastError", &Library::lastError),
                                            member("currentVersion", &Library::currentVersion),
                                            member("backups", &Library::backups)};
};

template<>
struct json::Members<ServiceStatus> {
    static constexpr auto list = std::tuple{member("version", &ServiceStatus::version),
                                            member("rekordboxDb", &ServiceStatus::rekordboxDb),
                                            member("mcp", &ServiceStatus::mcp),
                                            member("shortcutUrl", &ServiceStatus::shortcutUrl),
                                            member("downloadDir", &ServiceStatus::downloadDir),
                                            member("downloadDirSource", &ServiceStatus::downloadDirSource),
                                            member("downloadDirWritable", &ServiceStatus::downloadDirWritable),
                                            member("downloadDirError", &ServiceStatus::downloadDirError),
                                            member("importXml", &ServiceStatus::importXml),
                                            member("xmlVersion", &ServiceStatus::xmlVersion),
                                            member("cloud", &ServiceStatus::cloud),
                                            member("recentJobs", &ServiceStatus::recentJobs)};
};

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
