#pragma once

#include "TunedeckMenu/Panel/Look.h"
#include "TunedeckMenu/Panel/ServiceState.h"
#include "TunedeckMenu/Panel/ViewProperty.h"

namespace tunedeck {

struct HeaderView {
    Q_GADGET
    VIEW_PROPERTY(QString, title) = u"Tunedeck"_s;
    VIEW_PROPERTY(QString, status);
    VIEW_PROPERTY(tunedeck::look::Tone, tone) = look::Tone::Secondary;
    bool operator==(const HeaderView&) const = default;
};

/// The line below the title.
QString statusLine(const ServiceState& service);
HeaderView headerView(const ServiceState& service);

} // namespace tunedeck
