#pragma once

#include "DemoService/Files/HomePaths.h"
#include "DemoService/World/State.h"

#include <QByteArray>
#include <QString>

namespace tunedeck::demo {

/// What is fixed while the service runs.
struct ServiceFacts {
    QString version;
    HomePaths paths;
    int port = 0;
};

/// The document that describes the whole service to clients.
QByteArray statusDocument(const State& state, const ServiceFacts& facts);

} // namespace tunedeck::demo
