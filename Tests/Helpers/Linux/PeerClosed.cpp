#include "Tests/Helpers/PeerClosed.h"

#include <poll.h>

namespace tunedeck::test {

const short peerClosed = POLLRDHUP;

} // namespace tunedeck::test
