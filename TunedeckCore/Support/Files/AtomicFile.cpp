#include "TunedeckCore/Support/Files/AtomicFile.h"

#include "TunedeckCore/Support/Files/Document.h"
#include "TunedeckCore/Support/Files/FileDescriptor.h"

#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <system_error>
#include <utility>

namespace tunedeck {

using namespace Qt::StringLiterals;

namespace {

constexpr int attempts = 100;

QByteArray folderOf(const QByteArray& path) {
    const auto slash = path.lastIndexOf('/');
    return slash < 0 ? "."_ba : path.left(std::max(slash, qsizetype{1}));
}

/// Creates a file with an unused name in the target's folder, so that it can be renamed over the target.
std::pair<FileDescriptor, QByteArray> createSibling(const QByteArray& target) {
    const auto prefix = target.left(target.lastIndexOf('/') + 1) + ".tunedeck-";
    for (int attempt = 0; attempt < attempts; ++attempt) {
        const auto path = prefix + QByteArray::number(QRandomGenerator::system()->generate(), 36) + ".new";
        FileDescriptor file(::open(path.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
        if (file || errno != EEXIST) {
            return {std::move(file), path};
        }
    }
    return {};
}

} // namespace

QString fileError(const QString& path, int code) {
    return path + u": "_s + QString::fromStdString(std::generic_category().message(code));
}

std::optional<QByteArray> readFile(const QString& path, std::int64_t limit) {
    const auto file = openForReading(path);
    struct stat facts{};
    if (!file || ::fstat(file.get(), &facts) != 0 || !S_ISREG(facts.st_mode) || facts.st_size > limit) {
        return std::nullopt;
    }
    // The size is only a hint: the file may change while it is read, and files in /proc have size 0.
    QByteArray bytes(static_cast<qsizetype>(std::min(std::max<std::int64_t>(facts.st_size, 4095), limit)) + 1,
                     Qt::Uninitialized);
    qsizetype length = 0;
    for (;;) {
        const auto count = readSome(file.get(), bytes.data() + length, static_cast<size_t>(bytes.size() - length));
        if (count < 0) {
            return std::nullopt;
        }
        length += static_cast<qsizetype>(count);
        if (length > limit) {
            return std::nullopt;
        }
        if (count == 0) {
            bytes.truncate(length);
            return bytes;
        }
        if (length == bytes.size()) {
            bytes.resize(static_cast<qsizetype>(std::min<std::int64_t>(bytes.size() * 2, limit + 1)));
        }
    }
}

std::expected<void, QString> writeFileAtomically(const QString& path, const QByteArray& bytes, std::int64_t limit) {
    if (const auto problem = documentProblem(path, limit)) {
        return std::unexpected(QFileInfo(path).isDir() ? fileError(path, EISDIR)
                                                       : u"%1 was left as it is: %2."_s.arg(path, *problem));
    }
    const auto linked = QFileInfo(path).canonicalFilePath(); // empty if it doesn't exist
    const auto target = QFile::encodeName(linked.isEmpty() ? path : linked);
    struct stat old{};
    const bool exists = ::lstat(target.constData(), &old) == 0;
    auto [file, sibling] = createSibling(target);
    if (!file) {
        return std::unexpected(fileError(path, errno));
    }
    if (exists) {
        // When running as root, keep the file's owner. For other users fchown() fails, which is fine.
        [[maybe_unused]] const int kept = ::fchown(file.get(), old.st_uid, old.st_gid);
    }
    // A full disk is reported by write(), fsync() or close(), depending on the file system.
    const bool written = (!exists || ::fchmod(file.get(), old.st_mode & 07777) == 0) &&
                         writeAll(file.get(), bytes.constData(), static_cast<size_t>(bytes.size())) &&
                         ::fsync(file.get()) == 0 && file.close() &&
                         ::rename(sibling.constData(), target.constData()) == 0;
    if (!written) {
        const int code = errno;
        ::unlink(sibling.constData());
        return std::unexpected(fileError(path, code));
    }
    syncFolder(QFile::decodeName(folderOf(target)));
    return {};
}

std::expected<void, QString> createFolder(const QString& path) {
    std::error_code error;
    std::filesystem::create_directories(QFile::encodeName(path).toStdString(), error);
    if (error) {
        return std::unexpected(fileError(path, error.value()));
    }
    return {};
}

} // namespace tunedeck
