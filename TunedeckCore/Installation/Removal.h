#pragma once

#include <QString>
#include <QStringList>

#include <expected>

namespace tunedeck {

/// The result of a removal, one sentence per item; empty if nothing was found.
struct Removal {
    QStringList done;
    QStringList failures; ///< each with its reason

    /// Adds "Removed WHAT." or the error; nothing if it didn't exist (false).
    void note(const QString& what, const std::expected<bool, QString>& removed);
    bool operator==(const Removal&) const = default;
};

/// Removes a file or a link; false if it doesn't exist. Fails for a folder, which can't be ours.
std::expected<bool, QString> removeFile(const QString& path);

} // namespace tunedeck
