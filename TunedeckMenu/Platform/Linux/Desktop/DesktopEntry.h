#pragma once

#include <QMap>
#include <QString>

namespace tunedeck {

/// A program's path as the value of an entry's Exec key: quoted, so that no letter of it means anything else.
QString execValue(const QString& program);

/// A text as the value of a key of type string, and back.
QString escapedValue(const QString& text);
QString unescapedValue(const QString& value);

/// The keys of the "Desktop Entry" group with their values as they stand in the file.
QMap<QString, QString> desktopEntryKeys(const QString& text);

} // namespace tunedeck
