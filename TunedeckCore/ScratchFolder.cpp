#include "TunedeckCore/ScratchFolder.h"

#include "TunedeckCore/Support/RemoveTree.h"

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

/// The lock file, locked; -1 with errno set when somebody else has it or it can't be made.
int takeLock(const QString& folder) {
    const int lock =
        open(QFile::encodeName(folder + lockName).constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
    if (lock >= 0 && flock(lock, LOCK_EX | LOCK_NB) != 0) {
        const int reason = errno;
        close(lock);
        errno = reason;
        return -1;
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
    const int lock = takeLock(made);
    if (lock < 0) {
        const QString reason = QString::fromLocal8Bit(std::strerror(errno));
        removeTree(made);
        return std::unexpected(reason);
    }
    return ScratchFolder(made, lock);
}

void ScratchFolder::sweep(const QString& bundle) {
    const QDir parent(parentOf(bundle));
    const auto found = parent.entryInfoList({prefix + u'*'}, QDir::Dirs | QDir::Hidden | QDir::NoSymLinks);
    for (const QFileInfo& left : found) {
        if (left.ownerId() != getuid()) {
            continue;
        }
        if (const int lock = takeLock(left.filePath()); lock >= 0) {
            removeTree(left.filePath());
            close(lock);
        }
    }
}

ScratchFolder::ScratchFolder(ScratchFolder&& other) noexcept
    : m_path(std::move(other.m_path)), m_lock(std::exchange(other.m_lock, -1)) {
    other.m_path.clear();
}

ScratchFolder::~ScratchFolder() {
    if (!m_path.isEmpty()) {
        removeTree(m_path);
    }
    if (m_lock >= 0) {
        close(m_lock);
    }
}

QString ScratchFolder::at(const QString& name) const {
    return m_path + u'/' + name;
}

} // namespace tunedeck
