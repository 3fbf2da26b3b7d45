#include "TunedeckCore/Installation/Removal.h"

#include "TunedeckCore/Support/Files/AtomicFile.h"

#include <QFile>

#include <unistd.h>

#include <cerrno>

namespace tunedeck {

using namespace Qt::StringLiterals;

void Removal::note(const QString& what, const std::expected<bool, QString>& removed) {
    if (!removed) {
        failures << removed.error() + u'.';
    } else if (*removed) {
        done << u"Removed "_s + what + u'.';
    }
}

std::expected<bool, QString> removeFile(const QString& path) {
    if (::unlink(QFile::encodeName(path).constData()) == 0) {
        return true;
    }
    if (errno == ENOENT || errno == ENOTDIR) {
        return false;
    }
    return std::unexpected(fileError(path, errno));
}

} // namespace tunedeck
