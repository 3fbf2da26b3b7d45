#pragma once

#include "TunedeckCore/Support/Json/Value.h"

#include <QByteArray>
#include <QString>

#include <expected>

namespace tunedeck::demo {

/// The object in a file; an empty one when the file can't be read.
json::Object readObject(const QString& path);

/// Writes a file atomically and creates its folder first.
std::expected<void, QString> writeFile(const QString& path, const QByteArray& bytes);

} // namespace tunedeck::demo
