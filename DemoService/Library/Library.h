#pragma once

#include "DemoService/Library/SemVersion.h"
#include "DemoService/World/Turn.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tunedeck::demo {

/// A change that waits for the library, or (with an error) one that couldn't be made.
struct Change {
    std::string id;
    Moment createdAt;
    std::string summary;
    std::optional<std::string> error;
    /// How much it raises the library's version, a Bump.
    int bump = 0;
    /// It was tried before and succeeds this time.
    bool retried = false;

    static void members(auto& self, auto& archive) {
        archive("id", self.id);
        archive("created_at", self.createdAt);
        archive("summary", self.summary);
        archive("error", self.error);
        archive.own("bump", self.bump);
        archive.own("retried", self.retried);
    }
};

/// What was last written into the library.
struct AppliedChange {
    Moment at;
    std::optional<std::string> version;
    std::string summary;

    static void members(auto& self, auto& archive) {
        archive("at", self.at);
        archive("version", self.version);
        archive("summary", self.summary);
    }
};

/// A copy of the library that can be put back.
struct Backup {
    std::string version;
    Moment createdAt;
    std::string reason;
    std::int64_t sizeBytes = 0;

    static void members(auto& self, auto& archive) {
        archive("version", self.version);
        archive("created_at", self.createdAt);
        archive("reason", self.reason);
        archive("size_bytes", self.sizeBytes);
    }
};

/// The answer to a library action.
struct LibraryReply {
    bool ok = false;
    std::optional<std::string> message;
    std::optional<std::string> error;
    std::optional<std::string> version;
    /// The HTTP status that goes with it.
    int status = 200;

    static void members(auto& self, auto& archive) {
        archive("ok", self.ok);
        archive("message", self.message);
        archive("error", self.error);
        archive("version", self.version);
    }
};

/// The Rekordbox library: changes wait while Rekordbox is open, each write is preceded by a backup.
struct Library {
    std::string dbPath;
    bool rekordboxRunning = false;
    std::vector<Change> pending;
    std::vector<Change> failed;
    std::optional<AppliedChange> lastApplied;
    std::optional<std::string> lastError;
    /// The version of the newest backup.
    std::optional<std::string> currentVersion;
    /// The newest first.
    std::vector<Backup> backups;

    int lastChange = 0;
    /// How many changes of a hundred fail when they are made by themselves.
    int failurePercent = 0;
    /// When the pending changes are made by themselves.
    std::optional<Moment> applyAt;
    /// When the user opens or closes Rekordbox; none when that doesn't happen by itself.
    std::optional<Moment> toggleAt;

    /// A change to make as soon as Rekordbox is closed.
    void enqueue(Turn& turn, std::string summary, Bump bump);
    void advance(Turn& turn);
    std::optional<Moment> nextEvent() const { return earlier(applyAt, toggleAt); }

    LibraryReply restore(Turn& turn, const std::string& version);
    LibraryReply apply(Turn& turn);
    LibraryReply takeBaseline(Turn& turn);
    LibraryReply retry(Turn& turn);
    LibraryReply dismiss(Turn& turn);

    static void members(auto& self, auto& archive) {
        archive("db_path", self.dbPath);
        archive("rekordbox_running", self.rekordboxRunning);
        archive("pending", self.pending);
        archive("failed", self.failed);
        archive("last_applied", self.lastApplied);
        archive("last_error", self.lastError);
        archive("current_version", self.currentVersion);
        archive("backups", self.backups);
        archive.own("last_change", self.lastChange);
        archive.own("failure_percent", self.failurePercent);
        archive.own("apply_at", self.applyAt);
        archive.own("toggle_at", self.toggleAt);
    }

private:
    void toggleRekordbox(Turn& turn);
    void writePending(Turn& turn, int percentFailing);
    const Backup& backUp(Turn& turn, Bump bump, std::string reason);
};

} // namespace tunedeck::demo
