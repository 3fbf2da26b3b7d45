#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QString>
#include <QUuid>

namespace tunedeck::test {

/// A peer on a session bus with its own connection, which receives all calls of one object.
class BusPeer : public QDBusVirtualObject {
public:
    /// On the session bus, or on the bus at `address`.
    BusPeer(const QString& service, const QString& path, const QString& address = {})
        : m_bus(address.isEmpty()
                    ? QDBusConnection::connectToBus(QDBusConnection::SessionBus, QUuid::createUuid().toString())
                    : QDBusConnection::connectToBus(address, QUuid::createUuid().toString())) {
        m_bus.registerVirtualObject(path, this);
        m_bus.registerService(service);
    }
    ~BusPeer() override { QDBusConnection::disconnectFromBus(m_bus.name()); }
    [[nodiscard]] QString introspect(const QString& /*path*/) const override { return {}; }

protected:
    [[nodiscard]] QDBusConnection& bus() { return m_bus; }

private:
    QDBusConnection m_bus;
};

} // namespace tunedeck::test
