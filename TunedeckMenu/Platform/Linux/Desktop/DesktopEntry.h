#pragma once

#include <QMap>
#include <QString>

namespace tunedeck {

/// The value of an Exec key that runs the program at this path, quoted.
QString execValue(const QString& program);

/// Encodes and decodes the value of a key of type string.
QString escapedValue(const QString& text);
QString unescapedValue(const QString& value);

/// The keys of the "Desktop Entry" group with their encoded values.
QMap<QString, QString> desktopEntryKeys(const QString& text);

} // namespace tunedeck
