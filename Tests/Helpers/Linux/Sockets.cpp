#include "Tests/Helpers/Sockets.h"

#include <poll.h>
#include <sys/socket.h>

namespace tunedeck::test {

const short peerClosed = POLLRDHUP;

ssize_t sendNow(int socket, const char* bytes, std::size_t size) {
    return ::send(socket, bytes, size, MSG_NOSIGNAL | MSG_DONTWAIT);
}

} // namespace tunedeck::test
