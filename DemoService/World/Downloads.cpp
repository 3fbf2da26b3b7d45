#include "DemoService/World/Downloads.h"

#include "DemoService/Files/Files.h"
#include "DemoService/Files/Record.h"
#include "DemoService/World/Words.h"

#include <fcntl.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace tunedeck::demo {

namespace {

std::optional<std::string> chosenFolder(const std::filesystem::path& settings) {
    const auto text = readFile(settings);
    const auto document = text ? parseObject(*text) : std::nullopt;
    if (!document) {
        return std::nullopt;
    }
    const auto member = document->FindMember("download_dir");
    if (member == document->MemberEnd() || !member->value.IsString()) {
        return std::nullopt;
    }
    return std::string(member->value.GetString(), member->value.GetStringLength());
}

/// Makes a file in the folder and removes it; an error number, 0 for none.
int tryToMakeFile(const std::filesystem::path& folder) {
#ifdef O_TMPFILE
    // A file without a name doesn't touch the folder, so that its date stays and no watcher wakes.
    if (const int nameless = ::open(folder.c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, 0600); nameless >= 0) {
        ::close(nameless);
        return 0;
    }
    if (errno != EOPNOTSUPP && errno != EISDIR) {
        return errno;
    }
#endif
    std::string name = folder / ".tunedeck-probe-XXXXXX";
    const int named = ::mkstemp(name.data());
    if (named < 0) {
        return errno;
    }
    ::close(named);
    ::unlink(name.c_str());
    return 0;
}

} // namespace

std::optional<std::string> whyNotWritable(const std::filesystem::path& folder) {
    std::error_code error;
    if (!std::filesystem::exists(folder, error)) {
        return "The folder doesn't exist. Is its drive connected?";
    }
    if (!std::filesystem::is_directory(folder, error)) {
        return inQuotes(folder.filename().string()) + " isn't a folder.";
    }
    if (const int number = tryToMakeFile(folder); number != 0) {
        return "tunedeck can't write to this folder: " + std::string(std::strerror(number)) + ".";
    }
    struct statvfs space{};
    if (::statvfs(folder.c_str(), &space) == 0 && space.f_blocks > 0 && space.f_bavail == 0) {
        return "The disk is full.";
    }
    return std::nullopt;
}

DownloadFolder findDownloadFolder(const HomePaths& paths, const std::optional<DownloadFolder>& staged) {
    DownloadFolder found;
    if (auto chosen = chosenFolder(paths.settingsFile()); chosen && !chosen->empty()) {
        found.dir = std::move(*chosen);
        found.source = "settings";
    } else if (staged) {
        return *staged;
    } else {
        found.dir = paths.defaultDownloads();
        std::error_code ignored; // What it means that it couldn't be made is told below.
        std::filesystem::create_directories(found.dir, ignored);
    }
    found.error = whyNotWritable(found.dir);
    found.writable = !found.error;
    return found;
}

} // namespace tunedeck::demo
