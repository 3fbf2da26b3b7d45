#include "TunedeckMenu/Panel/Cards/RekordboxCard.h"

#include "TunedeckCore/Support/Text/Text.h"
#include "TunedeckCore/Support/Text/Time.h"

using namespace Qt::StringLiterals;

namespace tunedeck {

namespace {

using Library = ServiceStatus::Library;

const auto closeRekordbox = u"Quit Rekordbox to restore a backup."_s;
const auto otherChange = u"Another change to the library is under way."_s;

QString relative(const QString& timestamp, const QDateTime& now) {
    const auto date = parseTimestamp(timestamp);
    return date ? relativeDate(*date, now) : QString();
}

QString headline(const Library& library) {
    const auto count = static_cast<std::int64_t>(library.pending.size());
    if (count == 0) {
        return library.rekordboxRunning ? u"Up to date · Rekordbox is open"_s : u"Up to date"_s;
    }
    const QString changes = counted(count, u"change"_s);
    return library.rekordboxRunning ? changes + u" waiting — quit Rekordbox to apply"_s
                                    : u"Applying "_s + changes + u"…"_s;
}

QString detail(const Library& library, const QDateTime& now) {
    if (library.pending.empty()) {
        const auto& applied = library.lastApplied;
        return applied ? joined({applied->summary, relative(applied->at, now)}) : QString();
    }
    if (library.lastError) {
        return u"Last try failed: "_s + *library.lastError;
    }
    QStringList summaries;
    for (const Library::Pending& change : library.pending) {
        summaries << change.summary;
    }
    return joined(summaries);
}

look::Tone tone(const Library& library) {
    if (library.pending.empty()) {
        return look::Tone::Good;
    }
    return library.rekordboxRunning || library.lastError ? look::Tone::Warning : look::Tone::Accent;
}

QList<BannerView> failedChanges(const Library& library) {
    QList<BannerView> banners;
    for (const Library::Failed& change : library.failed) {
        banners << BannerView{
            .shown = true,
            .text = u"Couldn't apply “%1”"_s.arg(change.summary),
            .detail = change.error,
            .tone = look::Tone::Warning,
            .id = change.id,
        };
    }
    return banners;
}

BackupRowView backupRow(const Library::Backup& backup, const Library& library, bool busy, const QDateTime& now) {
    BackupRowView row{
        .version = backup.version,
        .date = relative(backup.createdAt, now),
        .badge = backup.version == library.backups.front().version ? u"Latest"_s : QString(),
        .reason = backup.reason,
        .help = u"Restore the library to v"_s + backup.version,
        .canRestore = !library.rekordboxRunning && !busy,
    };
    if (!row.canRestore) {
        row.help += u". "_s + (library.rekordboxRunning ? closeRekordbox : otherChange);
    }
    return row;
}

void describeLibrary(RekordboxView& card, const Library& library, bool busy, const QDateTime& now) {
    card.hasLibrary = true;
    if (library.currentVersion) {
        card.badge = u"Library v"_s + *library.currentVersion;
        card.badgeHelp = u"Semver of your Rekordbox library's latest backup"_s;
    }
    card.headline = headline(library);
    card.tone = tone(library);
    card.detail = detail(library, now);
    card.failed = failedChanges(library);
    if (!card.failed.isEmpty()) {
        card.retryButton = u"Retry"_s;
        card.dismissButton = u"Dismiss"_s;
    }
    if (!library.pending.empty() && !library.rekordboxRunning) {
        card.applyButton = busy ? u"Applying…"_s : u"Apply Now"_s;
    }
    card.busy = busy;
    card.busyHelp = busy ? otherChange : QString();
    card.backupsTitle = u"Backups (%1)"_s.arg(library.backups.size());
    if (library.rekordboxRunning) {
        card.backupsNote = closeRekordbox;
    }
    for (const Library::Backup& backup : library.backups) {
        card.backups << backupRow(backup, library, busy, now);
    }
}

} // namespace

RekordboxView rekordboxCard(const ServiceState& service, bool libraryBusy, const QDateTime& now) {
    RekordboxView card;
    const ServiceStatus* status = service.status();
    if (!status) {
        card.xmlText = u"Shown when tunedeck is running."_s;
        return card;
    }
    if (status->rekordboxDb) {
        describeLibrary(card, *status->rekordboxDb, libraryBusy, now);
    }
    card.xmlText = u"rekordbox xml"_s;
    card.xmlButton = u"Show"_s;
    card.xmlHelp = status->importXml;
    return card;
}

} // namespace tunedeck
