#include "Tests/Peers/NotificationServer.h"

#include <QUuid>

using namespace Qt::StringLiterals;

namespace tunedeck::test {

NotificationServer::NotificationServer(QStringList capabilities, const QString& address)
    : m_capabilities(std::move(capabilities))
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
    const bool isNotify = heldBack->member() == u"Notify";
    m_connection.send(heldBack->createReply(isNotify ? QVariant(lastId) : QVariant(m_capabilities)));
    heldBack.reset();
    holdsBack = false;
}

void NotificationServer::releaseName() {
    m_connection.unregisterService(u"org.freedesktop.Notifications"_s);
}

void NotificationServer::holdBackIfAsked() {
    if (holdsBack) {
        setDelayedReply(true);
        heldBack = message();
    }
}

QStringList NotificationServer::GetCapabilities() {
    holdBackIfAsked();
    return m_capabilities;
}

uint NotificationServer::Notify(const QString& name, uint replaces, const QString& icon, const QString& title,
                                const QString& body, const QStringList& actions, const QVariantMap& hints,
                                int /*timeout*/) {
    holdBackIfAsked();
    const uint id = replaces != 0 && !renumbers ? replaces : ++lastId;
    calls.push_back({name, replaces, icon, title, body, actions, hints, id});
    return id;
}

} // namespace tunedeck::test
