#include "Tests/Peers/NotificationServer.h"

#include <QUuid>

namespace tunedeck::test {

NotificationServer::NotificationServer(QStringList capabilities, const QString& address, QObject* parent)
    : QObject(parent)
    , m_capabilities(std::move(capabilities))
    , m_connectionName(QUuid::createUuid().toString())
    , m_connection(address.isEmpty() ? QDBusConnection::connectToBus(QDBusConnection::SessionBus, m_connectionName)
                                     : QDBusConnection::connectToBus(address, m_connectionName)) {
    m_connection.registerObject(QStringLiteral("/org/freedesktop/Notifications"), this,
                                QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals);
    m_connection.registerService(QStringLiteral("org.freedesktop.Notifications"));
}

NotificationServer::~NotificationServer() {
    m_connection.unregisterService(QStringLiteral("org.freedesktop.Notifications"));
    QDBusConnection::disconnectFromBus(m_connectionName);
}

void NotificationServer::answerCapabilities() {
    m_connection.send(heldBack->createReply(QVariant(m_capabilities)));
    heldBack.reset();
    holdsBack = false;
}

QStringList NotificationServer::GetCapabilities() {
    if (holdsBack) {
        setDelayedReply(true);
        heldBack = message();
    }
    return m_capabilities;
}

uint NotificationServer::Notify(const QString& name, uint replaces, const QString& /*icon*/, const QString& title,
                                const QString& body, const QStringList& actions, const QVariantMap& hints,
                                int /*expires*/) {
    const uint id = replaces != 0 ? replaces : ++lastId;
    calls.push_back({name, replaces, title, body, actions, hints, id});
    return id;
}

} // namespace tunedeck::test
