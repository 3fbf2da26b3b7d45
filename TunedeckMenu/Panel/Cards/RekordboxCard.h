#pragma once

#include "TunedeckMenu/Panel/Banner.h"
#include "TunedeckMenu/Panel/Look.h"
#include "TunedeckMenu/Panel/RowSlice.h"
#include "TunedeckMenu/Panel/ServiceState.h"
#include "TunedeckMenu/Panel/ViewProperty.h"

#include <QDateTime>

namespace tunedeck {

struct BackupRowView {
    Q_GADGET
    VIEW_PROPERTY(QString, id); ///< the whole version, which names the backup
    VIEW_PROPERTY(QString, version);
    VIEW_PROPERTY(QString, date);
    VIEW_PROPERTY(QString, badge); ///< "Latest" or empty
    VIEW_PROPERTY(QString, reason);
    VIEW_PROPERTY(QString, button) = u"Restore"_s;
    VIEW_PROPERTY(QString, help); ///< what the button restores, or why it is disabled
    VIEW_PROPERTY(bool, canRestore) = false;
    bool operator==(const BackupRowView&) const = default;
};

struct RekordboxView {
    Q_GADGET
    VIEW_PROPERTY(QString, title) = u"Rekordbox"_s;
    VIEW_PROPERTY(QString, badge); ///< empty when no version is known
    VIEW_PROPERTY(QString, badgeHelp);
    VIEW_PROPERTY(bool, hasLibrary) = false; ///< false: everything but the xml row is hidden
    VIEW_PROPERTY(QString, headline);
    VIEW_PROPERTY(tunedeck::look::Tone, tone) = look::Tone::Secondary;
    VIEW_PROPERTY(QString, detail); ///< may be empty
    RowSlice<BannerView> failed;
    VIEW_PROPERTY(bool, failedShown) = false;
    VIEW_PROPERTY(QString, failedNote);  ///< for screen readers, with the headline
    VIEW_PROPERTY(QString, retryButton); ///< empty unless a change failed
    VIEW_PROPERTY(QString, dismissButton);
    VIEW_PROPERTY(QString, applyButton); ///< empty when there is nothing to apply
    VIEW_PROPERTY(bool, busy) = false;
    VIEW_PROPERTY(QString, busyHelp); ///< why the buttons are disabled; empty when they aren't
    VIEW_PROPERTY(QString, backupsTitle);
    VIEW_PROPERTY(QString, backupsNote); ///< why backups can't be restored; empty when they can be
    RowSlice<BackupRowView> backups;
    VIEW_PROPERTY(QString, xmlText);
    VIEW_PROPERTY(QString, xmlButton); ///< empty unless the service is running
    VIEW_PROPERTY(QString, xmlHelp);
    bool operator==(const RekordboxView&) const = default;
};

/// The label of the button that applies waiting changes; empty when there is nothing to apply.
QString applyButton(const ServiceStatus::Library& library, bool isBusy);

RekordboxView rekordboxCard(const ServiceState& service, bool libraryBusy, const QDateTime& now,
                            const RowRanges& ranges = {});

} // namespace tunedeck
