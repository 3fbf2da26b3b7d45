#include "TunedeckCore/Update/BundleSwap.h"

#include "TunedeckCore/Support/Files/FileDescriptor.h"
#include "TunedeckCore/Support/Files/RemoveTree.h"

#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <tuple>

using namespace Qt::StringLiterals;

namespace tunedeck {

namespace {

/// False for a symbolic link to a folder, which an exchange would swap as well.
bool isFolder(const QByteArray& path) {
    struct stat info{};
    return lstat(path.constData(), &info) == 0 && S_ISDIR(info.st_mode);
}

/// Moves the installed bundle aside and the new one in its place. Returns an errno.
int renameBoth(const char* installed, const char* with, const char* aside) {
    if (std::rename(installed, aside) != 0) {
        return errno;
    }
    if (std::rename(with, installed) != 0) {
        const int reason = errno;
        std::ignore = std::rename(aside, installed);
        return reason;
    }
    return 0;
}

/// For file systems without an exchange, where there is no bundle at `installed` for a moment. Another process renames,
/// so that it isn't interrupted if this one quits or is killed.
bool swapByRenaming(const QByteArray& installed, const QByteArray& with, const QByteArray& aside) {
    const pid_t child = fork();
    if (child == 0) {
        setsid();
        _exit(renameBoth(installed.constData(), with.constData(), aside.constData()));
    }
    if (child < 0) {
        return false;
    }
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    if (!WIFEXITED(status)) { // killed, maybe between the two
        std::ignore = std::rename(aside.constData(), installed.constData());
        errno = EINTR;
        return false;
    }
    errno = WEXITSTATUS(status);
    return errno == 0;
}

} // namespace

std::expected<QString, UpdateError> UpdateInstaller::replace(const QString& installed, const QString& with,
                                                             const QString& aside, const Exchange& exchange) {
    const QByteArray oldPath = QFile::encodeName(installed);
    const QByteArray newPath = QFile::encodeName(with);
    if (!isFolder(oldPath) || !isFolder(newPath)) {
        return std::unexpected(UpdateError::other(u"%1 can't be replaced."_s.arg(installed)));
    }
    syncVolume(newPath);
    if (!exchange(oldPath, newPath) &&
        (errno != ENOTSUP || !swapByRenaming(oldPath, newPath, QFile::encodeName(aside)))) {
        return std::unexpected(UpdateError::other(qt_error_string(errno)));
    }
    syncFolder(QFileInfo(installed).absolutePath());
    syncFolder(QFileInfo(with).absolutePath());
    removeTree(with);
    removeTree(aside);
    return installed;
}

} // namespace tunedeck
