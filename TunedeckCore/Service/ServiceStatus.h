#pragma once

#include "TunedeckCore/Support/Json/Error.h"
#include "TunedeckCore/Support/Json/Members.h"

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include <cstdint>
#include <expected>
#include <optional>
#include <vector>

namespace tunedeck {

/// The service's status document.
struct ServiceStatus {
    /// The link to the cloud relay.
    struct Cloud {
        bool enabled = false;
        QString baseUrl;
        std::optional<std::int64_t> protocol;
        std::optional<bool> registered;
        std::optional<bool> connected; ///< absent while not yet known
        bool operator==(const Cloud&) const = default;

        static constexpr auto members =
            json::members<&Cloud::enabled, &Cloud::baseUrl, &Cloud::protocol, &Cloud::registered, &Cloud::connected>;
    };

    /// The endpoint for assistants.
    struct Mcp {
        std::optional<QString> publicUrl;
        QString localUrl;
        bool operator==(const Mcp&) const = default;

        static constexpr auto members = json::members<&Mcp::publicUrl, &Mcp::localUrl>;
    };

    /// A download job.
    struct Job {
        QString jobId;
        QString state; ///< "queued", "running", "done", "failed" or unknown
        QString playlist;
        QString message;
        std::optional<QString> createdAt;
        std::optional<QString> finishedAt;
        std::optional<std::int64_t> links;
        std::optional<std::int64_t> tracks;
        std::optional<std::int64_t> errors;
        std::optional<QString> xmlVersion;

        /// When it finished or, without finishedAt, when it was created.
        [[nodiscard]] std::optional<QDateTime> date() const;
        bool operator==(const Job&) const = default;

        static constexpr auto members =
            json::members<&Job::jobId, &Job::state, &Job::playlist, &Job::message, &Job::createdAt, &Job::finishedAt,
                          &Job::links, &Job::tracks, &Job::errors, &Job::xmlVersion>;
    };

    /// The Rekordbox library.
    struct Library {
        /// A change to be applied.
        struct Pending {
            QString id;
            QString createdAt;
            QString summary;
            bool operator==(const Pending&) const = default;

            static constexpr auto members = json::members<&Pending::id, &Pending::createdAt, &Pending::summary>;
        };
        /// A change that could not be applied.
        struct Failed {
            QString id;
            QString summary;
            QString error;
            bool operator==(const Failed&) const = default;

            static constexpr auto members = json::members<&Failed::id, &Failed::summary, &Failed::error>;
        };
        /// An applied change.
        struct Applied {
            QString at;
            std::optional<QString> version;
            QString summary;
            bool operator==(const Applied&) const = default;

            static constexpr auto members = json::members<&Applied::at, &Applied::version, &Applied::summary>;
        };
        /// A backup that can be restored.
        struct Backup {
            QString version;
            QString createdAt;
            QString reason;
            std::int64_t sizeBytes = 0;

            [[nodiscard]] std::optional<QDateTime> date() const;
            bool operator==(const Backup&) const = default;

            static constexpr auto members =
                json::members<&Backup::version, &Backup::createdAt, &Backup::reason, &Backup::sizeBytes>;
        };

        QString dbPath;
        bool rekordboxRunning = false;
        std::vector<Pending> pending;
        std::vector<Failed> failed;
        std::optional<Applied> lastApplied;
        std::optional<QString> lastError;
        std::optional<QString> currentVersion;
        std::vector<Backup> backups;
        bool operator==(const Library&) const = default;

        static constexpr auto members =
            json::members<&Library::dbPath, &Library::rekordboxRunning, &Library::pending, &Library::failed,
                          &Library::lastApplied, &Library::lastError, &Library::currentVersion, &Library::backups>;
    };

    QString version;
    std::optional<Library> rekordboxDb;
    std::optional<Mcp> mcp;
    std::optional<QString> shortcutUrl;
    QString downloadDir;
    QString downloadDirSource;
    bool downloadDirWritable = false;
    std::optional<QString> downloadDirError;
    QString importXml;
    std::optional<QString> xmlVersion;
    Cloud cloud;
    std::vector<Job> recentJobs;

    /// Fails if a required member is missing or a member has the wrong type.
    static std::expected<ServiceStatus, json::Error> decode(const QByteArray& bytes);
    bool operator==(const ServiceStatus&) const = default;

    static constexpr auto members =
        json::members<&ServiceStatus::version, &ServiceStatus::rekordboxDb, &ServiceStatus::mcp,
                      &ServiceStatus::shortcutUrl, &ServiceStatus::downloadDir, &ServiceStatus::downloadDirSource,
                      &ServiceStatus::downloadDirWritable, &ServiceStatus::downloadDirError, &ServiceStatus::importXml,
                      &ServiceStatus::xmlVersion, &ServiceStatus::cloud, &ServiceStatus::recentJobs>;
};

} // namespace tunedeck
