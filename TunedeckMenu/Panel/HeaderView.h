#pragma once

#include "TunedeckMenu/Panel/Look.h"
#include "TunedeckMenu/Panel/ServiceState.h"

#include <QObject>
#include <QString>

namespace tunedeck {

struct HeaderView {
    Q_GADGET
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString status MEMBER status)
    Q_PROPERTY(tunedeck::look::Tone tone MEMBER tone)
public:
    QString title;
    QString status;
    look::Tone tone = look::Tone::Secondary;
    bool operator==(const HeaderView&) const = default;
};

/// The line under the title.
QString statusLine(const ServiceState& service);
HeaderView headerView(const ServiceState& service);

} // namespace tunedeck
