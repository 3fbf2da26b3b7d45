#include "TunedeckCore/Support/Files/FileDescriptor.h"

#include <QFile>

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

namespace tunedeck {

bool FileDescriptor::close() {
    const int descriptor = std::exchange(m_descriptor, -1);
    return descriptor < 0 || ::close(descriptor) == 0 || errno == EINTR;
}

FileDescriptor openForReading(const QString& path) {
    return FileDescriptor(::open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY));
}

ssize_t readSome(int descriptor, void* buffer, std::size_t size) {
    for (;;) {
        const auto count = ::read(descriptor, buffer, size);
        if (count >= 0 || errno != EINTR) {
            return count;
        }
    }
}

bool writeAll(int descriptor, const void* bytes, std::size_t size) {
    const auto* next = static_cast<const char*>(bytes);
    while (size > 0) {
        const auto count = ::write(descriptor, next, size);
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count <= 0) {
            return false;
        }
        next += count;
        size -= static_cast<std::size_t>(count);
    }
    return true;
}

void syncFolder(const QString& path) {
    const FileDescriptor folder(::open(QFile::encodeName(path).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder) {
        ::fsync(folder.get());
    }
}

} // namespace tunedeck
