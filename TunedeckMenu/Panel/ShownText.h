#pragma once

#include <QString>

namespace tunedeck {

/// A text of the service for one line, at most `limit` user-perceived characters. Control characters, which could add
/// lines or change the direction of writing, are replaced.
QString oneLine(const QString& text, int limit = 200);

/// A text of the service that may wrap, at most 1,000 user-perceived characters. Line breaks stay.
QString paragraph(const QString& text);

} // namespace tunedeck
