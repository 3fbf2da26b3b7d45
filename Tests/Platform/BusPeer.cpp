#include "Tests/Platform/BusPeer.h"

#include <QUuid>

namespace tunedeck::test {

BusPeer::BusPeer(const QString& service, const QString& path, const QString& address)
    : m_connectionName(QUuid::createUuid().toString())
    , m_bus(address.isEmpty() ? QDBusConnection::connectToBus(QDBusConnection::SessionBus, m_connectionName)
                              : QDBusConnection::connectToBus(address, m_connectionName)) {
    m_bus.registerVirtualObject(path, this);
    m_bus.registerService(service);
}

BusPeer::~BusPeer() {
    QDBusConnection::disconnectFromBus(m_connectionName);
}

} // namespace tunedeck::test
