#include "TunedeckCore/Update/ScratchFolder.h"

#include "TunedeckCore/Support/Async/Background.h"
#include "TunedeckCore/Support/Files/RemoveTree.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <functional>
#include <thread>

using namespace Qt::StringLiterals;

namespace tunedeck {

namespace {

const QString prefix = u".tunedeck-update-"_s;

/// Locks the folder. The result is closed, with errno set, if another process holds the lock or on failure.
FileDescriptor lockFolder(const QString& folder) {
    FileDescriptor lock(
        open(QFile::encodeName(folder + u"/lock"_s).constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600));
    if (lock && flock(lock.get(), LOCK_EX | LOCK_NB) != 0) {
        const int reason = errno;
        lock.close();
        errno = reason;
    }
    return lock;
}

} // namespace

std::expected<std::shared_ptr<ScratchFolder>, QString> ScratchFolder::create(const QString& bundle) {
    QByteArray name = QFile::encodeName(QFileInfo(bundle).absolutePath() + u'/' + prefix + u"XXXXXX"_s);
    if (!mkdtemp(name.data())) {
        return std::unexpected(qt_error_string(errno));
    }
    const QString path = QFile::decodeName(name);
    FileDescriptor lock = lockFolder(path);
    if (!lock) {
        const QString reason = qt_error_string(errno);
        removeTree(path);
        return std::unexpected(reason);
    }
    return std::shared_ptr<ScratchFolder>(new ScratchFolder(path, std::move(lock)));
}

QCoro::Task<> ScratchFolder::removeStale(QString bundle, std::stop_token stop) {
    std::function<bool(std::stop_token)> work = [parent =
                                                     QDir(QFileInfo(bundle).absolutePath())](const std::stop_token&) {
        const auto folders = parent.entryInfoList({prefix + u'*'}, QDir::Dirs | QDir::Hidden | QDir::NoSymLinks);
        for (const QFileInfo& folder : folders) {
            if (folder.ownerId() != getuid()) {
                continue;
            }
            if (const FileDescriptor lock = lockFolder(folder.filePath()); lock) {
                removeTree(folder.filePath());
            }
        }
        return true;
    };
    co_await inBackground<bool>(std::move(work), std::move(stop));
}

QCoro::Task<> ScratchFolder::remove(std::stop_token stop) {
    std::function<bool(std::stop_token)> work = [path = std::exchange(m_path, {})](const std::stop_token&) {
        return removeTree(path);
    };
    co_await inBackground<bool>(std::move(work), std::move(stop));
}

ScratchFolder::~ScratchFolder() {
    if (!m_path.isEmpty()) {
        std::thread([path = m_path] { removeTree(path); }).detach();
    }
}

} // namespace tunedeck
