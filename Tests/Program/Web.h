#pragma once

#include "Tests/Helpers/TestServer.h"

#include <QByteArray>
#include <QString>

namespace tunedeck::test {

/// The product's web endpoint, as the tested program knows it, on this machine.
class Web : public TestServer {
public:
    Web() : TestServer(TUNEDECK_WEB_HOST, TUNEDECK_WEB_PORT) {}

    static constexpr auto identifier = "com.brightfold.tunedeck.menu"; ///< of the application's bundle

    /// What goes wrong on the way to an update.
    struct Fault {
        QByteArray secret = QByteArray::fromHex("9d61b19deffd5a60ba844af492ec2cc44449c5697b326919703bac031cae7f60");
        QByteArray digest = {}; ///< in place of the archive's
        Behaviour delivery = {};
    };

    /// Puts version 1.4.1 onto it.
    void publish(const QByteArray& archive, const Fault& fault, const QByteArray& diskImage = {});
};

/// The archive of a bundle. `more`: how many empty files it has besides.
QByteArray zipOf(const QString& bundle, int more = 0);

} // namespace tunedeck::test
