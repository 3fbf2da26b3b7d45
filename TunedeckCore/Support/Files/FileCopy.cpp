#include "TunedeckCore/Support/Files/FileCopy.h"

#include "TunedeckCore/Support/Files/AtomicFile.h"
#include "TunedeckCore/Support/Files/FileDescriptor.h"

#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <vector>

namespace tunedeck {

namespace {

constexpr std::size_t pieceSize = 256 * 1024;

/// Opens a regular file for reading; otherwise invalid with errno set.
FileDescriptor openRegular(const QString& path) {
    auto file = openForReading(path);
    struct stat facts{};
    if (file && ::fstat(file.get(), &facts) == 0 && !S_ISREG(facts.st_mode)) {
        errno = S_ISDIR(facts.st_mode) ? EISDIR : EINVAL;
        return {};
    }
    return file;
}

/// Reads until the buffer is full or the file ends. Returns the count, negative on errors.
ssize_t readPiece(int descriptor, std::vector<char>& buffer) {
    std::size_t filled = 0;
    while (filled < buffer.size()) {
        const auto count = readSome(descriptor, buffer.data() + filled, buffer.size() - filled);
        if (count < 0) {
            return count;
        }
        if (count == 0) {
            break;
        }
        filled += static_cast<std::size_t>(count);
    }
    return static_cast<ssize_t>(filled);
}

std::expected<void, QString> copyBytes(const FileDescriptor& from, const QString& source, const FileDescriptor& to,
                                       const QString& target) {
    std::vector<char> piece(pieceSize);
    for (;;) {
        const auto count = readPiece(from.get(), piece);
        if (count < 0) {
            return std::unexpected(fileError(source, errno));
        }
        if (!writeAll(to.get(), piece.data(), static_cast<std::size_t>(count))) {
            return std::unexpected(fileError(target, errno));
        }
        if (count < static_cast<ssize_t>(piece.size())) {
            return {};
        }
    }
}

/// Copies to the temporary path and flushes to disk.
std::expected<void, QString> makeCopy(const QString& source, const QString& copy, mode_t mode) {
    const auto from = openRegular(source);
    if (!from) {
        return std::unexpected(fileError(source, errno));
    }
    const auto name = QFile::encodeName(copy);
    ::unlink(name.constData()); // left by an interrupted run
    FileDescriptor to(::open(name.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
    if (!to) {
        return std::unexpected(fileError(copy, errno));
    }
    if (const auto copied = copyBytes(from, source, to, copy); !copied) {
        return copied;
    }
    if (::fchmod(to.get(), mode) != 0 || ::fsync(to.get()) != 0 || !to.close()) {
        return std::unexpected(fileError(copy, errno));
    }
    return {};
}

} // namespace

bool haveSameBytes(const QString& one, const QString& other) {
    const auto first = openRegular(one);
    const auto second = openRegular(other);
    struct stat firstFacts{};
    struct stat secondFacts{};
    if (!first || !second || ::fstat(first.get(), &firstFacts) != 0 || ::fstat(second.get(), &secondFacts) != 0 ||
        firstFacts.st_size != secondFacts.st_size) {
        return false;
    }
    std::vector<char> firstPiece(pieceSize);
    std::vector<char> secondPiece(pieceSize);
    for (;;) {
        const auto count = readPiece(first.get(), firstPiece);
        if (count < 0 || readPiece(second.get(), secondPiece) != count ||
            !std::equal(firstPiece.begin(), firstPiece.begin() + count, secondPiece.begin())) {
            return false;
        }
        if (count < static_cast<ssize_t>(firstPiece.size())) {
            return true;
        }
    }
}

std::expected<void, QString> installCopy(const QString& source, const QString& scratch, const QString& target,
                                         mode_t mode) {
    const auto copy = QFile::encodeName(scratch);
    const auto place = QFile::encodeName(target);
    auto made = makeCopy(source, scratch, mode);
    if (made) {
        ::rmdir(place.constData()); // only removes an empty folder; rename() replaces a file
        if (::rename(copy.constData(), place.constData()) != 0) {
            made = std::unexpected(fileError(target, errno));
        }
    }
    if (made) {
        syncFolder(QFileInfo(target).path());
    } else {
        ::unlink(copy.constData());
    }
    return made;
}

} // namespace tunedeck
