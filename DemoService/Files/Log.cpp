#include "DemoService/Files/Log.h"

#include "DemoService/World/Clock.h"

#include <unistd.h>

#include <array>
#include <cstdio>

namespace tunedeck::demo {

namespace {

constexpr std::array levelWords{"DEBUG", " INFO", " WARN", "ERROR"};

} // namespace

std::string logText(const LogLine& line, std::chrono::sys_time<std::chrono::microseconds> time) {
    std::string text = isoText(std::chrono::floor<std::chrono::seconds>(time));
    text.pop_back();
    std::array<char, 16> fraction{};
    std::snprintf(fraction.data(), fraction.size(), ".%06dZ ",
                  static_cast<int>(time.time_since_epoch().count() % 1'000'000));
    text += fraction.data();
    text += levelWords[static_cast<std::size_t>(line.level)];
    text += " " + line.target + ": ";
    for (const char c : line.message) {
        text += static_cast<unsigned char>(c) < 0x20 || c == 0x7F ? ' ' : c;
    }
    return text + "\n";
}

Level levelOf(std::string_view filter) {
    const std::string_view word = filter.substr(filter.rfind('=') + 1);
    if (word == "debug" || word == "trace") {
        return Level::debug;
    }
    if (word == "warn") {
        return Level::warn;
    }
    return word == "error" ? Level::error : Level::info;
}

void Log::write(const LogLine& line) const {
    if (line.level < m_least) {
        return;
    }
    const std::string text =
        logText(line, std::chrono::floor<std::chrono::microseconds>(std::chrono::system_clock::now()));
    // A log that can't be written is no reason to stop serving.
    [[maybe_unused]] const auto written = ::write(STDERR_FILENO, text.data(), text.size());
}

} // namespace tunedeck::demo
