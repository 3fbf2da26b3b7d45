#pragma once

#include "DemoService/Files/HomePaths.h"
#include "TunedeckCore/Support/Json/Members.h"

#include <QString>

#include <optional>

namespace tunedeck::demo {

/// The folder for downloads, as the status document describes it.
struct DownloadFolder {
    QString downloadDir;
    QString downloadDirSource; ///< "settings" when the user chose it, otherwise "default"
    bool downloadDirWritable = true;
    std::optional<QString> downloadDirError;

    /// The folder that the settings file names as "download_dir", else `staged`, else the default folder, which is
    /// created if needed. Checks whether it is writable, except for a staged folder.
    static DownloadFolder current(const HomePaths& paths, const std::optional<DownloadFolder>& staged);

    static constexpr auto members =
        json::members<&DownloadFolder::downloadDir, &DownloadFolder::downloadDirSource,
                      &DownloadFolder::downloadDirWritable, &DownloadFolder::downloadDirError>;
};

} // namespace tunedeck::demo
