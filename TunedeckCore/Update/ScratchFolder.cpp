#include "TunedeckCore/Update/ScratchFolder.h"

#include "TunedeckCore/Support/Files/RemoveTree.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace tunedeck {

namespace {

const QString prefix = QStringLiteral(".tunedeck-update-");
const QString lockName = QStringLiteral("/lock");

QString parentOf(const QString& bundle) {
    return QFileInfo(bundle).absolutePath();
}

/// The lock file, locked; none, with errno set, when somebody else has it or it can't be made.
FileDescriptor takeLock(const QString& folder) {
    FileDescriptor lock(
        open(QFile::encodeName(folder + lockName).constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600));
    if (lock && flock(lock.get(), LOCK_EX | LOCK_NB) != 0) {
        const int reason = errno;
        lock.close();
        errno = reason;
    }
    return lock;
}

} // namespace

std::expected<ScratchFolder, QString> ScratchFolder::make(const QString& bundle) {
    QByteArray path = QFile::encodeName(parentOf(bundle) + u'/' + prefix + QStringLiteral("XXXXXX"));
    if (!mkdtemp(path.data())) {
        return std::unexpected(QString::fromLocal8Bit(std::strerror(errno)));
    }
    const QString made = QFile::decodeName(path);
    FileDescriptor lock = takeLock(made);
    if (!lock) {
        const QString reason = QString::fromLocal8Bit(std::strerror(errno));
        removeTree(made);
        return std::unexpected(reason);
    }
    return ScratchFolder(made, std::move(lock));
}

void ScratchFolder::sweep(const QString& bundle) {
    const QDir parent(parentOf(bundle));
    const auto found = parent.entryInfoList({prefix + u'*'}, QDir::Dirs | QDir::Hidden | QDir::NoSymLinks);
    for (const QFileInfo& left : found) {
        if (left.ownerId() != getuid()) {
            continue;
        }
        if (const FileDescriptor lock = takeLock(left.filePath()); lock) {
            removeTree(left.filePath());
        }
    }
}

ScratchFolder::~ScratchFolder() {
    if (m_lock) {
        removeTree(m_path);
    }
}

QString ScratchFolder::at(const QString& name) const {
    return m_path + u'/' + name;
}

} // namespace tunedeck
