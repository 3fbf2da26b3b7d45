#include "TunedeckMenu/Panel/Cards/RekordboxCard.h"

#include "TunedeckCore/Support/Text/Text.h"
#include "TunedeckCore/Support/Text/Time.h"
#include "TunedeckMenu/Panel/ShownText.h"

#include <ranges>

using namespace Qt::StringLiterals;

namespace tunedeck {

namespace {

using Library = ServiceStatus::Library;

/// More don't fit into the lines of the card.
constexpr int maxSummaries = 100;

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
        return applied ? joined({oneLine(applied->summary), relative(applied->at, now)}) : QString();
    }
    if (library.lastError) {
        return u"Last try failed: "_s + paragraph(*library.lastError);
    }
    QStringList summaries;
    for (const Library::Pending& change : library.pending | std::views::take(maxSummaries)) {
        summaries << oneLine(change.summary);
    }
    return paragraph(joined(summaries));
}

look::Tone tone(const Library& library) {
    if (library.pending.empty()) {
        return library.failed.empty() ? look::Tone::Good : look::Tone::Warning;
    }
    return library.rekordboxRunning || library.lastError ? look::Tone::Warning : look::Tone::Accent;
}

BannerView failedChange(const Library::Failed& change) {
    return {
        .shown = true,
        .text = u"Couldn't apply “%1”"_s.arg(oneLine(change.summary)),
        .detail = paragraph(change.error),
        .tone = look::Tone::Warning,
        .id = change.id,
    };
}

BackupRowView backupRow(const Library::Backup& backup, const Library& library, bool busy, const QDateTime& now) {
    BackupRowView row{
        .id = backup.version,
        .version = oneLine(backup.version),
        .date = relative(backup.createdAt, now),
        .badge = backup.version == library.backups.front().version ? u"Latest"_s : QString(),
        .reason = oneLine(backup.reason),
        .help = u"Restore the library to v"_s + oneLine(backup.version),
        .canRestore = !library.rekordboxRunning && !busy,
    };
    if (!row.canRestore) {
        row.help += u". "_s + (library.rekordboxRunning ? closeRekordbox : otherChange);
    }
    return row;
}

void describeLibrary(RekordboxView& card, const Library& library, bool busy, const QDateTime& now,
                     const RowRanges& ranges) {
    card.hasLibrary = true;
    if (library.currentVersion) {
        card.badge = u"Library v"_s + oneLine(*library.currentVersion);
        card.badgeHelp = u"Semver of your Rekordbox library's latest backup"_s;
    }
    card.headline = headline(library);
    card.tone = tone(library);
    card.detail = detail(library, now);
    card.failed = RowSlice<BannerView>::of(library.failed, ranges.failedChanges, failedChange);
    card.failedShown = !library.failed.empty();
    if (card.failedShown) {
        card.failedNote =
            counted(static_cast<std::int64_t>(library.failed.size()), u"change"_s) + u" couldn't be applied"_s;
        card.retryButton = u"Retry"_s;
        card.dismissButton = u"Dismiss"_s;
    }
    card.applyButton = applyButton(library, busy);
    card.busy = busy;
    card.busyHelp = busy ? otherChange : QString();
    card.backupsTitle = u"Backups (%1)"_s.arg(library.backups.size());
    if (library.rekordboxRunning) {
        card.backupsNote = closeRekordbox;
    }
    const auto rowOf = [&](const Library::Backup& backup) { return backupRow(backup, library, busy, now); };
    card.backups = RowSlice<BackupRowView>::of(library.backups, ranges.backups, rowOf);
}

} // namespace

QString applyButton(const Library& library, bool isBusy) {
    if (library.pending.empty() || library.rekordboxRunning) {
        return {};
    }
    return isBusy ? u"Applying…"_s : u"Apply Now"_s;
}

RekordboxView rekordboxCard(const ServiceState& service, bool libraryBusy, const QDateTime& now,
                            const RowRanges& ranges) {
    RekordboxView card;
    const ServiceStatus* status = service.status();
    if (!status) {
        card.xmlText = u"Shown when tunedeck is running."_s;
        return card;
    }
    if (status->rekordboxDb) {
        describeLibrary(card, *status->rekordboxDb, libraryBusy, now, ranges);
    }
    card.xmlText = u"rekordbox xml"_s;
    card.xmlButton = u"Show"_s;
    card.xmlHelp = paragraph(status->importXml);
    return card;
}

} // namespace tunedeck
