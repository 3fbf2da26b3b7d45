#pragma once

#include "Tests/Platform/BusPeer.h"

#include <QMap>
#include <QVariantMap>

namespace tunedeck::test {

/// The settings of the desktop portal.
class SettingsPortal final : public BusPeer {
public:
    explicit SettingsPortal(QMap<QString, QVariantMap> settings, const QString& address = {});
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;
    /// Changes a setting and sends the signal for it.
    void change(const QString& group, const QString& key, const QVariant& value);

private:
    QMap<QString, QVariantMap> m_settings;
};

} // namespace tunedeck::test
