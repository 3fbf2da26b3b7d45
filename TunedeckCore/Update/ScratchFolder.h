#pragma once

#include "TunedeckCore/Support/Files/FileDescriptor.h"

#include <QCoroTask>
#include <QString>

#include <expected>
#include <memory>
#include <stop_token>
#include <utility>

namespace tunedeck {

/// Temporary folder of one update, beside the installed bundle and so on the same volume; its name says which bundle.
/// It may contain many files, so it is removed on a separate thread. A locked file in it protects it from removeStale()
/// in another process.
class ScratchFolder {
public:
    /// Creates a new folder beside the bundle. An error is the platform's description.
    static std::expected<std::shared_ptr<ScratchFolder>, QString> create(const QString& bundle);

    /// Removes the folders that killed updates of the bundle left beside it. If a bundle is missing that such an update
    /// had moved to asidePath(), moves it back, also if it is another bundle of the user in the same folder.
    static QCoro::Task<> removeStale(QString bundle, std::stop_token stop);

    /// Removes the folder with its contents.
    QCoro::Task<> remove(std::stop_token stop);

    /// Starts the removal if remove() wasn't called, for example in a cancelled update, and doesn't wait for it. The
    /// next call of removeStale() removes what is left if the application quits too early.
    ~ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    [[nodiscard]] QString filePath(const QString& name) const { return m_path + u'/' + name; }

    /// Where the bundle may be moved while another takes its place.
    [[nodiscard]] QString asidePath() const;

private:
    ScratchFolder(QString path, FileDescriptor lock) : m_path(std::move(path)), m_lock(std::move(lock)) {}

    QString m_path; ///< empty when removed
    FileDescriptor m_lock;
};

} // namespace tunedeck
