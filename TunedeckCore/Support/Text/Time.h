#pragma once

#include <QDateTime>
#include <QString>

#include <optional>

namespace tunedeck {

/// Reads an ISO 8601 internet date-time ("2025-03-01T18:04:05Z", with an offset "+01:00", with or without fractional
/// seconds). Nothing for an absent text and for any other form.
std::optional<QDateTime> parseTimestamp(const std::optional<QString>& text);

/// A moment as an ISO 8601 internet date-time in UTC with whole seconds ("2025-03-01T18:04:05Z").
QString isoTimestamp(const QDateTime& moment);

} // namespace tunedeck
