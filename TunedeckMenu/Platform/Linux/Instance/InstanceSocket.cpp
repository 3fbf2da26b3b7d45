#include "TunedeckMenu/Platform/Linux/Instance/InstanceSocket.h"

#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace tunedeck::instance {
namespace {

// The address of a path. One that is too long for it goes through the folder's descriptor, which `folder` keeps open.
std::optional<sockaddr_un> addressOf(const QString& path, FileDescriptor& folder) {
    auto name = QFile::encodeName(path);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (static_cast<std::size_t>(name.size()) >= sizeof address.sun_path) {
        const QFileInfo info(path);
        folder = FileDescriptor(::open(QFile::encodeName(info.path()).constData(), O_PATH | O_DIRECTORY | O_CLOEXEC));
        name = "/proc/self/fd/" + QByteArray::number(folder.get()) + '/' + QFile::encodeName(info.fileName());
        if (!folder || static_cast<std::size_t>(name.size()) >= sizeof address.sun_path) {
            return std::nullopt;
        }
    }
    std::memcpy(address.sun_path, name.constData(), static_cast<std::size_t>(name.size()));
    return address;
}

const sockaddr* generic(const sockaddr_un& address) {
    return reinterpret_cast<const sockaddr*>(&address);
}

bool awaitReadable(int descriptor, const QDeadlineTimer& deadline) {
    for (;;) {
        pollfd waiting{descriptor, POLLIN, 0};
        const int ready = ::poll(&waiting, 1, static_cast<int>(std::max<qint64>(0, deadline.remainingTime())));
        if (ready > 0) {
            return true;
        }
        if (ready == 0 || errno != EINTR) {
            return false;
        }
    }
}

} // namespace

QByteArray Request::line() const {
    return token.isEmpty() ? word + '\n' : word + ' ' + token + '\n';
}

std::optional<Request> Request::parse(const QByteArray& line) {
    const auto space = line.indexOf(' ');
    Request request{space < 0 ? line : line.left(space), space < 0 ? QByteArray() : line.mid(space + 1)};
    const bool isWord = !request.word.isEmpty() && request.word.size() <= 32 &&
                        std::ranges::all_of(request.word, [](char c) { return c >= 'a' && c <= 'z'; });
    return isWord ? std::optional(std::move(request)) : std::nullopt;
}

std::optional<Lock> takeLock(const QString& path) {
    const auto name = QFile::encodeName(path);
    for (int attempt = 0; attempt < 10; ++attempt) {
        FileDescriptor file(::open(name.constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600));
        if (!file) {
            return std::nullopt;
        }
        if (::flock(file.get(), LOCK_EX | LOCK_NB) != 0) {
            return errno == EWOULDBLOCK ? std::optional(Lock{}) : std::nullopt;
        }
        // A lock on a file that somebody removed meanwhile would shut nobody out.
        struct stat mine{};
        struct stat named{};
        if (::fstat(file.get(), &mine) == 0 && ::lstat(name.constData(), &named) == 0 && mine.st_ino == named.st_ino &&
            mine.st_dev == named.st_dev) {
            return Lock{std::move(file)};
        }
    }
    return std::nullopt;
}

FileDescriptor listenAt(const QString& path) {
    FileDescriptor folder;
    const auto address = addressOf(path, folder);
    FileDescriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
    if (!address || !socket) {
        return {};
    }
    ::unlink(address->sun_path);
    const auto mask = ::umask(0177);
    const bool bound = ::bind(socket.get(), generic(*address), sizeof *address) == 0;
    ::umask(mask);
    return bound && ::listen(socket.get(), 16) == 0 ? std::move(socket) : FileDescriptor();
}

bool isOwnUser(int descriptor) {
    ucred peer{};
    socklen_t size = sizeof peer;
    return ::getsockopt(descriptor, SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 && peer.uid == ::getuid();
}

Delivery deliver(const QString& path, const Request& request, const QDeadlineTimer& deadline) {
    FileDescriptor folder;
    const auto address = addressOf(path, folder);
    const FileDescriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
    if (!address || !socket || ::connect(socket.get(), generic(*address), sizeof *address) != 0 ||
        !isOwnUser(socket.get())) {
        return Delivery::refused;
    }
    const auto line = request.line();
    if (::send(socket.get(), line.constData(), static_cast<std::size_t>(line.size()), MSG_NOSIGNAL) != line.size()) {
        return Delivery::refused;
    }
    if (!awaitReadable(socket.get(), deadline)) {
        return Delivery::silent;
    }
    char answer[3] = {};
    return ::recv(socket.get(), answer, sizeof answer, 0) == 3 && std::memcmp(answer, "ok\n", 3) == 0
               ? Delivery::taken
               : Delivery::refused;
}

} // namespace tunedeck::instance
