#pragma once

#include "TunedeckCore/Support/Files/FileDescriptor.h"

#include <QString>

#include <expected>
#include <utility>

namespace tunedeck {

/// A folder beside the installed application for one update, on the same volume; removed with all it holds when this
/// goes. While it is in use its lock file is locked, so that another start doesn't sweep it away.
class ScratchFolder {
public:
    /// Makes a fresh one beside a bundle. Failures are the platform's description.
    static std::expected<ScratchFolder, QString> make(const QString& bundle);

    /// Removes those beside a bundle that nobody uses any more.
    static void sweep(const QString& bundle);

    ScratchFolder(ScratchFolder&& other) noexcept = default;
    ~ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;
    ScratchFolder& operator=(ScratchFolder&&) = delete;

    /// The path of something in it.
    [[nodiscard]] QString at(const QString& name) const;

private:
    ScratchFolder(QString path, FileDescriptor lock) : m_path(std::move(path)), m_lock(std::move(lock)) {}

    QString m_path;
    FileDescriptor m_lock; ///< none in one that was moved from
};

} // namespace tunedeck
