#include "DemoService/Library/Library.h"

#include "TunedeckCore/Support/Text/Text.h"

#include <QStringList>

#include <algorithm>
#include <utility>

namespace tunedeck::demo {

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

constexpr auto part = "library"_L1;
constexpr std::size_t keptBackups = 200;
constexpr std::int64_t firstBackupBytes = 48'314'368;

QString changes(std::size_t count) {
    return counted(static_cast<std::int64_t>(count), u"change"_s);
}

/// "1.4.2" raised by `bump`; "1.0.0" if `version` doesn't have three parts.
QString raised(const QString& version, Library::Bump bump) {
    auto numbers = version.split(u'.');
    if (numbers.size() != 3) {
        return u"1.0.0"_s;
    }
    const auto index = 2 - qsizetype{bump};
    numbers[index] = QString::number(numbers[index].toInt() + 1);
    std::fill(numbers.begin() + index + 1, numbers.end(), u"0"_s);
    return numbers.join(u'.');
}

Library::Reply succeeded(const QString& message, const std::optional<QString>& version = {}) {
    return {.ok = true, .message = message, .version = version};
}

} // namespace

Library::Reply Library::refused(StepContext& context, int status, const QString& error) {
    context.warn(part, u"refused: "_s + error);
    return {.error = error, .status = status};
}

void Library::enqueue(StepContext& context, const QString& summary, Bump bump) {
    context.info(part, u"change waits: "_s + summary);
    pending.push_back({.id = u"change-"_s + QString::number(++lastChange),
                       .createdAt = context.timestamp(),
                       .summary = summary,
                       .bump = bump});
    if (!rekordboxRunning) {
        applyAt = context.after(4s);
    }
}

void Library::advance(StepContext& context) {
    if (context.isDue(toggleAt)) {
        toggleRekordbox(context);
    }
    if (context.isDue(applyAt)) {
        applyAt.reset();
        if (!rekordboxRunning) {
            writePending(context, failurePercent);
        }
    }
}

void Library::toggleRekordbox(StepContext& context) {
    rekordboxRunning = !rekordboxRunning;
    context.info(part, rekordboxRunning ? u"Rekordbox was opened"_s : u"Rekordbox was closed"_s);
    toggleAt = rekordboxRunning ? context.afterBetween(2min, 4min) : context.afterBetween(4min, 9min);
    if (rekordboxRunning) {
        applyAt.reset();
    } else if (!pending.empty()) {
        applyAt = context.after(3s);
    }
}

void Library::writePending(StepContext& context, int percentFailing) {
    static const QStringList errors{u"The library database is locked by another program."_s,
                                    u"The playlist was changed in Rekordbox in the meantime."_s};
    std::vector<Change> made;
    for (Change& change : std::exchange(pending, {})) {
        if (!change.retried && context.random.chance(percentFailing)) {
            change.error = lastError = context.random.oneOf(errors);
            context.error(part, u"couldn't apply "_s + inQuotes(change.summary) + u": "_s + *change.error);
            failed.push_back(std::move(change));
        } else {
            made.push_back(std::move(change));
        }
    }
    if (made.empty()) {
        return;
    }
    const QString& first = made.front().summary;
    const bool single = made.size() == 1;
    const auto bump = static_cast<Bump>(std::ranges::max(made, {}, &Change::bump).bump);
    const Backup& backup = backUp(context, bump, single ? u"Before: "_s + first : u"Before "_s + changes(made.size()));
    lastApplied = {.at = context.timestamp(),
                   .version = backup.version,
                   .summary = single ? first : changes(made.size()) + u" applied"_s};
    if (failed.empty()) {
        lastError.reset();
    }
    context.info(part, u"applied, now v"_s + backup.version + u": "_s + lastApplied->summary);
}

const Library::Backup& Library::addBackup(Moment createdAt, Bump bump, const QString& reason,
                                          std::int64_t growthBytes) {
    currentVersion = raised(currentVersion.value_or(QString()), bump);
    const auto size = backups.empty() ? firstBackupBytes : backups.front().sizeBytes + growthBytes;
    backups.insert(
        backups.begin(),
        {.version = *currentVersion, .createdAt = wholeSecond(createdAt), .reason = reason, .sizeBytes = size});
    if (backups.size() > keptBackups) {
        backups.resize(keptBackups);
    }
    return backups.front();
}

const Library::Backup& Library::backUp(StepContext& context, Bump bump, const QString& reason) {
    const Backup& backup = addBackup(context.now, bump, reason, context.random.between(4, 40) * 4096);
    context.info(part, u"backed up as v"_s + backup.version + u": "_s + reason);
    return backup;
}

Library::Reply Library::restore(StepContext& context, const QString& version) {
    if (rekordboxRunning) {
        return refused(context, 409, u"Rekordbox is open. Quit it to restore a backup."_s);
    }
    if (std::ranges::find(backups, version, &Backup::version) == backups.end()) {
        return refused(context, 404, u"There is no backup of version "_s + version + u'.');
    }
    const Backup& safety = backUp(context, Major, u"Before restoring v"_s + version);
    lastApplied = {.at = context.timestamp(), .version = safety.version, .summary = u"Restored v"_s + version};
    context.info(part, u"restored v"_s + version);
    return succeeded(u"Restored your library to v"_s + version + u'.', version);
}

Library::Reply Library::apply(StepContext& context) {
    if (rekordboxRunning) {
        return refused(context, 409, u"Rekordbox is open. Your changes are applied when you quit it."_s);
    }
    if (pending.empty()) {
        return succeeded(u"There is nothing to apply."_s, currentVersion);
    }
    const auto count = pending.size();
    applyAt.reset();
    writePending(context, 0);
    return succeeded(u"Applied "_s + changes(count) + u'.', currentVersion);
}

Library::Reply Library::takeBaseline(StepContext& context) {
    if (rekordboxRunning) {
        return refused(context, 409,
                       u"Rekordbox is open, so your library will be backed up before its first change."_s);
    }
    if (!backups.empty()) {
        const QString& newest = backups.front().version;
        return succeeded(u"Your library is already backed up as v"_s + newest + u'.', newest);
    }
    const Backup& backup = backUp(context, Minor, u"First backup, before any change"_s);
    return succeeded(u"Backed up your library as v"_s + backup.version + u'.', backup.version);
}

Library::Reply Library::retry(StepContext& context) {
    if (failed.empty()) {
        return succeeded(u"There is nothing to retry."_s);
    }
    const QString retried = changes(failed.size()) + u" again"_s;
    for (Change& change : std::exchange(failed, {})) {
        change.error.reset();
        change.retried = true;
        pending.push_back(std::move(change));
    }
    lastError.reset();
    if (!rekordboxRunning) {
        applyAt = context.after(3s);
    }
    context.info(part, u"trying "_s + retried);
    return succeeded(u"Trying "_s + retried + u'.');
}

Library::Reply Library::dismiss(StepContext& context) {
    const QString dismissed = counted(static_cast<std::int64_t>(failed.size()), u"failed change"_s);
    failed.clear();
    lastError.reset();
    context.info(part, u"dismissed "_s + dismissed);
    return succeeded(u"Dismissed "_s + dismissed + u'.');
}

} // namespace tunedeck::demo
