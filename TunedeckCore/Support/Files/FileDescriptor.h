#pragma once

#include <QString>

#include <sys/types.h>

#include <cstddef>
#include <utility>

namespace tunedeck {

/// Owns a file descriptor.
class FileDescriptor {
public:
    FileDescriptor() = default;
    explicit FileDescriptor(int descriptor) : m_descriptor(descriptor) {}
    FileDescriptor(FileDescriptor&& other) noexcept : m_descriptor(std::exchange(other.m_descriptor, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept {
        std::swap(m_descriptor, other.m_descriptor);
        return *this;
    }
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    ~FileDescriptor() { close(); }

    [[nodiscard]] int get() const { return m_descriptor; }
    explicit operator bool() const { return m_descriptor >= 0; }

    /// Closes it. False, with errno set, if writing the data failed.
    bool close();

private:
    int m_descriptor = -1;
};

/// Opens a file for reading without blocking on a FIFO; the caller checks the type of the file.
FileDescriptor openForReading(const QString& path);

/// read(2), retried on EINTR.
ssize_t readSome(int descriptor, void* buffer, std::size_t size);

/// Writes all bytes; false, with errno set, on failure.
bool writeAll(int descriptor, const void* bytes, std::size_t size);

/// Flushes a folder's entries to disk if the file system supports it.
void syncFolder(const QString& path);

} // namespace tunedeck
