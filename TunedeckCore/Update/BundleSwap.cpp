#include "TunedeckCore/Update/BundleSwap.h"

#include "TunedeckCore/Support/Files/FileDescriptor.h"
#include "TunedeckCore/Support/Files/RemoveTree.h"

#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>

#include <cerrno>
#include <cstdio>

using namespace Qt::StringLiterals;

namespace tunedeck {

namespace {

/// False for a symbolic link to a folder, which an exchange would swap as well.
bool isFolder(const QByteArray& path) {
    struct stat info{};
    return lstat(path.constData(), &info) == 0 && S_ISDIR(info.st_mode);
}

/// For file systems without an exchange. For a moment there is no bundle at `installed`.
bool swapByRenaming(const QByteArray& installed, const QByteArray& with) {
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

} // namespace

std::expected<QString, UpdateError> UpdateInstaller::replace(const QString& installed, const QString& with,
                                                             const Exchange& exchange) {
    const QByteArray oldPath = QFile::encodeName(installed);
    const QByteArray newPath = QFile::encodeName(with);
    if (!isFolder(oldPath) || !isFolder(newPath)) {
        return std::unexpected(UpdateError::other(u"%1 can't be replaced."_s.arg(installed)));
    }
    syncVolume(newPath);
    if (!exchange(oldPath, newPath) && (errno != ENOTSUP || !swapByRenaming(oldPath, newPath))) {
        return std::unexpected(UpdateError::other(qt_error_string(errno)));
    }
    syncFolder(QFileInfo(installed).absolutePath());
    syncFolder(QFileInfo(with).absolutePath());
    removeTree(with);
    return installed;
}

} // namespace tunedeck
