#pragma once

#include <QString>

#include <cstdint>

namespace tunedeck {

/// Appends a line to a file and creates the file if necessary. A file that has reached `limit` bytes is first renamed
/// to PATH.1, which replaces an older one. Never blocks; ignores failures, and files that
/// aren't regular.
void appendLine(const QString& path, const QString& line, std::int64_t limit);

} // namespace tunedeck
