#include "DemoService/World/Cloud.h"

namespace tunedeck::demo {

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

void Cloud::reconnect(Moment now) {
    connected.reset();
    changeAt = now + 2s;
}

void Cloud::advance(StepContext& context) {
    if (!context.isDue(changeAt)) {
        return;
    }
    connected = !connected.value_or(false);
    changeAt.reset();
    if (*connected) {
        context.info("cloud"_L1, u"connected to "_s + baseUrl);
    } else {
        context.warn("cloud"_L1, u"lost the connection to "_s + baseUrl);
    }
    if (unstable) {
        changeAt = *connected ? context.afterBetween(8min, 20min) : context.afterBetween(10s, 30s);
    }
}

} // namespace tunedeck::demo
