#include "DemoService/World/DownloadFolder.h"

#include "DemoService/Files/JsonFile.h"
#include "DemoService/World/StepContext.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <sys/statvfs.h>
#include <unistd.h>

#include <cerrno>

namespace tunedeck::demo {

using namespace Qt::StringLiterals;

namespace {

/// Why no file can be created in a folder, as a sentence. Doesn't change the folder.
std::optional<QString> whyNotWritable(const QString& path) {
    const QFileInfo folder(path);
    if (!folder.exists()) {
        return u"The folder doesn't exist. Is its drive connected?"_s;
    }
    if (!folder.isDir()) {
        return inQuotes(folder.fileName()) + u" isn't a folder."_s;
    }
    const QByteArray name = QFile::encodeName(path);
    if (::access(name.constData(), W_OK | X_OK) != 0) {
        return u"tunedeck can't write to this folder: "_s + qt_error_string(errno) + u'.';
    }
    struct statvfs space{};
    if (::statvfs(name.constData(), &space) == 0 && space.f_blocks > 0 && space.f_bavail == 0) {
        return u"The disk is full."_s;
    }
    return std::nullopt;
}

} // namespace

DownloadFolder DownloadFolder::current(const HomePaths& paths, const std::optional<DownloadFolder>& staged) {
    DownloadFolder folder{.downloadDir = readObject(paths.settingsFile()).text("download_dir"_L1).value_or(QString()),
                          .downloadDirSource = u"settings"_s};
    if (folder.downloadDir.isEmpty()) {
        if (staged) {
            return *staged;
        }
        folder = {.downloadDir = paths.defaultDownloads(), .downloadDirSource = u"default"_s};
        QDir().mkpath(folder.downloadDir);
    }
    folder.downloadDirError = whyNotWritable(folder.downloadDir);
    folder.downloadDirWritable = !folder.downloadDirError;
    return folder;
}

} // namespace tunedeck::demo
