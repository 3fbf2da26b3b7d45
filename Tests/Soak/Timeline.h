#pragma once

#include <chrono>
#include <filesystem>

namespace tunedeck::soak {

/// The machine's monotonic time; the same in every process.
std::chrono::nanoseconds realTime();

/// The time of a soak: it runs some times faster than the machine's, and its sleep can be told to have happened. Kept
/// in a file that the processes share.
class Timeline {
public:
    /// Begins a new one at the present time of day.
    static Timeline begin(const std::filesystem::path& file, double speed);
    /// Joins the one in the file; throws std::runtime_error when there is none.
    explicit Timeline(const std::filesystem::path& file);
    ~Timeline();
    Timeline(Timeline&& other) noexcept;
    Timeline& operator=(Timeline&&) = delete;
    Timeline(const Timeline&) = delete;
    Timeline& operator=(const Timeline&) = delete;

    [[nodiscard]] double speed() const;
    /// Since the machine is said to have been started: without and with the time that it slept.
    [[nodiscard]] std::chrono::nanoseconds awake() const;
    [[nodiscard]] std::chrono::nanoseconds uptime() const;
    /// The time of day, since 1970 in UTC.
    [[nodiscard]] std::chrono::milliseconds sinceEpoch() const;
    /// The machine has slept so long.
    void slept(std::chrono::nanoseconds duration);

private:
    struct Shared;
    Shared* m_shared;
};

} // namespace tunedeck::soak
