#pragma once

#include "DemoService/Files/HomePaths.h"
#include "DemoService/World/State.h"
#include "TunedeckCore/Support/Json/Value.h"

#include <QString>

namespace tunedeck::demo {

/// What is fixed while the service runs.
struct ServiceFacts {
    QString version;
    HomePaths paths;
    int port = 0;
};

/// The status document, which describes the whole service to clients.
json::Object describeService(const State& state, const ServiceFacts& facts);

} // namespace tunedeck::demo
