#include "TunedeckCore/Update/Exchange.h"

#include "TunedeckCore/Support/Files/FileDescriptor.h"

#include <fcntl.h>
#include <linux/fs.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>

namespace tunedeck {

bool exchangeFolders(const QByteArray& first, const QByteArray& second) {
    if (syscall(SYS_renameat2, AT_FDCWD, first.constData(), AT_FDCWD, second.constData(), RENAME_EXCHANGE) == 0) {
        return true;
    }
    if (errno == EINVAL || errno == ENOSYS) { // some network file systems
        errno = ENOTSUP;
    }
    return false;
}

void syncVolume(const QByteArray& folder) {
    if (const FileDescriptor open(::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)); open) {
        syncfs(open.get());
    }
}

} // namespace tunedeck
