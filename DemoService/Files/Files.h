#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace tunedeck::demo {

/// The whole of a regular file of at most 16 MiB; nothing when it can't be read.
std::optional<std::string> readFile(const std::filesystem::path& path);

/// Writes a file whole or not at all, by renaming a temporary sibling over it; makes its folder first. Returns what
/// went wrong, or an empty text.
std::string writeFileAtomically(const std::filesystem::path& path, std::string_view text);

} // namespace tunedeck::demo
