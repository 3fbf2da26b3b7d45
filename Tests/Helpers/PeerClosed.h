#pragma once

namespace tunedeck::test {

/// The event of poll(2) that the peer of a socket has closed its side, even if unread data remains.
extern const short peerClosed;

} // namespace tunedeck::test
