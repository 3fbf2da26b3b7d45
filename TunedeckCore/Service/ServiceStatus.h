#pragma once

#include "TunedeckCore/Support/Json/Error.h"

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
    };

    /// The endpoint for assistants.
    struct Mcp {
        std::optional<QString> publicUrl;
        QString localUrl;
        bool operator==(const Mcp&) const = default;
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
    };

    /// The Rekordbox library.
    struct Library {
        /// A change to be applied.
        struct Pending {
            QString id;
            QString createdAt;
            QString summary;
            bool operator==(const Pending&) const = default;
        };
        /// A change that could not be applied.
        struct Failed {
            QString id;
            QString summary;
            QString error;
            bool operator==(const Failed&) const = default;
        };
        /// An applied change.
        struct Applied {
            QString at;
            std::optional<QString> version;
            QString summary;
            bool operator==(const Applied&) const = default;
        };
        /// A backup that can be restored.
        struct Backup {
            QString version;
            QString createdAt;
            QString reason;
            std::int64_t sizeBytes = 0;

            [[nodiscard]] std::optional<QDateTime> date() const;
            bool operator==(const Backup&) const = default;
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
};

} // namespace tunedeck
