#pragma once

#include "TunedeckCore/Support/Files/FileDescriptor.h"

#include <QString>

#include <expected>
#include <memory>
#include <utility>

namespace tunedeck {

/// Temporary folder of one update, beside the installed bundle and so on the same volume. Removed with its contents on
/// destruction. A locked file in it protects it from removeStale() in another process.
class ScratchFolder {
public:
    /// Creates a new folder beside the bundle. An error is the platform's description.
    static std::expected<std::shared_ptr<ScratchFolder>, QString> create(const QString& bundle);

    /// Removes the folders that killed updates left beside the bundle.
    static void removeStale(const QString& bundle);

    ~ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    [[nodiscard]] QString filePath(const QString& name) const { return m_path + u'/' + name; }

private:
    ScratchFolder(QString path, FileDescriptor lock) : m_path(std::move(path)), m_lock(std::move(lock)) {}

    QString m_path;
    FileDescriptor m_lock;
};

} // namespace tunedeck
