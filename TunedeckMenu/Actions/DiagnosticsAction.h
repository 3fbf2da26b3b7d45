#pragma once

#include "TunedeckMenu/Model/MenuModel.h"

#include <QString>

namespace tunedeck {

/// The report for support, by what the model holds and the service's log, with secrets masked.
QString diagnosticsReport(const PanelState& state, const SystemFacts& facts, const QDateTime& now);

/// Copies the report and says so.
void copyDiagnostics(MenuModel& model, const MenuServices& services);

} // namespace tunedeck
