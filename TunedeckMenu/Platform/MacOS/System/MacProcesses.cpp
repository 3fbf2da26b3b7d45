#include "TunedeckMenu/Platform/MacOS/System/MacProcesses.h"

#include "TunedeckCore/Support/Files/FileDescriptor.h"
#include "TunedeckMenu/Platform/Processes.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QFileInfo>

#include <libproc.h>
#include <sys/event.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>

namespace tunedeck {

namespace {

/// Nothing for processes of other users.
std::optional<proc_bsdinfo> factsOf(pid_t process) {
    proc_bsdinfo facts{};
    const int size = sizeof facts;
    return ::proc_pidinfo(process, PROC_PIDTBSDINFO, 0, &facts, size) == size && facts.pbi_uid == ::getuid()
               ? std::optional(facts)
               : std::nullopt;
}

} // namespace

QString ownProgramPath(pid_t process) {
    std::array<char, PROC_PIDPATHINFO_MAXSIZE> path{};
    return factsOf(process) && ::proc_pidpath(process, path.data(), path.size()) > 0 ? QFile::decodeName(path.data())
                                                                                     : QString();
}

std::optional<QDateTime> startOf(pid_t process) {
    const auto facts = factsOf(process);
    return facts ? std::optional(QDateTime::fromSecsSinceEpoch(static_cast<qint64>(facts->pbi_start_tvsec), Qt::UTC))
                 : std::nullopt;
}

std::vector<pid_t> processesRunning(const QString& program) {
    const QFileInfo file(program);
    const auto path = QFileInfo(file.path()).canonicalFilePath() + u'/' + file.fileName();
    // Some room, because processes may start between the two calls.
    std::vector<pid_t> processes(static_cast<std::size_t>(std::max(0, ::proc_listallpids(nullptr, 0))) + 64);
    const int count = ::proc_listallpids(processes.data(), static_cast<int>(processes.size() * sizeof(pid_t)));
    processes.resize(static_cast<std::size_t>(std::max(0, count)));
    std::erase_if(processes, [&path](pid_t process) { return process <= 0 || ownProgramPath(process) != path; });
    return processes;
}

void terminateSameProgram(qint64 processId) {
    const auto process = static_cast<pid_t>(processId);
    const auto program = process > 0 ? QFileInfo(ownProgramPath(process)).fileName() : QString();
    if (!program.isEmpty() && program == QFileInfo(ownProgramPath(::getpid())).fileName()) {
        ::kill(process, SIGTERM);
    }
}

bool waitForExit(qint64 processId, std::chrono::milliseconds timeout) {
    if (processId <= 0) {
        return true;
    }
    const QDeadlineTimer deadline(timeout, Qt::PreciseTimer);
    const FileDescriptor queue(::kqueue());
    const struct kevent wanted{.ident = static_cast<uintptr_t>(processId),
                               .filter = EVFILT_PROC,
                               .flags = EV_ADD | EV_ONESHOT,
                               .fflags = NOTE_EXIT,
                               .data = 0,
                               .udata = nullptr};
    if (::kevent(queue.get(), &wanted, 1, nullptr, 0, nullptr) != 0) {
        return errno == ESRCH;
    }
    struct kevent ended{};
    int count = 0;
    do {
        const auto left = std::max<qint64>(0, deadline.remainingTimeNSecs());
        const timespec wait{.tv_sec = static_cast<time_t>(left / 1'000'000'000),
                            .tv_nsec = static_cast<long>(left % 1'000'000'000)};
        count = ::kevent(queue.get(), nullptr, 0, &ended, 1, &wait);
    } while (count < 0 && errno == EINTR);
    return count > 0;
}

} // namespace tunedeck
