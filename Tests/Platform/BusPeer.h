#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QString>

namespace tunedeck::test {

/// A peer on a session bus with its own connection, which receives all calls of one object.
class BusPeer : public QDBusVirtualObject {
    Q_OBJECT
public:
    /// On the session bus, or on the bus at `address`.
    BusPeer(const QString& service, const QString& path, const QString& address = {});
    ~BusPeer() override;
    [[nodiscard]] QString introspect(const QString& /*path*/) const override { return {}; }

protected:
    [[nodiscard]] QDBusConnection& bus() { return m_bus; }

private:
    QString m_connectionName;
    QDBusConnection m_bus;
};

} // namespace tunedeck::test
