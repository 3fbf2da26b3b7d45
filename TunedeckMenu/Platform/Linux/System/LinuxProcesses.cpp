#include "TunedeckMenu/Platform/Linux/System/LinuxProcesses.h"

#include "TunedeckCore/Support/Files/FileDescriptor.h"
#include "TunedeckMenu/Platform/Processes.h"

#include <QDeadlineTimer>
#include <QFile>

#include <poll.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <thread>

namespace tunedeck {

using namespace std::chrono_literals;

namespace {

QByteArray fileName(const QByteArray& path) {
    return path.mid(path.lastIndexOf('/') + 1);
}

} // namespace

QByteArray ownProgramPath(pid_t process) {
    const auto folder = "/proc/" + QByteArray::number(process);
    struct stat info{};
    if (::stat(folder.constData(), &info) != 0 || info.st_uid != ::getuid()) {
        return {};
    }
    QByteArray path(PATH_MAX, Qt::Uninitialized);
    path.truncate(std::max<ssize_t>(0, ::readlink((folder + "/exe").constData(), path.data(), PATH_MAX)));
    const QByteArray deleted(" (deleted)"); // the kernel's suffix
    return path.endsWith(deleted) ? path.chopped(deleted.size()) : path;
}

bool runsFile(const QByteArray& process, const QString& path) {
    struct stat running{};
    struct stat onDisk{};
    return ::stat(("/proc/" + process + "/exe").constData(), &running) == 0 &&
           ::stat(QFile::encodeName(path).constData(), &onDisk) == 0 && running.st_ino == onDisk.st_ino &&
           running.st_dev == onDisk.st_dev;
}

void terminateSameProgram(qint64 processId) {
    const auto process = static_cast<pid_t>(processId);
    const auto program = process > 0 ? fileName(ownProgramPath(process)) : QByteArray();
    if (!program.isEmpty() && program == fileName(ownProgramPath(::getpid()))) {
        ::kill(process, SIGTERM);
    }
}

bool waitForExit(qint64 processId, std::chrono::milliseconds timeout) {
    const auto process = static_cast<pid_t>(processId);
    if (process <= 0) {
        return true;
    }
    const QDeadlineTimer deadline(timeout, Qt::PreciseTimer);
    const FileDescriptor handle(static_cast<int>(::syscall(SYS_pidfd_open, process, 0)));
    do {
        if (handle) {
            pollfd waiting{handle.get(), POLLIN, 0};
            if (::poll(&waiting, 1, static_cast<int>(std::max<qint64>(0, deadline.remainingTime()))) > 0) {
                return true;
            }
        } else if (::kill(process, 0) != 0 && errno == ESRCH) { // or a kernel without pidfd_open()
            return true;
        } else {
            std::this_thread::sleep_for(20ms);
        }
    } while (!deadline.hasExpired());
    return false;
}

} // namespace tunedeck
