#include "TunedeckCore/Support/Files/LogFile.h"

#include "TunedeckCore/Support/Files/AtomicFile.h"
#include "TunedeckCore/Support/Files/FileDescriptor.h"

#include <QByteArray>
#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <tuple>

namespace tunedeck {

void appendLine(const QString& path, const QString& line, std::int64_t limit) {
    if (!createFolder(QFileInfo(path).path())) {
        return;
    }
    const QByteArray name = QFile::encodeName(path);
    struct stat facts{};
    if (::lstat(name.constData(), &facts) == 0 && S_ISREG(facts.st_mode) && facts.st_size >= limit) {
        std::ignore = std::rename(name.constData(), (name + ".1").constData());
    }
    // O_NONBLOCK: opening a FIFO fails instead of waiting for a reader.
    const FileDescriptor file(
        ::open(name.constData(), O_WRONLY | O_APPEND | O_CREAT | O_NONBLOCK | O_CLOEXEC | O_NOCTTY, 0666));
    if (file && ::fstat(file.get(), &facts) == 0 && S_ISREG(facts.st_mode)) {
        const auto bytes = line.toUtf8() + '\n';
        std::ignore = ::write(file.get(), bytes.constData(), static_cast<std::size_t>(bytes.size()));
    }
}

} // namespace tunedeck
