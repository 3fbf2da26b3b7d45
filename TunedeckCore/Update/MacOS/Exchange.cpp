#include "TunedeckCore/Update/Exchange.h"

#include <unistd.h>

#include <cerrno>
#include <cstdio>

namespace tunedeck {

bool exchangeFolders(const QByteArray& first, const QByteArray& second) {
    if (renamex_np(first.constData(), second.constData(), RENAME_SWAP) == 0) {
        return true;
    }
    if (errno == EINVAL || errno == ENOSYS) { // volumes without it, such as exFAT and network shares
        errno = ENOTSUP;
    }
    return false;
}

void syncVolume(const QByteArray& folder) {
    sync_volume_np(folder.constData(), SYNC_VOLUME_FULLSYNC | SYNC_VOLUME_WAIT);
}

} // namespace tunedeck
