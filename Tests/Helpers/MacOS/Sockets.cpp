#include "Tests/Helpers/Sockets.h"

#include <poll.h>
#include <sys/socket.h>

namespace tunedeck::test {

const short peerClosed = POLLHUP;

ssize_t sendNow(int socket, const char* bytes, std::size_t size) {
    const int noSignal = 1;
    ::setsockopt(socket, SOL_SOCKET, SO_NOSIGPIPE, &noSignal, sizeof noSignal);
    return ::send(socket, bytes, size, MSG_DONTWAIT);
}

} // namespace tunedeck::test
