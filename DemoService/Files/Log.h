#pragma once

#include <chrono>
#include <string>
#include <string_view>

namespace tunedeck::demo {

enum class Level { debug, info, warn, error };

/// One line of the service's log, without its time.
struct LogLine {
    Level level;
    std::string target;
    std::string message;
};

/// "2026-11-21T09:00:00.000000Z  INFO tunedeck::jobs: message" with a line feed; control characters in the message
/// become spaces, so that one line stays one line.
std::string logText(const LogLine& line, std::chrono::sys_time<std::chrono::microseconds> time);

/// The lowest level to write, by a filter such as "tunedeck=info" or "debug" (the variable RUST_LOG); info by default.
Level levelOf(std::string_view filter);

/// Writes lines of at least its level to standard error, each in one piece. May be used from any thread.
class Log {
public:
    explicit Log(Level least) : m_least(least) {}
    void write(const LogLine& line) const;

private:
    Level m_least;
};

} // namespace tunedeck::demo
