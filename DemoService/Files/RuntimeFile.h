#pragma once

#include <sys/types.h>

#include <filesystem>
#include <string>

namespace tunedeck::demo {

/// The file that tells clients the service's port. It exists while the service runs.
class RuntimeFile {
public:
    explicit RuntimeFile(std::filesystem::path path) : m_path(std::move(path)) {}

    /// Writes port and process; returns what went wrong, or an empty text.
    std::string publish(int port, pid_t process);
    /// Removes the file, unless another process has published itself there in the meantime.
    void withdraw(pid_t process);

private:
    std::filesystem::path m_path;
};

} // namespace tunedeck::demo
