#pragma once

#include <QDateTime>
#include <QString>

#include <optional>

namespace tunedeck {

/// Parses an ISO 8601 internet date-time: "2025-03-01T18:04:05Z", also with an offset such as "+01:00" or with
/// fractional seconds, of which milliseconds are kept.
std::optional<QDateTime> parseTimestamp(const std::optional<QString>& text);

/// An ISO 8601 internet date-time in UTC with whole seconds: "2025-03-01T18:04:05Z".
QString isoTimestamp(const QDateTime& time);

} // namespace tunedeck
