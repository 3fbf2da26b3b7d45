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

/// The plain-text report for a support request, with every secret masked.
namespace tunedeck::Diagnostics {

/// What the report tells of.
struct Input {
    QString appVersion;
    std::optional<QString> serviceVersion; ///< absent when the service isn't running
    QString macOS;                         ///< the operating system's version
    QString chip;                          ///< of the machine, in words for people
    std::optional<ServiceStatus> status;
    std::optional<ToolboxReport> toolbox;
    std::vector<AssistantLink> links;
    QStringList logLines; ///< recent warnings and errors of the service
};

/// The report, masked, without a line feed at its end. `now` is its date.
QString report(const Input& input, const QDateTime& now);

/// The last warnings and errors of a log file, at most `limit` lines out of its last `tailBytes` bytes. Empty for what
/// is no regular file; never waits. A file that is written to, cut or renamed meanwhile is read as far as it goes.
QStringList warningLines(const QString& log, int limit, std::int64_t tailBytes);

/// The text with bearer tokens, Telegram start codes and free-standing runs of 24 and more token characters (letters,
/// digits, "_", "-") replaced by "…"; of such a run the first four characters stay. Takes linear time.
QString mask(const QString& text);

} // namespace tunedeck::Diagnostics
