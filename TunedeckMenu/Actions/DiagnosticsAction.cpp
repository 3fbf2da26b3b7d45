#include "TunedeckMenu/Actions/DiagnosticsAction.h"

#include "TunedeckCore/Diagnostics.h"
#include "TunedeckCore/Locations/UserPaths.h"

namespace tunedeck {

namespace {

constexpr int mostLogLines = 50;
constexpr std::int64_t mostLogBytes = 512 * 1024;

QString chipName(const QString& architecture) {
    return architecture == QStringLiteral("arm64") ? QStringLiteral("Apple silicon")
                                                   : QStringLiteral("Intel (%1)").arg(architecture);
}

} // namespace

QString diagnosticsReport(const PanelState& state, const SystemFacts& facts, const QDateTime& now) {
    const auto* status = state.service.status();
    Diagnostics::Input input{
        .appVersion = state.appVersion,
        .serviceVersion = status != nullptr ? std::optional(status->version) : std::nullopt,
        .macOS = facts.systemVersionText,
        .chip = chipName(facts.architecture),
        .status = status != nullptr ? std::optional(*status) : std::nullopt,
        .toolbox = state.toolbox,
        .links = state.links,
        .logLines = Diagnostics::warningLines(UserPaths(facts.home).serviceLog(), mostLogLines, mostLogBytes),
    };
    return Diagnostics::report(input, now);
}

void copyDiagnostics(MenuModel& model, const MenuServices& services) {
    services.pasteboard.setText(diagnosticsReport(model.state(), services.facts, services.clock.now()));
    model.showNote(QStringLiteral("Diagnostics copied, with secrets masked. Paste them into your message to support."));
}

} // namespace tunedeck
