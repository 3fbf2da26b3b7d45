#include "DemoService/World/Cloud.h"

namespace tunedeck::demo {

using namespace std::chrono_literals;

void Cloud::reconnect(Moment now) {
    connected.reset();
    changeAt = now + 2s;
}

void Cloud::advance(Turn& turn) {
    if (!isDue(changeAt, turn.now)) {
        return;
    }
    connected = !connected.value_or(false);
    changeAt.reset();
    if (*connected) {
        turn.info("cloud", "connected to " + baseUrl);
    } else {
        turn.warn("cloud", "lost the connection to " + baseUrl);
    }
    if (wavers) {
        changeAt = *connected ? turn.within(8min, 20min) : turn.within(10s, 30s);
    }
}

} // namespace tunedeck::demo
