#pragma once

#include <QString>
#include <QStringList>

#include <expected>

namespace tunedeck {

/// What a removal did and what it couldn't do, one sentence for each thing; nothing at all when nothing was there.
struct Removal {
    QStringList done;
    QStringList failures; ///< each with its reason

    /// Notes how one thing went: "Removed WHAT.", or why not. False (it wasn't there) is worth no word.
    void note(const QString& what, const std::expected<bool, QString>& removed);
    bool operator==(const Removal&) const = default;
};

/// Removes a file or a link; false when there was none. A folder is never removed: it is somebody else's.
std::expected<bool, QString> removeFile(const QString& path);

} // namespace tunedeck
