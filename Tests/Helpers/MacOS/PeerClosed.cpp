#include "Tests/Helpers/PeerClosed.h"

#include <poll.h>

namespace tunedeck::test {

const short peerClosed = POLLHUP;

} // namespace tunedeck::test
