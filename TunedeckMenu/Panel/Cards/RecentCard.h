#pragma once

#include "TunedeckMenu/Panel/Look.h"
#include "TunedeckMenu/Panel/ServiceState.h"

#include <QDateTime>
#include <QList>
#include <QObject>
#include <QString>

namespace tunedeck {

/// One job of the recent card; its identity is `id`.
struct JobRowView {
    Q_GADGET
    Q_PROPERTY(QString id MEMBER id)
    Q_PROPERTY(QString symbol MEMBER symbol)
    Q_PROPERTY(tunedeck::look::Tone tone MEMBER tone)
    Q_PROPERTY(bool pulsing MEMBER pulsing)
    Q_PROPERTY(QString playlist MEMBER playlist)
    Q_PROPERTY(QString trailing MEMBER trailing)
    Q_PROPERTY(QString stateName MEMBER stateName)
    Q_PROPERTY(QString message MEMBER message)
public:
    QString id;
    QString symbol;
    look::Tone tone = look::Tone::Secondary;
    bool pulsing = false;
    QString playlist;
    QString trailing;  ///< "Downloading" or when it was
    QString stateName; ///< the state in words, for a screen reader
    QString message;   ///< the service's account of the job, for the tooltip
    bool operator==(const JobRowView&) const = default;
};

struct RecentView {
    Q_GADGET
    Q_PROPERTY(bool shown MEMBER shown)
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString symbol MEMBER symbol)
public:
    bool shown = false;
    QString title;
    QString symbol;
    QList<JobRowView> jobs;
    bool operator==(const RecentView&) const = default;
};

/// The first three jobs of a running service.
RecentView recentCard(const ServiceState& service, const QDateTime& now);

} // namespace tunedeck
