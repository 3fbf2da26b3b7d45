#pragma once

#include <sys/types.h>

#include <cstddef>

namespace tunedeck::test {

/// The event of poll(2) that the peer of a socket has closed its side, even if unread data remains.
extern const short peerClosed;

/// send(2) of what the socket takes at once. A closed connection is an error, and no signal.
ssize_t sendNow(int socket, const char* bytes, std::size_t size);

} // namespace tunedeck::test
