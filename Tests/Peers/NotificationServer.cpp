#include "Tests/Peers/NotificationServer.h"

#include <QUuid>

using namespace Qt::StringLiterals;

namespace tunedeck::test {

NotificationServer::NotificationServer(QStringList capabilities, const QString& address, QObject* parent)
    : QObject(parent)
    , m_capabilities(std::move(capabilities))
    , m_connection(address.isEmpty()
                       ? QDBusConnection::connectToBus(QDBusConnection::SessionBus, QUuid::createUuid().toString())
                       : QDBusConnection::connectToBus(address, QUuid::createUuid().toString())) {
    m_connection.registerObject(u"/org/freedesktop/Notifications"_s, this,
                                QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals);
    m_connection.registerService(u"org.freedesktop.Notifications"_s);
}

NotificationServer::~NotificationServer() {
    QDBusConnection::disconnectFromBus(m_connection.name());
}

void NotificationServer::replyToHeldBackCall() {
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

uint NotificationServer::Notify(const QString& name, uint replaces, const QString& icon, const QString& title,
                                const QString& body, const QStringList& actions, const QVariantMap& hints,
                                int /*timeout*/) {
    const uint id = replaces != 0 ? replaces : ++lastId;
    calls.push_back({name, replaces, icon, title, body, actions, hints, id});
    return id;
}

} // namespace tunedeck::test
