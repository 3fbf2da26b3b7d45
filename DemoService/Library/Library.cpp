#include "DemoService/Library/Library.h"

#include "DemoService/World/Catalogue.h"
#include "DemoService/World/Words.h"

#include <algorithm>

namespace tunedeck::demo {

using namespace std::chrono_literals;

namespace {

constexpr auto subject = "library";
constexpr std::size_t keptBackups = 200;
constexpr std::int64_t firstBackupBytes = 48'314'368;

} // namespace

void Library::enqueue(Turn& turn, std::string summary, Bump bump) {
    turn.info(subject, "change waits: " + summary);
    pending.push_back({.id = "change-" + std::to_string(++lastChange),
                       .createdAt = wholeSecond(turn.now),
                       .summary = std::move(summary),
                       .error = {},
                       .bump = static_cast<int>(bump),
                       .retried = false});
    if (!rekordboxRunning) {
        applyAt = turn.in(4s);
    }
}

void Library::advance(Turn& turn) {
    if (isDue(toggleAt, turn.now)) {
        toggleRekordbox(turn);
    }
    if (isDue(applyAt, turn.now)) {
        applyAt.reset();
        if (!rekordboxRunning) {
            writePending(turn, failurePercent);
        }
    }
}

void Library::toggleRekordbox(Turn& turn) {
    rekordboxRunning = !rekordboxRunning;
    turn.info(subject, rekordboxRunning ? "Rekordbox was opened" : "Rekordbox was closed");
    toggleAt = rekordboxRunning ? turn.within(2min, 4min) : turn.within(4min, 9min);
    if (rekordboxRunning) {
        applyAt.reset();
    } else if (!pending.empty()) {
        applyAt = turn.in(3s);
    }
}

void Library::writePending(Turn& turn, int percentFailing) {
    std::vector<Change> made;
    for (Change& change : std::exchange(pending, {})) {
        if (!change.retried && turn.random.chance(percentFailing)) {
            change.error = turn.random.oneOf(catalogue::libraryFailures());
            lastError = change.error;
            turn.error(subject, "couldn't apply " + inQuotes(change.summary) + ": " + *change.error);
            failed.push_back(std::move(change));
        } else {
            made.push_back(std::move(change));
        }
    }
    if (made.empty()) {
        return;
    }
    const auto bump = std::ranges::max(made, {}, &Change::bump).bump;
    const std::string summary =
        made.size() == 1 ? made.front().summary : counted(static_cast<int>(made.size()), "change") + " applied";
    const Backup& backup = backUp(turn, static_cast<Bump>(bump),
                                  made.size() == 1 ? "Before: " + made.front().summary
                                                   : "Before " + counted(static_cast<int>(made.size()), "change"));
    lastApplied = {.at = wholeSecond(turn.now), .version = backup.version, .summary = summary};
    if (failed.empty()) {
        lastError.reset();
    }
    turn.info(subject, "applied, now v" + backup.version + ": " + summary);
}

const Backup& Library::backUp(Turn& turn, Bump bump, std::string reason) {
    const std::int64_t size = backups.empty() ? firstBackupBytes : backups.front().sizeBytes;
    Backup backup{.version = raised(currentVersion.value_or(""), bump),
                  .createdAt = wholeSecond(turn.now),
                  .reason = std::move(reason),
                  .sizeBytes = size + turn.random.between(4, 40) * 4096};
    currentVersion = backup.version;
    turn.info(subject, "backed up as v" + backup.version + ": " + backup.reason);
    backups.insert(backups.begin(), std::move(backup));
    if (backups.size() > keptBackups) {
        backups.resize(keptBackups);
    }
    return backups.front();
}

namespace {

LibraryReply done(std::string message, std::optional<std::string> version) {
    return {.ok = true, .message = std::move(message), .error = {}, .version = std::move(version), .status = 200};
}

LibraryReply refused(Turn& turn, int status, std::string error) {
    turn.warn(subject, "refused: " + error);
    return {.ok = false, .message = {}, .error = std::move(error), .version = {}, .status = status};
}

} // namespace

LibraryReply Library::restore(Turn& turn, const std::string& version) {
    if (rekordboxRunning) {
        return refused(turn, 409, "Rekordbox is open. Quit it to restore a backup.");
    }
    const auto found = std::ranges::find(backups, version, &Backup::version);
    if (found == backups.end()) {
        return refused(turn, 404, "There is no backup of version " + version + ".");
    }
    const Backup& safety = backUp(turn, Bump::major, "Before restoring v" + version);
    lastApplied = {.at = wholeSecond(turn.now), .version = safety.version, .summary = "Restored v" + version};
    turn.info(subject, "restored v" + version);
    return done("Restored your library to v" + version + ".", version);
}

LibraryReply Library::apply(Turn& turn) {
    if (rekordboxRunning) {
        return refused(turn, 409, "Rekordbox is open. Your changes are applied when you quit it.");
    }
    if (pending.empty()) {
        return done("There is nothing to apply.", currentVersion);
    }
    const int count = static_cast<int>(pending.size());
    applyAt.reset();
    writePending(turn, 0);
    return done("Applied " + counted(count, "change") + ".", currentVersion);
}

LibraryReply Library::takeBaseline(Turn& turn) {
    if (rekordboxRunning) {
        return refused(turn, 409, "Rekordbox is open, so your library will be backed up before its first change.");
    }
    if (!backups.empty()) {
        return done("Your library is already backed up as v" + backups.front().version + ".", backups.front().version);
    }
    const Backup& backup = backUp(turn, Bump::minor, "First backup, before any change");
    return done("Backed up your library as v" + backup.version + ".", backup.version);
}

LibraryReply Library::retry(Turn& turn) {
    if (failed.empty()) {
        return done("There is nothing to retry.", {});
    }
    const int count = static_cast<int>(failed.size());
    for (Change& change : std::exchange(failed, {})) {
        change.error.reset();
        change.retried = true;
        pending.push_back(std::move(change));
    }
    lastError.reset();
    if (!rekordboxRunning) {
        applyAt = turn.in(3s);
    }
    turn.info(subject, "trying " + counted(count, "change") + " again");
    return done("Trying " + counted(count, "change") + " again.", {});
}

LibraryReply Library::dismiss(Turn& turn) {
    const int count = static_cast<int>(failed.size());
    failed.clear();
    lastError.reset();
    turn.info(subject, "dismissed " + counted(count, "failed change"));
    return done("Dismissed " + counted(count, "failed change") + ".", {});
}

} // namespace tunedeck::demo
