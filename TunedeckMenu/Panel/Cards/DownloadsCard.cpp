#include "TunedeckMenu/Panel/Cards/DownloadsCard.h"

#include "TunedeckCore/Locations/Paths.h"
#include "TunedeckMenu/Panel/ShownText.h"

using namespace Qt::StringLiterals;

namespace tunedeck {

namespace {

BannerView folderWarning(const ServiceState& service, const std::optional<QString>& customFolder, const QString& home) {
    BannerView banner{.tone = look::Tone::Warning};
    if (const auto fault = folderFault(service)) {
        banner.shown = true;
        banner.text = paragraph(*fault);
        return banner;
    }
    const auto* status = service.status();
    const std::optional<QString> folder = status ? std::optional(status->downloadDir) : customFolder;
    if (const auto place = folder ? protectedLocation(*folder, home) : std::nullopt) {
        banner.shown = true;
        banner.text = u"macOS may block the background service from saving to %1. If downloads fail, pick "
                      "a folder in ~/Music."_s.arg(*place);
    }
    return banner;
}

} // namespace

std::optional<QString> folderFault(const ServiceState& service) {
    const auto* status = service.status();
    if (status == nullptr || status->downloadDirWritable) {
        return std::nullopt;
    }
    return status->downloadDirError.value_or(u"tunedeck can't write to this folder."_s);
}

DownloadsView downloadsCard(const ServiceState& service, const std::optional<QString>& customFolder,
                            const QString& home) {
    const ServiceStatus* status = service.status();
    const bool custom = status && status->downloadDirSource == u"settings";
    DownloadsView card{
        .badge = custom ? u"Custom"_s : u"Default"_s,
        .warning = folderWarning(service, customFolder, home),
        .defaultButton = custom ? u"Use Default"_s : QString(),
    };
    if (status) {
        card.folderPath = paragraph(status->downloadDir); // also the path of the icon
        card.folderTitle = u"Show in Finder"_s;
        card.folderSubtitle = oneLine(abbreviatingHome(status->downloadDir, home));
    } else {
        card.stoppedText = u"Start tunedeck to see where songs are saved."_s;
    }
    return card;
}

} // namespace tunedeck
