#pragma once

#include "DemoService/World/StepContext.h"
#include "TunedeckCore/Support/Json/Record.h"

#include <QString>

#include <cstdint>
#include <optional>
#include <tuple>
#include <vector>

namespace tunedeck::demo {

/// The Rekordbox library. Changes wait while Rekordbox is open, and each write makes a backup first.
struct Library {
    /// The part of a version that a change raises.
    enum Bump { Patch, Minor, Major };

    /// A change that waits or, with an error, one that failed.
    struct Change {
        QString id;
        Moment createdAt;
        QString summary;
        std::optional<QString> error;
        int bump = Patch;
        bool retried = false; ///< a second attempt always succeeds
    };
    struct Applied {
        Moment at;
        std::optional<QString> version;
        QString summary;
    };
    struct Backup {
        QString version;
        Moment createdAt;
        QString reason;
        std::int64_t sizeBytes = 0;
    };
    /// The reply to a library request.
    struct Reply {
        bool ok = false;
        std::optional<QString> message;
        std::optional<QString> error;
        std::optional<QString> version;
        int status = 200; ///< of the HTTP response
    };

    QString dbPath;
    bool rekordboxRunning = false;
    std::vector<Change> pending;
    std::vector<Change> failed;
    std::optional<Applied> lastApplied;
    std::optional<QString> lastError;
    std::optional<QString> currentVersion; ///< of the newest backup
    std::vector<Backup> backups;           ///< newest first

    int lastChange = 0;
    int failurePercent = 0;         ///< of the changes that are applied automatically
    std::optional<Moment> applyAt;  ///< when the pending changes are applied automatically
    std::optional<Moment> toggleAt; ///< when the user opens or closes Rekordbox

    /// Adds a change, to be applied when Rekordbox is closed.
    void enqueue(StepContext& context, const QString& summary, Bump bump);
    void advance(StepContext& context);

    Reply restore(StepContext& context, const QString& version);
    Reply apply(StepContext& context);
    Reply takeBaseline(StepContext& context);
    Reply retry(StepContext& context);
    Reply dismiss(StepContext& context);

    /// Adds a backup and raises the current version to its version.
    const Backup& addBackup(Moment createdAt, Bump bump, const QString& reason, std::int64_t growthBytes);
    /// Logs the error and returns it as a reply.
    static Reply refused(StepContext& context, int status, const QString& error);

private:
    void toggleRekordbox(StepContext& context);
    void writePending(StepContext& context, int percentFailing);
    const Backup& backUp(StepContext& context, Bump bump, const QString& reason);
};

} // namespace tunedeck::demo

template<>
struct tunedeck::json::Members<tunedeck::demo::Library::Change> {
    using Change = demo::Library::Change;
    static constexpr auto list = std::tuple{member("id", &Change::id), member("created_at", &Change::createdAt),
                                            member("summary", &Change::summary), member("error", &Change::error)};
    static constexpr auto internal = std::tuple{member("bump", &Change::bump), member("retried", &Change::retried)};
};

template<>
struct tunedeck::json::Members<tunedeck::demo::Library::Applied> {
    using Applied = demo::Library::Applied;
    static constexpr auto list = std::tuple{member("at", &Applied::at), member("version", &Applied::version),
                                            member("summary", &Applied::summary)};
};

template<>
struct tunedeck::json::Members<tunedeck::demo::Library::Backup> {
    using Backup = demo::Library::Backup;
    static constexpr auto list =
        std::tuple{member("version", &Backup::version), member("created_at", &Backup::createdAt),
                   member("reason", &Backup::reason), member("size_bytes", &Backup::sizeBytes)};
};

template<>
struct tunedeck::json::Members<tunedeck::demo::Library::Reply> {
    using Reply = demo::Library::Reply;
    static constexpr auto list = std::tuple{member("ok", &Reply::ok), member("message", &Reply::message),
                                            member("error", &Reply::error), member("version", &Reply::version)};
};

template<>
struct tunedeck::json::Members<tunedeck::demo::Library> {
    using Library = demo::Library;
    static constexpr auto list = std::tuple{member("db_path", &Library::dbPath),
                                            member("rekordbox_running", &Library::rekordboxRunning),
                                            member("pending", &Library::pending),
                                            member("failed", &Library::failed),
                                            member("last_applied", &Library::lastApplied),
                                            member("last_error", &Library::lastError),
                                            member("current_version", &Library::currentVersion),
                                            member("backups", &Library::backups)};
    static constexpr auto internal =
        std::tuple{member("last_change", &Library::lastChange), member("failure_percent", &Library::failurePercent),
                   member("apply_at", &Library::applyAt), member("toggle_at", &Library::toggleAt)};
};
