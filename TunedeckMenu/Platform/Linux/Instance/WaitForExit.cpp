#include "TunedeckMenu/Platform/WaitForExit.h"

#include "TunedeckCore/Support/Files/FileDescriptor.h"

#include <QDeadlineTimer>

#include <poll.h>
#include <signal.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <thread>

namespace tunedeck {

using namespace std::chrono_literals;

bool waitForExit(qint64 processId, std::chrono::milliseconds timeout) {
    const auto process = static_cast<pid_t>(processId);
    if (process <= 0) {
        return true;
    }
    const QDeadlineTimer deadline(timeout, Qt::PreciseTimer);
    const FileDescriptor handle(static_cast<int>(::syscall(SYS_pidfd_open, process, 0)));
    if (!handle && errno == ESRCH) {
        return true;
    }
    do {
        if (handle) {
            pollfd waiting{handle.get(), POLLIN, 0};
            if (::poll(&waiting, 1, static_cast<int>(std::max<qint64>(0, deadline.remainingTime()))) > 0) {
                return true;
            }
        } else if (::kill(process, 0) != 0 && errno == ESRCH) { // a kernel without process descriptors
            return true;
        } else {
            std::this_thread::sleep_for(20ms);
        }
    } while (!deadline.hasExpired());
    return false;
}

} // namespace tunedeck
