#include "TunedeckMenu/Actions/DiagnosticsReport.h"

#include "TunedeckCore/Diagnostics.h"
#include "TunedeckCore/Locations/UserPaths.h"

namespace tunedeck {

using namespace Qt::StringLiterals;

namespace {

constexpr int maxLogLines = 50;
constexpr std::int64_t maxLogBytes = 512 * 1024;

QString chipName(const QString& architecture) {
    return architecture == u"arm64"_s ? u"Apple silicon"_s : u"Intel (%1)"_s.arg(architecture);
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
        .logLines = Diagnostics::warningLines(UserPaths(facts.home).serviceLog(), maxLogLines, maxLogBytes),
    };
    return Diagnostics::report(input, now);
}

} // namespace tunedeck
