#include "Tests/Platform/SettingsPortal.h"

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusVariant>

using namespace Qt::StringLiterals;

namespace tunedeck::test {

SettingsPortal::SettingsPortal(QMap<QString, QVariantMap> settings, const QString& address)
    : BusPeer(u"org.freedesktop.portal.Desktop"_s, u"/org/freedesktop/portal/desktop"_s, address)
    , m_settings(std::move(settings)) {
    qDBusRegisterMetaType<QMap<QString, QVariantMap>>();
}

bool SettingsPortal::handleMessage(const QDBusMessage& message, const QDBusConnection& connection) {
    QMap<QString, QVariantMap> requested;
    for (const auto& group : message.arguments().value(0).toStringList()) {
        if (m_settings.contains(group)) {
            requested.insert(group, m_settings.value(group));
        }
    }
    return message.member() == u"ReadAll" && connection.send(message.createReply(QVariant::fromValue(requested)));
}

void SettingsPortal::change(const QString& group, const QString& key, const QVariant& value) {
    m_settings[group][key] = value;
    auto signal = QDBusMessage::createSignal(u"/org/freedesktop/portal/desktop"_s, u"org.freedesktop.portal.Settings"_s,
                                             u"SettingChanged"_s);
    signal.setArguments({group, key, QVariant::fromValue(QDBusVariant(value))});
    bus().send(signal);
}

} // namespace tunedeck::test
