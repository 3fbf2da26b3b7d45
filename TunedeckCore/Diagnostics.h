#pragma once

#include "TunedeckCore/Service/AssistantLink.h"
#include "TunedeckCore/Service/ServiceStatus.h"
#include "TunedeckCore/Service/Toolbox.h"

#include <QDateTime>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <optional>
#include <vector>

/// The plain-text report for support requests, with all secrets masked.
namespace tunedeck::Diagnostics {

/// The data of a report.
struct Input {
    QString appVersion;
    std::optional<QString> serviceVersion; ///< absent when the service isn't running
    QString macOS;                         ///< version of the operating system
    QString chip;                          ///< processor, as shown to the user
    std::optional<ServiceStatus> status;
    std::optional<ToolboxReport> toolbox;
    std::vector<AssistantLink> links;
    QStringList logLines; ///< recent warnings and errors of the service
};

/// The masked report, without a line feed at its end. `now` is its date.
QString report(const Input& input, const QDateTime& now);

/// The last warnings and errors in a log file: at most `limit` lines of its last `tailBytes` bytes. Empty if it isn't a
/// regular file; never blocks. The file may change while it is read.
QStringList warningLines(const QString& log, int limit, std::int64_t tailBytes);

} // namespace tunedeck::Diagnostics
