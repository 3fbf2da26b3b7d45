#include "Tests/Platform/FakePeers.h"

#include <QDBusMetaType>
#include <QDBusVariant>
#include <QUuid>

using namespace Qt::StringLiterals;

namespace tunedeck::test {

Peer::Peer(const QString& service, const QString& path)
    : m_connectionName(QUuid::createUuid().toString())
    , m_bus(QDBusConnection::connectToBus(QDBusConnection::SessionBus, m_connectionName)) {
    m_bus.registerVirtualObject(path, this);
    m_bus.registerService(service);
}

Peer::~Peer() {
    QDBusConnection::disconnectFromBus(m_connectionName);
}

SettingsPortal::SettingsPortal(QMap<QString, QVariantMap> settings)
    : Peer(u"org.freedesktop.portal.Desktop"_s, u"/org/freedesktop/portal/desktop"_s), m_settings(std::move(settings)) {
    qDBusRegisterMetaType<QMap<QString, QVariantMap>>();
}

bool SettingsPortal::handleMessage(const QDBusMessage& message, const QDBusConnection& connection) {
    QMap<QString, QVariantMap> asked;
    for (const auto& group : message.arguments().value(0).toStringList()) {
        if (m_settings.contains(group)) {
            asked.insert(group, m_settings.value(group));
        }
    }
    return message.member() == u"ReadAll" && connection.send(message.createReply(QVariant::fromValue(asked)));
}

void SettingsPortal::change(const QString& group, const QString& key, const QVariant& value) {
    m_settings[group][key] = value;
    auto signal = QDBusMessage::createSignal(u"/org/freedesktop/portal/desktop"_s, u"org.freedesktop.portal.Settings"_s,
                                             u"SettingChanged"_s);
    signal.setArguments({group, key, QVariant::fromValue(QDBusVariant(value))});
    bus().send(signal);
}

FileManager::FileManager() : Peer(u"org.freedesktop.FileManager1"_s, u"/org/freedesktop/FileManager1"_s) {}

bool FileManager::handleMessage(const QDBusMessage& message, const QDBusConnection& connection) {
    if (refuses || message.member() != u"ShowItems") {
        return false;
    }
    shown += message.arguments().value(0).toStringList();
    return connection.send(message.createReply());
}

} // namespace tunedeck::test
