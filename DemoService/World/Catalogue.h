#pragma once

#include <span>
#include <string_view>

namespace tunedeck::demo::catalogue {

/// Names of playlists that requests ask for.
std::span<const std::string_view> playlists();

/// Reasons why a download fails, as the service words them.
std::span<const std::string_view> downloadFailures();

/// Reasons why a change can't be put into the library.
std::span<const std::string_view> libraryFailures();

/// Names of the people who pair a Telegram chat.
std::span<const std::string_view> telegramNames();

} // namespace tunedeck::demo::catalogue
