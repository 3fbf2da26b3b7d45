#pragma once

#include "DemoService/World/StepContext.h"
#include "TunedeckCore/Support/Json/Members.h"

#include <QString>

#include <cstdint>
#include <optional>
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

        static constexpr auto members =
            json::members<&Change::id, &Change::createdAt, &Change::summary, &Change::error>;
        static constexpr auto internalMembers = json::members<&Change::bump, &Change::retried>;
    };
    struct Applied {
        Moment at;
        std::optional<QString> version;
        QString summary;

        static constexpr auto members = json::members<&Applied::at, &Applied::version, &Applied::summary>;
    };
    struct Backup {
        QString version;
        Moment createdAt;
        QString reason;
        std::int64_t sizeBytes = 0;

        static constexpr auto members =
            json::members<&Backup::version, &Backup::createdAt, &Backup::reason, &Backup::sizeBytes>;
    };
    /// The reply to a library request.
    struct Reply {
        bool ok = false;
        std::optional<QString> message;
        std::optional<QString> error;
        std::optional<QString> version;
        int status = 200; ///< of the HTTP response

        static constexpr auto members = json::members<&Reply::ok, &Reply::message, &Reply::error, &Reply::version>;
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

    static constexpr auto members =
        json::members<&Library::dbPath, &Library::rekordboxRunning, &Library::pending, &Library::failed,
                      &Library::lastApplied, &Library::lastError, &Library::currentVersion, &Library::backups>;
    static constexpr auto internalMembers =
        json::members<&Library::lastChange, &Library::failurePercent, &Library::applyAt, &Library::toggleAt>;

private:
    void toggleRekordbox(StepContext& context);
    void writePending(StepContext& context, int percentFailing);
    const Backup& backUp(StepContext& context, Bump bump, const QString& reason);
};

} // namespace tunedeck::demo
