#pragma once

#include "TunedeckMenu/Panel/Look.h"
#include "TunedeckMenu/Panel/ServiceState.h"
#include "TunedeckMenu/Panel/ViewProperty.h"

#include <QDateTime>
#include <QList>

#include <cstddef>
#include <span>

namespace tunedeck {

struct JobRowView {
    Q_GADGET
    VIEW_PROPERTY(QString, id);
    VIEW_PROPERTY(QString, symbol);
    VIEW_PROPERTY(tunedeck::look::Tone, tone) = look::Tone::Secondary;
    VIEW_PROPERTY(bool, pulsing) = false;
    VIEW_PROPERTY(QString, playlist);
    VIEW_PROPERTY(QString, trailing);  ///< "Downloading" or a relative date
    VIEW_PROPERTY(QString, stateName); ///< for screen readers
    VIEW_PROPERTY(QString, message);   ///< the service's message
    // Of a failed job, which opens and shows its message.
    VIEW_PROPERTY(QString, openName);
    VIEW_PROPERTY(QString, openHelp);
    VIEW_PROPERTY(QString, logButton);
    VIEW_PROPERTY(QString, logName);
    bool operator==(const JobRowView&) const = default;
};

struct RecentView {
    Q_GADGET
    VIEW_PROPERTY(bool, shown) = false;
    VIEW_PROPERTY(QString, title) = u"Recent"_s;
    QList<JobRowView> jobs;
    bool operator==(const RecentView&) const = default;
};

constexpr std::size_t maxLatestJobs = 3;

/// The latest jobs of a running service.
std::span<const ServiceStatus::Job> latestJobs(const ServiceState& service);
/// What a job is doing: "Waiting", "Downloading", "Added" or "Failed".
QString jobStateName(const ServiceStatus::Job& job);
/// The latest jobs.
RecentView recentCard(const ServiceState& service, const QDateTime& now);

} // namespace tunedeck
