#include "DemoService/World/Catalogue.h"

#include <array>

namespace tunedeck::demo::catalogue {

using namespace std::string_view_literals;

std::span<const std::string_view> playlists() {
    static constexpr std::array names{"Friday"sv,         "Warm-up"sv,        "Peak Time"sv,     "Closing"sv,
                                      "House Classics"sv, "Sunday Rooftop"sv, "Drum & Bass"sv,   "Wedding Anna & Tom"sv,
                                      "Disco Edits"sv,    "Afterhours"sv,     "New This Week"sv, "Café del Sol"sv};
    return names;
}

std::span<const std::string_view> downloadFailures() {
    static constexpr std::array texts{
        "yt-dlp: this video isn't available in your country"sv,
        "spotdl: no match found for 3 of 3 tracks"sv,
        "The link is private or doesn't exist any more."sv,
        "The connection was lost while downloading. Ask for it again to retry."sv,
    };
    return texts;
}

std::span<const std::string_view> libraryFailures() {
    static constexpr std::array texts{
        "The library database is locked by another program."sv,
        "The playlist was changed in Rekordbox in the meantime."sv,
    };
    return texts;
}

std::span<const std::string_view> telegramNames() {
    static constexpr std::array names{"dj_nightowl"sv, "anna_spins"sv, "vinyl_tom"sv};
    return names;
}

} // namespace tunedeck::demo::catalogue
