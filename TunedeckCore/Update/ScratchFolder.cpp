#include "TunedeckCore/Update/ScratchFolder.h"

#include "TunedeckCore/Support/Async/Background.h"
#include "TunedeckCore/Support/Files/RemoveTree.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <thread>

using namespace Qt::StringLiterals;

namespace tunedeck {

namespace {

const QString prefix = u".tunedeck-update-"_s; // followed by the bundle's name, "-" and random characters
const QString doomedSuffix = u".removed"_s;
const QString lockName = u"/lock"_s;
constexpr int attempts = 10;

/// The name of the bundle that a scratch folder is for.
QString bundleOf(const QString& folder) {
    const QString name = QFileInfo(folder).fileName().sliced(prefix.size());
    return name.left(std::max<qsizetype>(name.lastIndexOf(u'-'), 0));
}

QString asideIn(const QString& folder) {
    return folder + u'/' + bundleOf(folder) + u".old"_s;
}

bool rename(const QString& from, const QString& to) {
    return std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) == 0;
}

QString placeOf(const QString& folder) {
    return QFileInfo(folder).path() + u'/' + bundleOf(folder);
}

/// Whether an update had moved the bundle into the folder and nothing has taken its place.
bool hasMissingBundle(const QString& folder) {
    return QFileInfo::exists(asideIn(folder)) && !QFileInfo::exists(placeOf(folder));
}

/// Moves the bundle back if it is missing. False on failure.
bool restoreBundle(const QString& folder) {
    return !hasMissingBundle(folder) || rename(asideIn(folder), placeOf(folder));
}

/// Locks the folder. The result is closed, with errno set, if another process holds the lock or on failure.
FileDescriptor lockFolder(const QString& folder) {
    const QByteArray path = QFile::encodeName(folder + lockName);
    FileDescriptor lock(open(path.constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600));
    // The file is missing if removeStale() in another process has taken the folder.
    if (lock && (flock(lock.get(), LOCK_EX | LOCK_NB) != 0 || access(path.constData(), F_OK) != 0)) {
        const int reason = errno;
        lock.close();
        errno = reason;
    }
    return lock;
}

/// Removes a locked folder, but not with the only bundle. The lock is removed last and closed before, because FUSE
/// keeps a removed file, and with it the folder, until it is closed.
bool removeLocked(const QString& folder, FileDescriptor lock) {
    if (!restoreBundle(folder)) {
        return false;
    }
    const auto all = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;
    const auto entries = QDir(folder).entryList(all);
    for (const QString& entry : entries) {
        if (u'/' + entry != lockName) {
            removeTree(folder + u'/' + entry);
        }
    }
    lock.close();
    return removeTree(folder);
}

/// Removes the locked folder of a killed update. Renames it first: its creator may still be about to lock it, which
/// then fails.
void removeStaleFolder(const QString& folder, FileDescriptor lock) {
    const QString doomed = folder.endsWith(doomedSuffix) ? folder : folder + doomedSuffix;
    if (rename(folder, doomed)) {
        removeLocked(doomed, std::move(lock));
    }
}

void removeStaleOf(const QFileInfo& bundle) {
    const QDir parent(bundle.absolutePath());
    const auto folders = parent.entryInfoList({prefix + u'*'}, QDir::Dirs | QDir::Hidden | QDir::NoSymLinks);
    for (const QFileInfo& entry : folders) {
        const QString folder = entry.filePath();
        const QString owner = bundleOf(folder); // empty for the folders of earlier versions
        const bool isOther = !owner.isEmpty() && owner != bundle.fileName();
        if (entry.ownerId() != getuid() || (isOther && !hasMissingBundle(folder))) {
            continue;
        }
        FileDescriptor lock = lockFolder(folder);
        if (lock && isOther) {
            restoreBundle(folder);
        } else if (lock) {
            removeStaleFolder(folder, std::move(lock));
        }
    }
}

} // namespace

std::expected<std::shared_ptr<ScratchFolder>, QString> ScratchFolder::create(const QString& bundle) {
    const QFileInfo info(bundle);
    for (int attempt = 1;; ++attempt) {
        QByteArray name = QFile::encodeName(info.absolutePath() + u'/' + prefix + info.fileName() + u"-XXXXXX"_s);
        if (!mkdtemp(name.data())) {
            return std::unexpected(qt_error_string(errno));
        }
        const QString path = QFile::decodeName(name);
        if (FileDescriptor lock = lockFolder(path); lock) {
            return std::shared_ptr<ScratchFolder>(new ScratchFolder(path, std::move(lock)));
        }
        const int reason = errno;
        removeTree(path);
        if ((reason != EWOULDBLOCK && reason != ENOENT) || attempt == attempts) {
            return std::unexpected(qt_error_string(reason));
        }
    }
}

QCoro::Task<> ScratchFolder::removeStale(QString bundle, std::stop_token stop) {
    std::function<bool(std::stop_token)> work = [info = QFileInfo(QDir::cleanPath(bundle))](const std::stop_token&) {
        removeStaleOf(info);
        return true;
    };
    co_await inBackground<bool>(std::move(work), std::move(stop));
}

QCoro::Task<> ScratchFolder::remove(std::stop_token stop) {
    const auto lock = std::make_shared<FileDescriptor>(std::move(m_lock));
    std::function<bool(std::stop_token)> work = [path = std::exchange(m_path, {}), lock](const std::stop_token&) {
        return removeLocked(path, std::move(*lock));
    };
    co_await inBackground<bool>(std::move(work), std::move(stop));
}

QString ScratchFolder::asidePath() const {
    return asideIn(m_path);
}

ScratchFolder::~ScratchFolder() {
    if (!m_path.isEmpty()) {
        std::thread([path = m_path, lock = std::move(m_lock)]() mutable {
            removeLocked(path, std::move(lock));
        }).detach();
    }
}

} // namespace tunedeck
