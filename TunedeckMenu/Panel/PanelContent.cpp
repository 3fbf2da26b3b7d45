#include "TunedeckMenu/Panel/PanelContent.h"

#include "TunedeckMenu/Panel/PanelState.h"

namespace tunedeck {

PanelContent panelContent(const PanelState& state, const QDateTime& now, const RowRanges& ranges) {
    return {
        .header = headerView(state.service),
        .hiddenIcon = hiddenIconCard(state.menuBarIcon, state.missingTray),
        .notRunning = notRunningCard(state.service, state.isRestarting),
        .recent = recentCard(state.service, now),
        .tools = toolsNotice(state.toolbox),
        .assistants = assistantsCard(state, now, ranges.links),
        .downloads = downloadsCard(state.service, state.customFolder, state.home),
        .rekordbox = rekordboxCard(state.service, state.libraryBusy, now, ranges),
        .about = aboutCard(state.appVersion, state.update, now),
        .banner = actionBanner(state.actionError, state.actionNote),
        .footer = {.opensAtLogin = state.opensAtLogin, .restarting = state.isRestarting},
    };
}

} // namespace tunedeck
