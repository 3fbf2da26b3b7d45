#pragma once

#include <string>
#include <string_view>

namespace tunedeck::demo {

/// "1 track", "5 tracks".
inline std::string counted(int count, std::string_view noun) {
    return std::to_string(count) + " " + std::string(noun) + (count == 1 ? "" : "s");
}

/// The text in typographic quotation marks.
inline std::string inQuotes(std::string_view text) {
    return "“" + std::string(text) + "”";
}

} // namespace tunedeck::demo
