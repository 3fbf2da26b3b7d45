#pragma once

#include "TunedeckMenu/Panel/Look.h"

#include <QObject>
#include <QString>

#include <optional>

namespace tunedeck {

/// A line with a coloured dot or symbol that needs attention or tells of success.
struct BannerView {
    Q_GADGET
    Q_PROPERTY(bool shown MEMBER shown)
    Q_PROPERTY(QString text MEMBER text)
    Q_PROPERTY(QString detail MEMBER detail)
    Q_PROPERTY(tunedeck::look::Tone tone MEMBER tone)
    Q_PROPERTY(QString id MEMBER id)
public:
    bool shown = false;
    QString text;
    QString detail;
    look::Tone tone = look::Tone::Warning; ///< Warning or Good
    QString id;                            ///< identity among its equals
    bool operator==(const BannerView&) const = default;
};

/// The one line about the last action; not shown when there is none.
BannerView actionBanner(const std::optional<QString>& error, const std::optional<QString>& note);

} // namespace tunedeck
