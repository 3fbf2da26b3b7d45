#include "TunedeckCore/Locations/Paths.h"
#include "TunedeckMenu/Panel/Panel.h"

namespace tunedeck {

namespace {

BannerView folderWarning(const ServiceStatus* status, const std::optional<QString>& customFolder, const QString& home) {
    BannerView banner{.tone = look::Tone::Warning};
    if (status && !status->downloadDirWritable) {
        banner.shown = true;
        banner.text = status->downloadDirError.value_or(QStringLiteral("tunedeck can't write to this folder."));
        return banner;
    }
    const std::optional<QString> folder = status ? std::optional(status->downloadDir) : customFolder;
    if (const auto place = folder ? protectedLocation(*folder, home) : std::nullopt) {
        banner.shown = true;
        banner.text =
            QStringLiteral("macOS may block the background service from saving to %1. If downloads fail, pick "
                           "a folder in ~/Music.")
                .arg(*place);
    }
    return banner;
}

} // namespace

DownloadsView downloadsCard(const ServiceState& service, const std::optional<QString>& customFolder,
                            const QString& home) {
    const ServiceStatus* status = service.status();
    const bool custom = status && status->downloadDirSource == u"settings";
    DownloadsView card{
        .title = QStringLiteral("Downloads"),
        .symbol = QStringLiteral("arrow.down.circle"),
        .badge = custom ? QStringLiteral("Custom") : QStringLiteral("Default"),
        .hasFolder = status != nullptr,
        .warning = folderWarning(status, customFolder, home),
        .changeButton = QStringLiteral("Change Folder…"),
        .changeHelp =
            QStringLiteral("New downloads go to the folder you pick. Songs already saved stay where they are."),
        .defaultButton = custom ? QStringLiteral("Use Default") : QString(),
        .note = QStringLiteral("Applies from the next download."),
    };
    if (status) {
        card.folderPath = status->downloadDir;
        card.folderTitle = QStringLiteral("Show in Finder");
        card.folderSubtitle = abbreviatingHome(status->downloadDir, home);
        card.folderHelp = status->downloadDir;
    } else {
        card.stoppedText = QStringLiteral("Start tunedeck to see where songs are saved.");
    }
    return card;
}

} // namespace tunedeck
