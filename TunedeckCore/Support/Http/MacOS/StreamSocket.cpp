#include "TunedeckCore/Support/Http/StreamSocket.h"

#include <fcntl.h>
#include <sys/socket.h>

namespace tunedeck {

FileDescriptor streamSocket(int family) {
    FileDescriptor opened(::socket(family, SOCK_STREAM, 0));
    const int noSignal = 1;
    const bool isReady = opened && ::fcntl(opened.get(), F_SETFD, FD_CLOEXEC) == 0 &&
                         ::fcntl(opened.get(), F_SETFL, O_NONBLOCK) == 0 &&
                         ::setsockopt(opened.get(), SOL_SOCKET, SO_NOSIGPIPE, &noSignal, sizeof noSignal) == 0;
    return isReady ? std::move(opened) : FileDescriptor();
}

ssize_t sendBytes(int socket, const QByteArray& bytes) {
    return ::send(socket, bytes.constData(), static_cast<std::size_t>(bytes.size()), 0);
}

} // namespace tunedeck
