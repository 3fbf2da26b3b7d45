#pragma once

#include <filesystem>
#include <string>

namespace tunedeck::soak {

/// A file that lines are appended to, each whole even when the process is killed right after.
class Trail {
public:
    explicit Trail(const std::filesystem::path& file);
    ~Trail();
    Trail(const Trail&) = delete;
    Trail& operator=(const Trail&) = delete;

    /// `line` without its end.
    void note(std::string line) const;

private:
    int m_file;
};

/// The files of a soak, in its home folder.
struct Files {
    std::filesystem::path home;

    [[nodiscard]] std::filesystem::path folder() const { return home / ".soak"; }
    [[nodiscard]] std::filesystem::path timeline() const { return folder() / "timeline"; }
    [[nodiscard]] std::filesystem::path seed() const { return folder() / "seed"; }
    /// How often the service was started; the file has that many bytes.
    [[nodiscard]] std::filesystem::path starts() const { return folder() / "starts"; }
    /// What the service served, see Service/Served.h.
    [[nodiscard]] std::filesystem::path served() const { return folder() / "served"; }
    /// The rounds of the follow loop, see Application/Rounds.h.
    [[nodiscard]] std::filesystem::path rounds() const { return folder() / "rounds"; }
    /// What happened to the application, one line each.
    [[nodiscard]] std::filesystem::path weather() const { return folder() / "weather"; }
    [[nodiscard]] std::filesystem::path complaints() const { return folder() / "complaints"; }
    [[nodiscard]] std::filesystem::path notifications() const { return home / ".tunedeck" / "notifications.log"; }
};

} // namespace tunedeck::soak
