#include "TunedeckCore/Support/Http/StreamSocket.h"

#include <sys/socket.h>

namespace tunedeck {

FileDescriptor streamSocket(int family) {
    return FileDescriptor(::socket(family, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
}

ssize_t sendBytes(int socket, const QByteArray& bytes) {
    return ::send(socket, bytes.constData(), static_cast<std::size_t>(bytes.size()), MSG_NOSIGNAL);
}

} // namespace tunedeck
