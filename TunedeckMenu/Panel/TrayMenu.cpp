#include "TunedeckMenu/Panel/TrayMenu.h"

#include "TunedeckCore/Support/Text/Text.h"
#include "TunedeckMenu/Panel/Cards/DownloadsCard.h"
#include "TunedeckMenu/Panel/Cards/NotRunningCard.h"
#include "TunedeckMenu/Panel/Cards/RecentCard.h"
#include "TunedeckMenu/Panel/Cards/RekordboxCard.h"
#include "TunedeckMenu/Panel/Cards/ToolsNotice.h"
#include "TunedeckMenu/Panel/HeaderView.h"
#include "TunedeckMenu/Panel/PanelState.h"
#include "TunedeckMenu/Panel/ShownText.h"

using namespace Qt::StringLiterals;

namespace tunedeck {

namespace {

using Kind = TrayMenuEntry::Kind;

/// A longer text would make the menu too wide.
constexpr int maxCharacters = 60;

TrayMenuEntry disabledText(const QString& text) {
    return {.text = oneLine(text, maxCharacters), .enabled = false};
}

TrayMenuEntry startEntry(const ServiceState& service, bool isStarting) {
    const auto card = notRunningCard(service, isStarting);
    return {Kind::StartService, card.shown ? card.button : QString(), !card.starting};
}

TrayMenuEntry repairEntry(const ServiceState& service, const std::optional<ToolboxReport>& toolbox) {
    const auto card = service.isRunning() ? toolsNotice(toolbox) : ToolsNoticeView();
    return {Kind::RepairTools, card.button + card.installingText, card.installingText.isEmpty()};
}

TrayMenuEntry applyEntry(const ServiceState& service, bool isBusy) {
    const auto* status = service.status();
    const bool hasLibrary = status != nullptr && status->rekordboxDb;
    return {Kind::ApplyChanges, hasLibrary ? applyButton(*status->rekordboxDb, isBusy) : QString(), !isBusy};
}

} // namespace

TrayMenu trayMenu(const ServiceState& service, const PanelState& panel) {
    TrayMenu menu{
        disabledText(statusLine(service)),
        disabledText(folderFault(service).value_or(QString())),
        disabledText(panel.actionError.value_or(QString())),
        {Kind::Open, u"Open Tunedeck"_s},
        startEntry(service, panel.isRestarting),
        repairEntry(service, panel.toolbox),
        applyEntry(service, panel.libraryBusy),
        {Kind::Separator},
    };
    const auto jobs = latestJobs(service);
    for (std::size_t i = 0; i < maxLatestJobs; ++i) {
        const auto text = [](const ServiceStatus::Job& job) {
            return joined({oneLine(job.playlist, maxCharacters), jobStateName(job)});
        };
        // Enabled and not only a text, because greyed text is hard to read and left out by some screen readers.
        menu << TrayMenuEntry{Kind::Open, i < jobs.size() ? text(jobs[i]) : QString()};
    }
    menu << TrayMenuEntry{.kind = Kind::Separator, .enabled = !jobs.empty()};
    menu << TrayMenuEntry{Kind::OpenLog, u"Open Log"_s} << TrayMenuEntry{Kind::Quit, u"Quit Tunedeck"_s};
    return menu;
}

QString trayToolTip(const ServiceState& service) {
    return u"Tunedeck: "_s + joined({statusLine(service), oneLine(folderFault(service).value_or(QString()))});
}

} // namespace tunedeck
