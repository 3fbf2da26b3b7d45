#include "TunedeckCore/Support/Text/Text.h"
#include "TunedeckCore/Support/Text/Time.h"
#include "TunedeckMenu/Panel/Panel.h"

namespace tunedeck {

namespace {

using Library = ServiceStatus::Library;

QString relative(const QString& timestamp, const QDateTime& now) {
    const auto date = parseTimestamp(timestamp);
    return date ? relativeDate(*date, now) : QString();
}

QString headline(const Library& library) {
    const auto count = static_cast<std::int64_t>(library.pending.size());
    if (count == 0) {
        return library.rekordboxRunning ? QStringLiteral("Up to date · Rekordbox is open")
                                        : QStringLiteral("Up to date");
    }
    const QString changes = counted(count, QStringLiteral("change"));
    return library.rekordboxRunning ? changes + QStringLiteral(" waiting — quit Rekordbox to apply")
                                    : QStringLiteral("Applying ") + changes + QStringLiteral("…");
}

QString detail(const Library& library, const QDateTime& now) {
    if (library.pending.empty()) {
        const auto& applied = library.lastApplied;
        return applied ? joined({applied->summary, relative(applied->at, now)}) : QString();
    }
    if (library.lastError) {
        return QStringLiteral("Last try failed: ") + *library.lastError;
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
            .text = QStringLiteral("Couldn't apply “%1”").arg(change.summary),
            .detail = change.error,
            .tone = look::Tone::Warning,
            .id = change.id,
        };
    }
    return banners;
}

/// Why the library can't be acted on now; empty when it can.
QString hindrance(const Library& library, bool busy) {
    if (library.rekordboxRunning) {
        return QStringLiteral("Quit Rekordbox to restore a backup.");
    }
    return busy ? QStringLiteral("Another change to the library is under way.") : QString();
}

BackupRowView backupRow(const Library::Backup& backup, const Library& library, bool busy, const QDateTime& now) {
    BackupRowView row{
        .version = backup.version,
        .date = relative(backup.createdAt, now),
        .badge = backup.version == library.backups.front().version ? QStringLiteral("Latest") : QString(),
        .reason = backup.reason,
        .button = QStringLiteral("Restore"),
        .help = hindrance(library, busy),
        .canRestore = !library.rekordboxRunning && !busy,
    };
    const QString which = QStringLiteral("Restore the library to v") + backup.version;
    row.help = row.help.isEmpty() ? which : which + QStringLiteral(". ") + row.help;
    return row;
}

void describeLibrary(RekordboxView& card, const Library& library, bool busy, const QDateTime& now) {
    card.hasLibrary = true;
    if (library.currentVersion) {
        card.badge = QStringLiteral("Library v") + *library.currentVersion;
        card.badgeHelp = QStringLiteral("Semver of your Rekordbox library's latest backup");
    }
    card.headline = headline(library);
    card.tone = tone(library);
    card.detail = detail(library, now);
    card.failed = failedChanges(library);
    if (!card.failed.isEmpty()) {
        card.retryButton = QStringLiteral("Retry");
        card.dismissButton = QStringLiteral("Dismiss");
    }
    if (!library.pending.empty() && !library.rekordboxRunning) {
        card.applyButton = busy ? QStringLiteral("Applying…") : QStringLiteral("Apply Now");
    }
    card.busy = busy;
    card.busyHelp = busy ? QStringLiteral("Another change to the library is under way.") : QString();
    card.backupsTitle = QStringLiteral("Backups (%1)").arg(library.backups.size());
    if (library.rekordboxRunning) {
        card.backupsNote = QStringLiteral("Quit Rekordbox to restore a backup.");
    }
    for (const Library::Backup& backup : library.backups) {
        card.backups << backupRow(backup, library, busy, now);
    }
}

} // namespace

RekordboxView rekordboxCard(const ServiceState& service, bool libraryBusy, const QDateTime& now) {
    RekordboxView card{.title = QStringLiteral("Rekordbox"), .symbol = QStringLiteral("square.stack.3d.up")};
    const ServiceStatus* status = service.status();
    if (!status) {
        card.xmlText = QStringLiteral("Shown when tunedeck is running.");
        return card;
    }
    if (status->rekordboxDb) {
        describeLibrary(card, *status->rekordboxDb, libraryBusy, now);
    }
    card.xmlText = QStringLiteral("rekordbox xml");
    card.xmlSymbol = QStringLiteral("doc.text");
    card.xmlButton = QStringLiteral("Show");
    card.xmlHelp = status->importXml;
    return card;
}

} // namespace tunedeck
