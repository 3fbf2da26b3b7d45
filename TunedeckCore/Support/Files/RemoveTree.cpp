#include "TunedeckCore/Support/Files/RemoveTree.h"

#include <QFile>

#include <filesystem>
#include <system_error>

namespace tunedeck {

namespace {

namespace fs = std::filesystem;

/// Makes a folder and its subfolders readable and writable, so that their contents can be removed.
void makeAccessible(const fs::path& folder) {
    std::error_code ignored;
    if (fs::is_directory(fs::symlink_status(folder, ignored))) {
        fs::permissions(folder, fs::perms::owner_all, fs::perm_options::add, ignored);
        for (fs::directory_iterator entry(folder, ignored), end; !ignored && entry != end; entry.increment(ignored)) {
            makeAccessible(entry->path());
        }
    }
}

} // namespace

bool removeTree(const QString& path) {
    const fs::path tree(QFile::encodeName(path).toStdString());
    std::error_code error;
    fs::remove_all(tree, error);
    if (error) {
        makeAccessible(tree);
        fs::remove_all(tree, error);
    }
    return !error;
}

} // namespace tunedeck
