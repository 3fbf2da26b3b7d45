#pragma once

#include "TunedeckMenu/Panel/Look.h"
#include "TunedeckMenu/Panel/ServiceState.h"
#include "TunedeckMenu/Panel/ViewProperty.h"

#include <QDateTime>
#include <QList>

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
    VIEW_PROPERTY(QString, message);   ///< the service's message, for the tooltip
    bool operator==(const JobRowView&) const = default;
};

struct RecentView {
    Q_GADGET
    VIEW_PROPERTY(bool, shown) = false;
    VIEW_PROPERTY(QString, title) = u"Recent"_s;
    QList<JobRowView> jobs;
    bool operator==(const RecentView&) const = default;
};

/// The three latest jobs of a running service.
RecentView recentCard(const ServiceState& service, const QDateTime& now);

} // namespace tunedeck
