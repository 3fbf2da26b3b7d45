#pragma once

#include <QString>

#include <sys/types.h>

#include <cstddef>
#include <utility>

namespace tunedeck {

/// An open file of the system, closed with its owner.
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

    /// Closes it now. False, with errno set, when what was written turns out not to be stored.
    bool close();

private:
    int m_descriptor = -1;
};

/// Opens a file to read it. Never waits for the other end of a FIFO; what it opened may be no regular file.
FileDescriptor openForReading(const QString& path);

/// read(2), repeated when a signal interrupts it.
ssize_t readSome(int descriptor, void* buffer, std::size_t size);

/// Writes all the bytes; false, with errno set, when that is impossible.
bool writeAll(int descriptor, const void* bytes, std::size_t size);

/// Makes the names in a folder last through a power failure, as far as the file system can.
void syncFolder(const QString& path);

} // namespace tunedeck
