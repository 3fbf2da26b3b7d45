#include "DemoService/Files/Files.h"

#include <unistd.h>

#include <fstream>
#include <iterator>

namespace tunedeck::demo {

namespace {

constexpr std::uintmax_t largestFile = 16U << 20U;

} // namespace

std::optional<std::string> readFile(const std::filesystem::path& path) {
    std::error_code error;
    // Anything but a regular file could block for ever.
    if (!std::filesystem::is_regular_file(path, error) || std::filesystem::file_size(path, error) > largestFile) {
        return std::nullopt;
    }
    std::ifstream file(path, std::ios::binary);
    std::string text{std::istreambuf_iterator(file), {}};
    return file.is_open() && !file.bad() ? std::optional(std::move(text)) : std::nullopt;
}

std::string writeFileAtomically(const std::filesystem::path& path, std::string_view text) {
    std::error_code error;
    std::filesystem::create_directories(path.parent_path(), error);
    std::filesystem::path temporary = path;
    temporary += "." + std::to_string(::getpid()) + ".new";
    {
        std::ofstream file(temporary, std::ios::binary | std::ios::trunc);
        file.write(text.data(), static_cast<std::streamsize>(text.size()));
        if (!file.flush()) {
            std::filesystem::remove(temporary, error);
            return "couldn't write " + temporary.string();
        }
    }
    std::filesystem::rename(temporary, path, error);
    if (error) {
        std::error_code ignored;
        std::filesystem::remove(temporary, ignored);
        return "couldn't replace " + path.string() + ": " + error.message();
    }
    return {};
}

} // namespace tunedeck::demo
