#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace tunedeck::demo {

/// The folder that downloads go to, as the status document tells it.
struct DownloadFolder {
    std::string dir;
    /// "settings" when the user chose it, otherwise "default".
    std::string source = "default";
    bool writable = true;
    std::optional<std::string> error;

    static void members(auto& self, auto& archive) {
        archive("download_dir", self.dir);
        archive("download_dir_source", self.source);
        archive("download_dir_writable", self.writable);
        archive("download_dir_error", self.error);
    }
};

/// The user's files that the service reads or writes, under one home folder.
struct HomePaths {
    std::filesystem::path home;

    std::filesystem::path folder() const { return home / ".tunedeck"; }
    std::filesystem::path runtimeFile() const { return folder() / "runtime.json"; }
    std::filesystem::path settingsFile() const { return folder() / "settings.json"; }
    std::filesystem::path stateFile() const { return folder() / "demo-state.json"; }
    std::filesystem::path importXml() const { return folder() / "rekordbox.xml"; }
    std::filesystem::path rekordboxDb() const { return home / "Library" / "Pioneer" / "rekordbox" / "master.db"; }
    std::filesystem::path defaultDownloads() const { return home / "Music" / "Tunedeck"; }
};

/// Where downloads go now: the settings file's "download_dir", else `staged` when there is one, else the default
/// folder, which is made when it is missing. Except for a staged folder it is tried whether files can be made there.
DownloadFolder findDownloadFolder(const HomePaths& paths, const std::optional<DownloadFolder>& staged);

/// Why no file can be made in `folder`, as a sentence; nothing when one can. Leaves no trace in the folder.
std::optional<std::string> whyNotWritable(const std::filesystem::path& folder);

} // namespace tunedeck::demo
