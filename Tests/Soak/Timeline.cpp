#include "Tests/Soak/Timeline.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <time.h>
#include <unistd.h>

#include <atomic>
#include <cstdint>
#include <stdexcept>
#include <utility>

namespace tunedeck::soak {

using namespace std::chrono_literals;
using std::chrono::milliseconds;
using std::chrono::nanoseconds;

namespace {

/// How long the machine is said to have been up at the beginning: nobody has only just logged in.
constexpr nanoseconds upBefore = 1h;

} // namespace

struct Timeline::Shared {
    std::int64_t start;      ///< realTime() at the beginning
    std::int64_t startEpoch; ///< the time of day then, in milliseconds
    double speed;
    std::atomic<std::int64_t> asleep; ///< nanoseconds
};

nanoseconds realTime() {
    timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return std::chrono::seconds(time.tv_sec) + nanoseconds(time.tv_nsec);
}

Timeline Timeline::begin(const std::filesystem::path& file, double speed) {
    const int descriptor = ::open(file.c_str(), O_RDWR | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    if (descriptor < 0 || ::ftruncate(descriptor, sizeof(Shared)) != 0) {
        throw std::runtime_error("the file of the time can't be made");
    }
    ::close(descriptor);
    Timeline timeline(file);
    const auto today = std::chrono::system_clock::now().time_since_epoch();
    timeline.m_shared->start = realTime().count();
    timeline.m_shared->startEpoch = std::chrono::floor<milliseconds>(today).count();
    timeline.m_shared->speed = speed;
    return timeline;
}

Timeline::Timeline(const std::filesystem::path& file) {
    const int descriptor = ::open(file.c_str(), O_RDWR | O_CLOEXEC);
    void* memory = descriptor < 0 ? MAP_FAILED
                                  : ::mmap(nullptr, sizeof(Shared), PROT_READ | PROT_WRITE, MAP_SHARED, descriptor, 0);
    ::close(descriptor);
    if (memory == MAP_FAILED) {
        throw std::runtime_error("there is no file of the time");
    }
    m_shared = static_cast<Shared*>(memory);
}

Timeline::~Timeline() {
    if (m_shared != nullptr) {
        ::munmap(m_shared, sizeof(Shared));
    }
}

Timeline::Timeline(Timeline&& other) noexcept : m_shared(std::exchange(other.m_shared, nullptr)) {}

double Timeline::speed() const {
    return m_shared->speed;
}

nanoseconds Timeline::awake() const {
    const auto passed = static_cast<double>(realTime().count() - m_shared->start) * m_shared->speed;
    return upBefore + nanoseconds(static_cast<std::int64_t>(passed));
}

nanoseconds Timeline::uptime() const {
    return awake() + nanoseconds(m_shared->asleep.load());
}

milliseconds Timeline::sinceEpoch() const {
    return milliseconds(m_shared->startEpoch) + std::chrono::floor<milliseconds>(uptime() - upBefore);
}

void Timeline::slept(nanoseconds duration) {
    m_shared->asleep += duration.count();
}

} // namespace tunedeck::soak
