#pragma once

#include "TunedeckMenu/Panel/Look.h"
#include "TunedeckMenu/Panel/ViewProperty.h"

#include <optional>

namespace tunedeck {

/// A line about a problem or a success.
struct BannerView {
    Q_GADGET
    VIEW_PROPERTY(bool, shown) = false;
    VIEW_PROPERTY(QString, text);
    VIEW_PROPERTY(QString, detail);
    VIEW_PROPERTY(tunedeck::look::Tone, tone) = look::Tone::Warning; ///< Warning or Good
    VIEW_PROPERTY(QString, id);                                      ///< row key in a list
    bool operator==(const BannerView&) const = default;
};

/// The result of the last action; hidden without one. The error takes precedence.
BannerView actionBanner(const std::optional<QString>& error, const std::optional<QString>& note);

} // namespace tunedeck
