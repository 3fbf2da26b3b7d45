#pragma once

#include "DemoService/Files/HomePaths.h"
#include "TunedeckCore/Support/Json/Record.h"

#include <QString>

#include <optional>
#include <tuple>

namespace tunedeck::demo {

/// The folder for downloads, as the status document describes it.
struct DownloadFolder {
    QString path;
    QString source; ///< "settings" when the user chose it, otherwise "default"
    bool writable = true;
    std::optional<QString> error;

    /// The folder that the settings file names as "download_dir", else `staged`, else the default folder, which is
    /// created if needed. Checks whether it is writable, except for a staged folder.
    static DownloadFolder current(const HomePaths& paths, const std::optional<DownloadFolder>& staged);
};

} // namespace tunedeck::demo

template<>
struct tunedeck::json::Members<tunedeck::demo::DownloadFolder> {
    using Folder = demo::DownloadFolder;
    static constexpr auto list =
        std::tuple{member("download_dir", &Folder::path), member("download_dir_source", &Folder::source),
                   member("download_dir_writable", &Folder::writable), member("download_dir_error", &Folder::error)};
};
