#include "DemoService/World/Clock.h"

#include <array>
#include <cstdio>

namespace tunedeck::demo {

using namespace std::chrono;

Moment currentMoment() {
    return floor<milliseconds>(system_clock::now());
}

Moment wholeSecond(Moment moment) {
    return floor<seconds>(moment);
}

std::string isoText(Moment moment) {
    const auto day = floor<days>(moment);
    const year_month_day date{day};
    const hh_mm_ss time{moment - day};
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02u-%02uT%02d:%02d:%02d", static_cast<int>(date.year()),
                  static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                  static_cast<int>(time.hours().count()), static_cast<int>(time.minutes().count()),
                  static_cast<int>(time.seconds().count()));
    std::string result = text.data();
    if (const auto fraction = static_cast<int>(time.subseconds().count()); fraction != 0) {
        std::snprintf(text.data(), text.size(), ".%03d", fraction);
        result += text.data();
    }
    return result + "Z";
}

std::optional<Moment> fromIsoText(std::string_view text) {
    int y = 0;
    int hour = 0;
    int minute = 0;
    int second = 0;
    int fraction = 0;
    unsigned month = 0;
    unsigned day = 0;
    const std::string copy(text);
    if (std::sscanf(copy.c_str(), "%4d-%2u-%2uT%2d:%2d:%2d.%3d", &y, &month, &day, &hour, &minute, &second, &fraction) <
        6) {
        return std::nullopt;
    }
    const year_month_day date{year{y}, std::chrono::month{month}, std::chrono::day{day}};
    if (!date.ok()) {
        return std::nullopt;
    }
    const Moment moment = sys_days{date} + hours{hour} + minutes{minute} + seconds{second} + milliseconds{fraction};
    // Only the exact form comes back the same: this refuses what the lenient scan let through.
    return isoText(moment) == text ? std::optional(moment) : std::nullopt;
}

} // namespace tunedeck::demo
