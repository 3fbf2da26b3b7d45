#include "TunedeckCore/Update/Confined/Archive.h"

#include "TunedeckCore/Update/Confined/ArchiveNames.h"

#include <QFile>
#include <QFileInfo>

#include <archive.h>
#include <archive_entry.h>
#include <sys/stat.h>

#include <cerrno>
#include <locale>
#include <memory>
#include <type_traits>

namespace tunedeck {

namespace {

constexpr std::size_t blockSize = 256 * 1024;

using Reader = std::unique_ptr<archive, decltype(&archive_read_free)>;
using Writer = std::unique_ptr<archive, decltype(&archive_write_free)>;
using Locale = std::unique_ptr<std::remove_pointer_t<locale_t>, decltype(&freelocale)>;

/// A locale with UTF-8; each of the two names is missing on some systems.
Locale utf8Locale() {
    const locale_t simple = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    return {simple != nullptr ? simple : newlocale(LC_CTYPE_MASK, "en_US.UTF-8", nullptr), &freelocale};
}

Reader openZip(const QString& path) {
    Reader reader(archive_read_new(), &archive_read_free);
    archive_read_support_format_zip_seekable(reader.get());
    if (archive_read_open_filename(reader.get(), QFile::encodeName(path).constData(), blockSize) != ARCHIVE_OK) {
        return {nullptr, &archive_read_free};
    }
    return reader;
}

/// Reads the next entry's header. A warning, such as a name in another encoding, counts as success.
int nextHeader(archive* reader, archive_entry** entry) {
    const int result = archive_read_next_header(reader, entry);
    return result == ARCHIVE_WARN ? ARCHIVE_OK : result;
}

/// Whether an application may contain such an entry. libarchive reads FIFOs as files.
bool isAllowed(archive_entry* entry) {
    const auto type = archive_entry_filetype(entry);
    return !archive_entry_hardlink(entry) && !archive_entry_is_encrypted(entry) &&
           (type == AE_IFREG || type == AE_IFDIR || type == AE_IFLNK) &&
           (archive_entry_perm(entry) & (S_ISUID | S_ISGID)) == 0;
}

std::optional<std::string> normalisedName(archive_entry* entry) {
    const char* name = archive_entry_pathname(entry);
    return name ? ArchiveNames::normalised(name) : std::nullopt;
}

bool isSafe(const QString& archive, const ArchiveLimits& limits) {
    const Reader reader = openZip(archive);
    ArchiveNames names;
    std::int64_t entries = 0;
    std::int64_t bytes = 0;
    archive_entry* entry = nullptr;
    int result = ARCHIVE_FATAL;
    while (reader && (result = nextHeader(reader.get(), &entry)) == ARCHIVE_OK) {
        const auto name = normalisedName(entry);
        const char* link = archive_entry_symlink(entry);
        if (archive_entry_filetype(entry) == AE_IFLNK && !link) {
            return false;
        }
        const std::string target = link ? link : "";
        bytes += archive_entry_size_is_set(entry) ? archive_entry_size(entry) : 0;
        if (!isAllowed(entry) || !name || !names.add(*name, link ? &target : nullptr) || ++entries > limits.entries ||
            bytes > limits.bytes) {
            return false;
        }
    }
    return result == ARCHIVE_EOF && !names.anyBelowLink();
}

/// Why an archive wasn't unpacked: 0 if it was, the errno of a disk that can't be written, or `invalid`.
using Code = int;
constexpr Code invalid = -1;

Code writeError(archive* writer) {
    const int code = archive_errno(writer);
    const bool isDisk = code == ENOSPC || code == EDQUOT || code == EIO || code == EROFS;
    return isDisk ? code : invalid; // else a name that can't be created
}

/// Copies an entry's contents and subtracts their size from `remaining`, which must not become negative.
Code copyContents(archive* reader, archive* writer, std::int64_t& remaining) {
    const void* block = nullptr;
    std::size_t size = 0;
    la_int64_t offset = 0;
    int result = ARCHIVE_OK;
    while ((result = archive_read_data_block(reader, &block, &size, &offset)) == ARCHIVE_OK) {
        remaining -= static_cast<std::int64_t>(size);
        if (remaining < 0) {
            return invalid;
        }
        if (archive_write_data_block(writer, block, size, offset) < ARCHIVE_OK) {
            return writeError(writer);
        }
    }
    return result == ARCHIVE_EOF ? 0 : invalid;
}

Code extract(const QString& archive, const QString& folder, std::int64_t remaining) {
    const Reader reader = openZip(archive);
    const Writer writer(archive_write_disk_new(), &archive_write_free);
    if (!reader || !writer) {
        return invalid;
    }
    archive_write_disk_set_options(writer.get(), ARCHIVE_EXTRACT_PERM | ARCHIVE_EXTRACT_TIME |
                                                     ARCHIVE_EXTRACT_SECURE_SYMLINKS | ARCHIVE_EXTRACT_SECURE_NODOTDOT);
    // ARCHIVE_EXTRACT_SECURE_SYMLINKS also rejects links in the path of the destination.
    const std::string root = QFile::encodeName(QFileInfo(folder).canonicalFilePath()).toStdString() + "/";
    archive_entry* entry = nullptr;
    int result = ARCHIVE_FATAL;
    while ((result = nextHeader(reader.get(), &entry)) == ARCHIVE_OK) {
        const auto name = normalisedName(entry);
        if (!name || !isAllowed(entry)) {
            return invalid;
        }
        archive_entry_copy_pathname(entry, (root + *name).c_str());
        archive_entry_set_perm(entry, archive_entry_perm(entry) & ~mode_t{S_IWGRP | S_IWOTH});
        if (archive_write_header(writer.get(), entry) != ARCHIVE_OK) {
            return writeError(writer.get());
        }
        if (const Code code = copyContents(reader.get(), writer.get(), remaining); code != 0) {
            return code;
        }
        if (archive_write_finish_entry(writer.get()) != ARCHIVE_OK) {
            return writeError(writer.get());
        }
    }
    if (result != ARCHIVE_EOF) {
        return invalid;
    }
    return archive_write_close(writer.get()) == ARCHIVE_OK ? 0 : writeError(writer.get());
}

} // namespace

std::expected<void, UpdateError> unpackZip(const QString& archive, const QString& folder, ArchiveLimits limits) {
    // libarchive converts names marked as UTF-8 to the thread's locale, and fails where it can't.
    const Locale utf8 = utf8Locale();
    const locale_t previous = uselocale(utf8.get());
    const Code code = isSafe(archive, limits) ? extract(archive, folder, limits.bytes) : invalid;
    uselocale(previous);
    if (code != 0) {
        return std::unexpected(code == invalid ? UpdateError{.kind = UpdateError::Kind::noApp}
                                               : UpdateError::other(qt_error_string(code)));
    }
    return {};
}

} // namespace tunedeck
