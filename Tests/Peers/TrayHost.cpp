#include "Tests/Peers/TrayHost.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <QUuid>

using namespace Qt::StringLiterals;

namespace tunedeck::test {

TrayHost::TrayHost()
    : m_bus(QDBusConnection::connectToBus(QDBusConnection::SessionBus, QUuid::createUuid().toString())) {
    m_bus.registerObject(u"/StatusNotifierWatcher"_s, this,
                         QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals |
                             QDBusConnection::ExportAllProperties);
    m_bus.registerService(u"org.kde.StatusNotifierWatcher"_s);
}

TrayHost::~TrayHost() {
    QDBusConnection::disconnectFromBus(m_bus.name());
}

void TrayHost::RegisterStatusNotifierItem(const QString& /*service*/) {
    m_item = message().service();
    auto call = QDBusMessage::createMethodCall(m_item, u"/StatusNotifierItem"_s, u"org.freedesktop.DBus.Properties"_s,
                                               u"Get"_s);
    call.setArguments({u"org.kde.StatusNotifierItem"_s, u"Menu"_s});
    auto* watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        const auto menu = watcher->reply().arguments().value(0).value<QDBusVariant>().variant();
        Q_EMIT itemRegistered(menu.value<QDBusObjectPath>().path());
    });
}

void TrayHost::activateItem() {
    auto call = QDBusMessage::createMethodCall(m_item, u"/StatusNotifierItem"_s, u"org.kde.StatusNotifierItem"_s,
                                               u"Activate"_s);
    call.setArguments({0, 0});
    m_bus.asyncCall(call);
}

void TrayHost::setHostRegistered(bool isRegistered) {
    m_isHost = isRegistered;
    if (m_isHost) {
        Q_EMIT StatusNotifierHostRegistered();
    } else {
        Q_EMIT StatusNotifierHostUnregistered();
    }
}

} // namespace tunedeck::test
