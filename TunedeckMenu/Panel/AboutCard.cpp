#include "TunedeckCore/Support/Text/Text.h"
#include "TunedeckMenu/Panel/Panel.h"

namespace tunedeck {

namespace {

/// Fills in what an update state says; one overload for each.
struct UpdateWords {
    AboutView& card;
    const QDateTime& now;

    void operator()(const UpdateState::Idle&) const {
        card.updateText = QStringLiteral("Tunedeck checks for updates once a day.");
    }
    void operator()(const UpdateState::Checking&) const {
        card.updateText = QStringLiteral("Checking for updates…");
        card.busy = true;
    }
    void operator()(const UpdateState::UpToDate& state) const {
        card.updateText = QStringLiteral("Up to date · checked ") + relativeDate(state.at, now);
    }
    void operator()(const UpdateState::Available& state) const {
        card.updateText = QStringLiteral("Tunedeck %1 is available.").arg(state.release.version);
        card.updateDetail = state.release.notes.value_or(QString());
        card.updateButton = QStringLiteral("Update to ") + state.release.version;
    }
    void operator()(const UpdateState::Installing& state) const {
        card.updateText = QStringLiteral("Installing the update… Tunedeck restarts when it's done.");
        card.busy = true;
        card.progress = state.progress.value_or(-1);
    }
    void operator()(const UpdateState::Failed& state) const {
        card.updateText = QStringLiteral("Couldn't check for updates: ") + state.message;
    }
};

} // namespace

AboutView aboutCard(const QString& appVersion, const UpdateState& update, const QDateTime& now) {
    AboutView card{
        .title = QStringLiteral("About"),
        .symbol = QStringLiteral("info.circle"),
        .version = QStringLiteral("Version ") + appVersion,
        .checkButton = QStringLiteral("Check for Updates"),
        .diagnosticsButton = QStringLiteral("Copy Diagnostics"),
        .diagnosticsHelp =
            QStringLiteral("Versions, tool states and recent errors, with every secret masked, for support"),
    };
    std::visit(UpdateWords{card, now}, update.value);
    card.busyHelp = card.busy ? card.updateText : QString();
    return card;
}

} // namespace tunedeck
