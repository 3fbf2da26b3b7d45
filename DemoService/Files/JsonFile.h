#pragma once

#include "TunedeckCore/Support/Json/Value.h"

#include <QByteArray>
#include <QString>

#include <expected>
#include <optional>

namespace tunedeck::demo {

/// The object in a file; an empty one when the file can't be read.
json::Object readObject(const QString& path);

/// The text under a key; nothing when it is missing or of another type.
std::optional<QString> textMember(const json::Object& object, const QString& key);

/// Writes a file atomically and creates its folder first.
std::expected<void, QString> writeFile(const QString& path, const QByteArray& bytes);

} // namespace tunedeck::demo
