#pragma once

#include <QString>

namespace tunedeck {

/// A text of the service for one line, at most 200 user-perceived characters. Control characters, which could add lines
/// or change the direction of writing, are replaced.
QString oneLine(const QString& text);

/// A text of the service that may wrap, at most 1,000 user-perceived characters. Line breaks stay.
QString paragraph(const QString& text);

} // namespace tunedeck
