#include "TunedeckCore/Support/Files/RemoveTree.h"

#include <QFile>

#include <filesystem>
#include <system_error>
#include <vector>

namespace tunedeck {

namespace {

namespace fs = std::filesystem;

/// Not fs::remove_all(), which never returns where a removed file appears again under another name, as an open one does
/// on FUSE.
bool removeTree(const fs::path& path) {
    std::error_code error;
    if (fs::is_directory(fs::symlink_status(path, error))) {
        fs::permissions(path, fs::perms::owner_all, fs::perm_options::add, error); // else its contents can't be removed
        std::vector<fs::path> entries;
        for (fs::directory_iterator entry(path, error), end; !error && entry != end; entry.increment(error)) {
            entries.push_back(entry->path());
        }
        for (const auto& entry : entries) {
            removeTree(entry);
        }
    }
    fs::remove(path, error);
    return !error;
}

} // namespace

bool removeTree(const QString& path) {
    return removeTree(fs::path(QFile::encodeName(path).toStdString()));
}

} // namespace tunedeck
