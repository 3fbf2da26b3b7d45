#include "TunedeckCore/Update/BundleSwap.h"

#include "TunedeckCore/Support/Files/FileDescriptor.h"
#include "TunedeckCore/Support/Files/RemoveTree.h"

#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <linux/fs.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace tunedeck {

namespace {

QString lastError() {
    return QString::fromLocal8Bit(std::strerror(errno));
}

bool isFolder(const QByteArray& path) {
    struct stat facts{};
    return lstat(path.constData(), &facts) == 0 && S_ISDIR(facts.st_mode);
}

/// Brings what was written below a folder to the disk.
void syncVolume(const QByteArray& path) {
    if (const FileDescriptor folder(open(path.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)); folder) {
        syncfs(folder.get());
    }
}

/// For file systems without an exchange: for a moment nothing is in the place, but the old one is beside it.
bool moveAround(const QByteArray& installed, const QByteArray& with) {
    const QByteArray aside = with + ".old";
    if (std::rename(installed.constData(), aside.constData()) != 0) {
        return false;
    }
    if (std::rename(with.constData(), installed.constData()) != 0) {
        const int reason = errno;
        std::rename(aside.constData(), installed.constData());
        errno = reason;
        return false;
    }
    std::rename(aside.constData(), with.constData());
    return true;
}

bool exchange(const QByteArray& installed, const QByteArray& with) {
    if (syscall(SYS_renameat2, AT_FDCWD, installed.constData(), AT_FDCWD, with.constData(), RENAME_EXCHANGE) == 0) {
        return true;
    }
    return (errno == EINVAL || errno == ENOSYS || errno == EOPNOTSUPP) && moveAround(installed, with);
}

} // namespace

std::expected<QString, UpdateError> UpdateInstaller::replace(const QString& installed, const QString& with) {
    const QByteArray place = QFile::encodeName(installed);
    const QByteArray fresh = QFile::encodeName(with);
    // An exchange would gladly swap a folder with a link.
    if (!isFolder(place) || !isFolder(fresh)) {
        return std::unexpected(UpdateError::other(QStringLiteral("%1 can't be replaced.").arg(installed)));
    }
    syncVolume(fresh);
    if (!exchange(place, fresh)) {
        return std::unexpected(UpdateError::other(lastError()));
    }
    syncFolder(QFileInfo(installed).absolutePath());
    syncFolder(QFileInfo(with).absolutePath());
    removeTree(with);
    return installed;
}

} // namespace tunedeck
