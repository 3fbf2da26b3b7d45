#pragma once

#include "TunedeckMenu/Panel/Banner.h"
#include "TunedeckMenu/Panel/ServiceState.h"
#include "TunedeckMenu/Panel/ViewProperty.h"

#include <optional>

namespace tunedeck {

struct DownloadsView {
    Q_GADGET
    VIEW_PROPERTY(QString, title) = u"Downloads"_s;
    VIEW_PROPERTY(QString, badge);
    VIEW_PROPERTY(QString, folderPath); ///< absolute; empty while the service isn't running
    VIEW_PROPERTY(QString, folderTitle);
    VIEW_PROPERTY(QString, folderSubtitle);
    VIEW_PROPERTY(QString, stoppedText); ///< shown instead of the folder while the service isn't running
    VIEW_PROPERTY(tunedeck::BannerView, warning);
    VIEW_PROPERTY(QString, changeButton) = u"Change Folder…"_s;
    VIEW_PROPERTY(QString, changeHelp) = u"New downloads go to the folder you pick. Songs already "
                                         "saved stay where they are."_s;
    VIEW_PROPERTY(QString, defaultButton); ///< empty when the folder is the default one
    VIEW_PROPERTY(QString, note) = u"Applies from the next download."_s;
    bool operator==(const DownloadsView&) const = default;
};

/// Why the service can't save songs; nothing if it can or isn't running.
std::optional<QString> folderFault(const ServiceState& service);

/// `customFolder`: the download folder in the settings file.
DownloadsView downloadsCard(const ServiceState& service, const std::optional<QString>& customFolder,
                            const QString& home);

} // namespace tunedeck
