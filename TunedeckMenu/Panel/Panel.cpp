#include "TunedeckMenu/Panel/Panel.h"

namespace tunedeck {

PanelContent panelContent(const PanelState& state, const QDateTime& now) {
    return {
        .header = headerView(state.service),
        .hiddenIcon = hiddenIconCard(state.menuBarIcon),
        .notRunning = notRunningCard(state.service, state.isRestarting),
        .recent = recentCard(state.service, now),
        .tools = toolsNotice(state.toolbox),
        .assistants = assistantsCard(state, now),
        .downloads = downloadsCard(state.service, state.customFolder, state.home),
        .rekordbox = rekordboxCard(state.service, state.libraryBusy, now),
        .about = aboutCard(state.appVersion, state.update, now),
        .banner = actionBanner(state.actionError, state.actionNote),
        .footer = footer(state.opensAtLogin, state.isRestarting),
    };
}

BannerView actionBanner(const std::optional<QString>& error, const std::optional<QString>& note) {
    if (error) {
        return {.shown = true, .text = *error, .tone = look::Tone::Warning};
    }
    if (note) {
        return {.shown = true, .text = *note, .tone = look::Tone::Good};
    }
    return {};
}

FooterView footer(bool opensAtLogin, bool isRestarting) {
    return {
        .loginTitle = QStringLiteral("Open at Login"),
        .opensAtLogin = opensAtLogin,
        .restarting = isRestarting,
        .restartLabel = QStringLiteral("Restart tunedeck"),
        .logLabel = QStringLiteral("Open Log"),
        .quitLabel = QStringLiteral("Quit Tunedeck"),
    };
}

} // namespace tunedeck
