#pragma once

#include "TunedeckMenu/Panel/Banner.h"
#include "TunedeckMenu/Panel/Look.h"
#include "TunedeckMenu/Panel/ServiceState.h"

#include <QDateTime>
#include <QList>
#include <QObject>
#include <QString>

namespace tunedeck {

/// One backup; its identity is `version`.
struct BackupRowView {
    Q_GADGET
    Q_PROPERTY(QString version MEMBER version)
    Q_PROPERTY(QString date MEMBER date)
    Q_PROPERTY(QString badge MEMBER badge)
    Q_PROPERTY(QString reason MEMBER reason)
    Q_PROPERTY(QString button MEMBER button)
    Q_PROPERTY(QString help MEMBER help)
    Q_PROPERTY(bool canRestore MEMBER canRestore)
public:
    QString version;
    QString date;
    QString badge; ///< "Latest" or empty
    QString reason;
    QString button;
    QString help; ///< which backup the button restores, or why it can't be pressed
    bool canRestore = false;
    bool operator==(const BackupRowView&) const = default;
};

struct RekordboxView {
    Q_GADGET
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString symbol MEMBER symbol)
    Q_PROPERTY(QString badge MEMBER badge)
    Q_PROPERTY(QString badgeHelp MEMBER badgeHelp)
    Q_PROPERTY(bool hasLibrary MEMBER hasLibrary)
    Q_PROPERTY(QString headline MEMBER headline)
    Q_PROPERTY(tunedeck::look::Tone tone MEMBER tone)
    Q_PROPERTY(QString detail MEMBER detail)
    Q_PROPERTY(QString retryButton MEMBER retryButton)
    Q_PROPERTY(QString dismissButton MEMBER dismissButton)
    Q_PROPERTY(QString applyButton MEMBER applyButton)
    Q_PROPERTY(bool busy MEMBER busy)
    Q_PROPERTY(QString busyHelp MEMBER busyHelp)
    Q_PROPERTY(QString backupsTitle MEMBER backupsTitle)
    Q_PROPERTY(QString backupsNote MEMBER backupsNote)
    Q_PROPERTY(QString xmlText MEMBER xmlText)
    Q_PROPERTY(QString xmlSymbol MEMBER xmlSymbol)
    Q_PROPERTY(QString xmlButton MEMBER xmlButton)
    Q_PROPERTY(QString xmlHelp MEMBER xmlHelp)
public:
    QString title;
    QString symbol;
    QString badge; ///< empty when no version is known
    QString badgeHelp;
    bool hasLibrary = false; ///< the items down to the backups are left out without it
    QString headline;
    look::Tone tone = look::Tone::Secondary;
    QString detail;           ///< empty when there is none
    QList<BannerView> failed; ///< one a failed change
    QString retryButton;      ///< empty when no change failed
    QString dismissButton;
    QString applyButton; ///< empty when there is nothing to apply
    bool busy = false;
    QString busyHelp; ///< why the buttons can't be pressed; empty when they can
    QString backupsTitle;
    QString backupsNote; ///< why backups can't be restored; empty when they can
    QList<BackupRowView> backups;
    QString xmlText;
    QString xmlSymbol;
    QString xmlButton; ///< empty when the service isn't running
    QString xmlHelp;
    bool operator==(const RekordboxView&) const = default;
};

RekordboxView rekordboxCard(const ServiceState& service, bool libraryBusy, const QDateTime& now);

} // namespace tunedeck
