#pragma once

#include "Tests/Helpers/TestServer.h"

#include <QByteArray>
#include <QString>

namespace tunedeck::test {

/// The product's web endpoint, at the address that the tested program was built with.
class Web : public TestServer {
public:
    Web() : TestServer(TUNEDECK_WEB_HOST, TUNEDECK_WEB_PORT) {}

    /// Publishes the archive as version 1.4.1. `delivery` replaces the plain download.
    void publish(const QByteArray& archive, Behaviour delivery = {});
};

/// Zips a bundle together with `emptyFiles` additional empty files.
QByteArray zipOf(const QString& bundle, int emptyFiles = 0);

} // namespace tunedeck::test
