#pragma once

#include "TunedeckCore/Support/Json/Error.h"
#include "TunedeckCore/Support/Json/Value.h"

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <expected>

namespace tunedeck::json {

/// Limits on a document.
struct Limits {
    std::int64_t bytes = 16 * 1024 * 1024;
    int depth = 512; ///< of nested objects and arrays
};

/// What happens to the keys of a document's objects.
enum class Keys {
    AsWritten,
    SnakeToCamel ///< "download_dir" and "DOWNLOAD_DIR" become "downloadDir"; see snakeToCamel()
};

/// Parses strict JSON in UTF-8; a byte-order mark before it is accepted. If an object repeats a key, the last member
/// counts. Nesting uses no stack.
std::expected<Value, Error> parse(const QByteArray& bytes, Limits limits = {}, Keys keys = Keys::AsWritten);

/// Like parse(), for documents that must be objects.
std::expected<Object, Error> parseObject(const QByteArray& document);

/// Leading and trailing underscores stay, and a key without others is unchanged.
QString snakeToCamel(const QString& key);

} // namespace tunedeck::json
