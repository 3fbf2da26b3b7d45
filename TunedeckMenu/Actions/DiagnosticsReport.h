#pragma once

#include "TunedeckMenu/Panel/PanelState.h"
#include "TunedeckMenu/Platform/SystemFacts.h"

#include <QDateTime>
#include <QString>

namespace tunedeck {

/// The report for support, from the panel's state and the service's log, with secrets masked.
QString diagnosticsReport(const PanelState& state, const SystemFacts& facts, const QDateTime& now);

} // namespace tunedeck
