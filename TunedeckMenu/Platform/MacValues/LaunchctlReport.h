#pragma once

#include "TunedeckMenu/Platform/SystemProbe.h"

#include <QByteArray>
#include <QtGlobal>

#include <optional>

namespace tunedeck {

/// What "launchctl print TARGET" reports about a service. Its output is for people and may change: what isn't found
/// keeps its default.
struct LaunchctlReport {
    SupervisedService service; ///< without the time of its start
    std::optional<qint64> process = {};

    static LaunchctlReport parse(const QByteArray& output);
};

} // namespace tunedeck
