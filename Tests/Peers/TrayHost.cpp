#include "Tests/Peers/TrayHost.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <QUuid>

namespace tunedeck::test {

TrayHost::TrayHost()
    : m_connectionName(QUuid::createUuid().toString())
    , m_bus(QDBusConnection::connectToBus(QDBusConnection::SessionBus, m_connectionName)) {
    m_bus.registerObject(QStringLiteral("/StatusNotifierWatcher"), this,
                         QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals |
                             QDBusConnection::ExportAllProperties);
    m_bus.registerService(QStringLiteral("org.kde.StatusNotifierWatcher"));
}

TrayHost::~TrayHost() {
    m_bus.unregisterService(QStringLiteral("org.kde.StatusNotifierWatcher"));
    QDBusConnection::disconnectFromBus(m_connectionName);
}

void TrayHost::RegisterStatusNotifierItem(const QString& /*service*/) {
    m_item = message().service();
    auto question =
        QDBusMessage::createMethodCall(m_item, QStringLiteral("/StatusNotifierItem"),
                                       QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    question.setArguments({QStringLiteral("org.kde.StatusNotifierItem"), QStringLiteral("Menu")});
    auto* answer = new QDBusPendingCallWatcher(m_bus.asyncCall(question), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        const auto menu = answer->reply().arguments().value(0).value<QDBusVariant>().variant();
        Q_EMIT said(QStringLiteral("item with menu at ") + menu.value<QDBusObjectPath>().path());
    });
}

void TrayHost::obey(const QByteArray& order) {
    if (order == "activate") {
        auto call =
            QDBusMessage::createMethodCall(m_item, QStringLiteral("/StatusNotifierItem"),
                                           QStringLiteral("org.kde.StatusNotifierItem"), QStringLiteral("Activate"));
        call.setArguments({0, 0});
        m_bus.asyncCall(call);
        return;
    }
    m_isHost = order == "come";
    if (m_isHost) {
        Q_EMIT StatusNotifierHostRegistered();
    } else {
        Q_EMIT StatusNotifierHostUnregistered();
    }
}

} // namespace tunedeck::test
