#include "TunedeckMenu/App/QuitSignals.h"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <tuple>

namespace tunedeck {

namespace {

constexpr std::array handled{SIGTERM, SIGINT, SIGHUP};

// A signal handler can only reach global variables.
std::atomic<int> pipeEnd{-1}; // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)
static_assert(std::atomic<int>::is_always_lock_free);

void report(int) {
    const int before = errno;
    std::ignore = ::write(pipeEnd.load(), "q", 1);
    errno = before;
}

void handleWith(void (*handler)(int)) {
    struct sigaction action{};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    ::sigemptyset(&action.sa_mask);
    for (const int signal : handled) {
        ::sigaction(signal, &action, nullptr);
    }
}

} // namespace

QuitSignals::QuitSignals(QObject* parent) : QObject(parent) {
    std::array<int, 2> ends{-1, -1};
    if (::pipe(ends.data()) != 0) {
        return; // the signals keep their default action
    }
    for (const int end : ends) {
        ::fcntl(end, F_SETFD, FD_CLOEXEC);
        ::fcntl(end, F_SETFL, O_NONBLOCK);
    }
    m_read = FileDescriptor(ends[0]);
    m_write = FileDescriptor(ends[1]);
    pipeEnd = m_write.get();
    handleWith(report);
}

QuitSignals::~QuitSignals() {
    if (m_write) {
        handleWith(SIG_DFL);
        pipeEnd = -1;
    }
}

void QuitSignals::listen() {
    if (!m_read || m_notifier) {
        return;
    }
    m_notifier = std::make_unique<QSocketNotifier>(m_read.get(), QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, [this] {
        std::array<char, 16> bytes{};
        std::ignore = ::read(m_read.get(), bytes.data(), bytes.size());
        Q_EMIT received();
    });
}

} // namespace tunedeck
